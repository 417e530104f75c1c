#include "text_utils/numbers.h"

#include "text_utils/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <system_error>

namespace {

// 309 digits before the point of the largest double, the point, the sign and 20 decimals fit.
using Buffer = std::array<char, 340>;

std::string fixedText(double value, int decimals) {
    Buffer buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals).ptr;
    std::string text(buffer.data(), end);
    if (decimals == 0 && std::isfinite(value)) text += '.';
    return text;
}

std::string withoutTrailingZeros(std::string text) {
    text.resize(text.find_last_not_of('0') + 1);
    return text;
}

template <typename Integer>
std::string integerText(Integer value) {
    Buffer buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

/// Decimals for a magnitude: `most` below `first`, one fewer from each power of ten on, none at the end of the bands or
/// for not-a-number.
int decimalsFor(double magnitude, double first, int most) {
    double limit = first;
    for (int decimals = most; decimals > 0; --decimals, limit *= 10.0)
        if (magnitude < limit) return decimals;
    return 0;
}

}  // namespace

std::string AINTEGER(std::int32_t value) { return integerText(value); }
std::string AINTEGER8(std::int64_t value) { return integerText(value); }

std::string AREAL(float value) {
    // The bands are compared in single precision: 0.01F itself takes five decimals.
    constexpr std::array<float, 6> LIMITS = {0.01F, 0.1F, 1.0F, 10.0F, 100.0F, 1000.0F};
    int decimals = 6;
    for (const float limit : LIMITS) {
        if (std::abs(value) < limit) break;
        --decimals;
    }
    return withoutTrailingZeros(fixedText(static_cast<double>(value), std::isnan(value) ? 0 : decimals));
}

std::string AREAL8(double value) {
    return withoutTrailingZeros(fixedText(value, decimalsFor(std::abs(value), 1.0, 10)));
}

std::string AREALD(float value, int decimals) { return fixedText(static_cast<double>(value), decimals); }
std::string AREALD8(double value, int decimals) { return fixedText(value, decimals); }

std::string FIXED_FIELD(double value, int width, int decimals) {
    std::string text = fixedText(value, decimals);
    if (text.size() < static_cast<std::size_t>(width))
        text.insert(0, static_cast<std::size_t>(width) - text.size(), ' ');
    return text;
}

bool POSITIVEINTEGERNUMBER(std::string_view text) {
    text = TRIMMED(text);
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return !text.empty() && text[0] != '-' && error == std::errc{} && end == text.data() + text.size();
}

double ROUNDED(double value, int decimals) {
    constexpr double POWERS[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr double EXACT = 1e12;      // scaled values below it keep three digits behind the point
    constexpr double NEAR_HALF = 1e-2;  // there scaling may have crossed the half
    if (decimals < 0 || decimals >= static_cast<int>(std::size(POWERS)) || !std::isfinite(value)) return value;
    const double power = POWERS[decimals];
    const double scaled = value * power;
    const double fraction = std::abs(scaled - std::trunc(scaled));
    if (std::abs(scaled) < EXACT && std::abs(fraction - 0.5) > NEAR_HALF) return std::nearbyint(scaled) / power + 0.0;
    std::array<char, 400> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    double rounded = value;
    std::from_chars(text.data(), end.ptr, rounded);
    return rounded + 0.0;
}
