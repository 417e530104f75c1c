// Texts of the C interface: a pointer and a length in, blank-padded text out.
#pragma once

#include "routines/references.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

/// The caller's text at its whole length; empty for a null pointer or a length below 1.
inline std::string_view textAt(const char* text, const std::int32_t* length) {
    const auto characters = array(text, length);
    return {characters.data(), characters.size()};
}

/// What becomes of a result that is longer than the caller's text.
enum class TooLong : std::uint8_t { Cut, Starred };

/// Fills the caller's text and returns the characters of the whole result, trailing blanks not counted.
inline std::int32_t fill(char* out, const std::int32_t* length, std::string_view result, TooLong tooLong) {
    result = result.substr(0, result.find_last_not_of(' ') + 1);
    const auto text = array(out, length);
    const bool fits = result.size() <= text.size();
    std::fill(text.begin(), text.end(), fits || tooLong == TooLong::Cut ? ' ' : '*');
    if (fits || tooLong == TooLong::Cut)
        std::copy_n(result.begin(), std::min(result.size(), text.size()), text.begin());
    constexpr std::size_t MOST = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(result.size(), MOST));
}

/// Fills the caller's text with what `routine` returns; with blanks when it runs out of memory.
template <typename Routine>
std::int32_t result(char* out, const std::int32_t* length, Routine&& routine, TooLong tooLong = TooLong::Cut) {
    try {
        return fill(out, length, routine(), tooLong);
    } catch (...) {  // nothing may be thrown into C or Fortran
        return fill(out, length, {}, tooLong);
    }
}

/// The truth of what `routine` returns; false when it runs out of memory.
template <typename Routine>
std::int32_t guardedTruth(Routine&& routine) {
    try {
        return truth(routine());
    } catch (...) {
        return truth(false);
    }
}
