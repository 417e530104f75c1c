// The missing value, the same in results, grids and files.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

constexpr float NO_VALUE = -99999.0F;

/// Results at or below this are missing, which leaves room for rounding in files written by other programs.
constexpr float HIGHEST_MISSING = -99998.0F;

/// True for a value that stands for nothing: at or below HIGHEST_MISSING, not a number, or infinite.
inline bool IS_MISSING(float value) { return !(value > HIGHEST_MISSING) || std::isinf(value); }

// For loops over many values: without branches, which would be taken value by value.
/// All bits for a value, none for a missing one.
inline std::uint32_t VALUE_BITS(float value) {
    return 0U - static_cast<std::uint32_t>((value > HIGHEST_MISSING) & (value <= std::numeric_limits<float>::max()));
}
/// `value` where all bits are set, `other` where none is.
inline float WITH_BITS(std::uint32_t bits, float value, float other) {
    return std::bit_cast<float>((std::bit_cast<std::uint32_t>(value) & bits) |
                                (std::bit_cast<std::uint32_t>(other) & ~bits));
}
