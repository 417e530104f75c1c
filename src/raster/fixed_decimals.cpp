#include "raster/fixed_decimals.h"

#include "text_utils/bytes.h"

#include "geometry/no_value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::uint64_t powerOfTen(int exponent) {
    std::uint64_t power = 1;
    for (int i = 0; i < exponent; ++i) power *= 10;
    return power;
}

/// Any value with any decimals.
char* putAny(char* to, float value, int width, int decimals) {
    std::array<char, FIXED_FIELDS_ROOM(1)> text;
    const double finite = static_cast<double>(std::isfinite(value) ? value : NO_VALUE);
    const char* end =
        std::to_chars(text.data(), text.data() + text.size(), finite, std::chars_format::fixed, decimals).ptr;
    const auto length = static_cast<std::size_t>(end - text.data());
    const std::size_t blanks = 1 + static_cast<std::size_t>(width) - std::min(static_cast<std::size_t>(width), length);
    std::memset(to, ' ', blanks);
    std::memcpy(to + blanks, text.data(), length);
    return to + blanks + length;
}

/// Values whose size times 10^decimals is below this take at most `width` characters, a sign included, and `digits`
/// digits; 0 when none does.
double largestFitting(int width, int decimals, int digits) {
    digits = std::min(digits, width - 2);
    return digits > decimals ? static_cast<double>(powerOfTen(digits)) - 0.5 : 0.0;  // what rounds up stays within
}

/// The eight decimal digits of n < 10^8, one a byte, the first in the lowest: halves, then quarters, then digits, side
/// by side in one word.
std::uint64_t eightDigits(std::uint64_t n) {
    const std::uint64_t halves = n / 10000 + ((n % 10000) << 32);
    // 10486 / 2^20 = 1 / 100 for four digits
    const std::uint64_t hundreds = ((halves * 10486) >> 20) & 0x0000007F0000007F;
    const std::uint64_t quarters = hundreds + ((halves - hundreds * 100) << 16);
    const std::uint64_t tens = ((quarters * 103) >> 10) & 0x000F000F000F000F;  // 103 / 2^10 = 1 / 10 for two digits
    return tens + ((quarters - tens * 10) << 8);
}

/// n < 10^8 as eight digits with a point before the last `Decimals`; before the digit that stands before the point,
/// leading zeros are blank and the last of them, or the character before all, is the sign. `end` is the end of the
/// field: 10 characters before it are written and up to 8 behind.
template <int Decimals>
void putEight(char* end, std::uint64_t n, bool negative) {
    const std::uint64_t digits = eightDigits(n);
    const int leading = std::countr_zero(digits | std::uint64_t{1} << (8 * (7 - Decimals))) / 8;
    const std::uint64_t blank = 0x1010101010101010 & ((std::uint64_t{1} << (8 * leading)) - 1);  // '0' less 0x10 is ' '
    const std::uint64_t sign = std::uint64_t{negative ? 13U : 0U} << (8 * leading);              // ' ' and 13 is '-'
    const std::uint64_t text = digits + (0x3030303030303030 - blank) + (sign >> 8);
    end[-10] = static_cast<char>(' ' + (sign & 0xFF));
    putLittle(end - 9, text);
    putLittle(end - Decimals, text >> (8 * (8 - Decimals)));
    end[-Decimals - 1] = '.';
}

/// What is written at one go for a field of any length up to this: a fixed count of bytes becomes a few moves.
constexpr std::size_t SHORT_FIELD = 26;

// A float has 24 significant bits and 10^7 = 2^7 * 5^7 needs 17 more, so their product is exact in double: rounding it
// to a whole number rounds the decimal text once, as printf does.
template <int Decimals>
char* putFields(char* to, std::span<const float> values, int width) {
    constexpr double SCALE = static_cast<double>(powerOfTen(Decimals));
    constexpr double ROUNDER = 4503599627370496.0;  // 2^52, from where doubles are whole numbers
    std::array<char, FIXED_FIELDS_ROOM(1)> missing{};
    const auto missingLength =
        static_cast<std::size_t>(putAny(missing.data(), NO_VALUE, width, Decimals) - missing.data());
    const auto length = static_cast<std::size_t>(width) + 1;
    const double limit = length > 9 && length <= SHORT_FIELD ? largestFitting(width, Decimals, 8) : 0.0;
    for (const float value : values) {
        if (value == NO_VALUE && missingLength <= SHORT_FIELD) {  // comes in long runs
            std::memcpy(to, missing.data(), SHORT_FIELD);
            to += missingLength;
            continue;
        }
        const double scaled = static_cast<double>(std::abs(value)) * SCALE;
        if (!(scaled < limit)) {
            to = putAny(to, value, width, Decimals);
            continue;
        }
        std::memset(to, ' ', SHORT_FIELD - 10);
        to += length;
        putEight<Decimals>(to, std::bit_cast<std::uint64_t>(scaled + ROUNDER) - std::bit_cast<std::uint64_t>(ROUNDER),
                           std::signbit(value));
    }
    return to;
}

char* putAnyFields(char* to, std::span<const float> values, int width, int decimals) {
    for (const float value : values) to = putAny(to, value, width, decimals);
    return to;
}

}  // namespace

char* PUT_FIXED_FIELDS(char* to, std::span<const float> values, int width, int decimals) {
    width = std::clamp(width, 0, WIDEST_FIELD);
    decimals = std::clamp(decimals, 0, WIDEST_FIELD);
    switch (decimals) {
        case 1: return putFields<1>(to, values, width);
        case 2: return putFields<2>(to, values, width);
        case 3: return putFields<3>(to, values, width);
        case 4: return putFields<4>(to, values, width);
        case 5: return putFields<5>(to, values, width);
        case 6: return putFields<6>(to, values, width);
        case 7: return putFields<7>(to, values, width);
        default: return putAnyFields(to, values, width, decimals);
    }
}
