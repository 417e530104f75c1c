#include "gis/dbf_number.h"

#include "gis/fixed_text.h"
#include "text_utils/free_form.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace {

constexpr int MOST_FAST_DECIMALS = 9;  ///< of PUT_FIXED

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// "-12.50": the part up to the point with its sign, and the decimals behind it. Not plain: anything else, such as 1e5,
/// +2 or .5.
struct PlainNumber {
    std::string_view whole, decimals;
    bool plain = false;
};
PlainNumber plainNumber(std::string_view text) {
    std::size_t i = text.starts_with('-') ? 1 : 0;
    const std::size_t first = i;
    while (i < text.size() && isDigit(text[i])) ++i;
    if (i == first) return {};
    PlainNumber number{text.substr(0, i), {}, i == text.size()};
    if (number.plain || text[i] != '.') return number;
    number.decimals = text.substr(i + 1);
    number.plain = std::all_of(number.decimals.begin(), number.decimals.end(), isDigit);
    return number;
}

bool copyPlain(char* at, const PlainNumber& number, std::size_t width, std::size_t decimals) {
    const std::size_t behind = decimals == 0 ? 0 : decimals + 1;  // the point counts
    if (number.whole.size() + behind > width) return false;
    char* point = at + width - behind;
    std::memcpy(point - number.whole.size(), number.whole.data(), number.whole.size());
    if (behind == 0) return true;
    *point = '.';
    std::memset(point + 1, '0', decimals);
    if (!number.decimals.empty()) std::memcpy(point + 1, number.decimals.data(), number.decimals.size());
    return true;
}

bool putRounded(char* at, std::string_view text, std::size_t width, int decimals) {
    FreeForm form(text);
    double value = 0.0;
    if (form.NEXT_REAL(value) != FreeForm::Read::Value || !form.ENDED() || !std::isfinite(value)) return false;
    std::array<char, LONGEST_FIXED + 256> digits;
    const char* end = decimals <= MOST_FAST_DECIMALS ? PUT_FIXED(digits.data(), value, decimals)
                                                     : std::to_chars(digits.data(), digits.data() + digits.size(),
                                                                     value, std::chars_format::fixed, decimals)
                                                           .ptr;
    const auto length = static_cast<std::size_t>(end - digits.data());
    if (length > width) return false;
    std::memcpy(at + width - length, digits.data(), length);
    return true;
}

}  // namespace

bool PUT_DBF_NUMBER(char* at, std::string_view text, std::int32_t width, std::int32_t decimals) {
    if (text.empty()) return true;
    const PlainNumber number = plainNumber(text);
    if (number.plain && number.decimals.size() <= static_cast<std::size_t>(decimals))
        return copyPlain(at, number, static_cast<std::size_t>(width), static_cast<std::size_t>(decimals));
    return putRounded(at, text, static_cast<std::size_t>(width), decimals);
}
