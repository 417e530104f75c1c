#include "gis/fixed_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::array<double, 10> POWERS = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
constexpr double LARGEST_SCALED = 1e15;  ///< below 2^50: the product and its fraction still stand apart

constexpr std::array<char, 200> digitPairs() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> PAIRS = digitPairs();

/// Writes the digits of `number` so that they end before `end`, at least `least` of them; returns the first.
char* putDigitsBefore(char* end, std::uint64_t number, int least) {
    char* at = end;
    for (; number >= 100; number /= 100) {
        at -= 2;
        std::memcpy(at, &PAIRS[static_cast<std::size_t>(number % 100) * 2], 2);
    }
    if (number >= 10) {
        at -= 2;
        std::memcpy(at, &PAIRS[static_cast<std::size_t>(number) * 2], 2);
    } else {
        *--at = static_cast<char>('0' + number);
    }
    while (end - at < least) *--at = '0';
    return at;
}

constexpr std::size_t LONGEST_FAST = 24;

/// Writes the value so that it ends before `end` and returns its first character, or nothing when the short way could
/// round wrongly. value * 10^decimals is off by at most half a unit in its last place; unless its fraction is that
/// close to one half, the whole number nearest to the product is the one nearest to the exact value.
char* putFastBefore(char* end, double value, int decimals) {
    const double scaled = std::fabs(value) * POWERS[static_cast<std::size_t>(decimals)];
    if (!(scaled < LARGEST_SCALED)) return nullptr;
    const auto whole = static_cast<std::uint64_t>(scaled);
    const double fraction = scaled - static_cast<double>(whole);
    if (std::fabs(fraction - 0.5) <= scaled * 0x1p-52) return nullptr;
    char* at = putDigitsBefore(end, whole + (fraction > 0.5 ? 1 : 0), decimals + 1);
    if (decimals > 0) {
        char* point = end - decimals - 1;
        std::memmove(at - 1, at, static_cast<std::size_t>(point - at) + 1);
        --at;
        *point = '.';
    }
    if (std::signbit(value)) *--at = '-';
    return at;
}

}  // namespace

char* PUT_FIXED(char* at, double value, int decimals) {
    std::array<char, LONGEST_FAST> digits;
    char* end = digits.data() + digits.size();
    if (const char* first = putFastBefore(end, value, decimals); first != nullptr) {
        std::memcpy(at, first, static_cast<std::size_t>(end - first));
        return at + (end - first);
    }
    return std::to_chars(at, at + LONGEST_FIXED, value, std::chars_format::fixed, decimals).ptr;
}

char* PUT_FIXED_FIELD(char* at, double value, int width, int decimals) {
    std::array<char, LONGEST_FIXED> digits;
    char* end = digits.data() + LONGEST_FAST;
    const char* first = putFastBefore(end, value, decimals);
    if (first == nullptr) {
        first = digits.data();
        end =
            std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals).ptr;
    }
    const std::ptrdiff_t length = end - first;
    const std::ptrdiff_t blanks = length < width ? width - length : 1;
    std::memset(at, ' ', static_cast<std::size_t>(blanks));
    std::memcpy(at + blanks, first, static_cast<std::size_t>(length));
    return at + blanks + length;
}

std::string_view REAL_TEXT(RealText& buffer, double value, int decimals) {
    constexpr int MOST_FAST_DECIMALS = 9;
    char* const first = buffer.data();
    const char* last = decimals <= MOST_FAST_DECIMALS
                           ? PUT_FIXED(first, value, decimals)
                           : std::to_chars(first, first + buffer.size(), value, std::chars_format::fixed, decimals).ptr;
    const std::string_view text(first, static_cast<std::size_t>(last - first));
    const bool signOfZero = *first == '-' && value > -1.0 && text.find_first_not_of("0.", 1) == std::string_view::npos;
    return signOfZero ? text.substr(1) : text;
}
