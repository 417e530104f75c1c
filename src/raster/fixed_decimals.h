// Single-precision values as fixed-point text, many at a time: the bulk of an ASCII grid.
#pragma once

#include <cstddef>
#include <span>

constexpr int WIDEST_FIELD = 100;  ///< characters and decimals that a field may ask for

/// Bytes that PUT_FIXED_FIELDS may touch for `count` values of any size.
constexpr std::size_t FIXED_FIELDS_ROOM(std::size_t count) { return count * 160 + 16; }

/// Writes each value as one blank and the value right-aligned in `width` characters with `decimals` decimals, as printf
/// writes it: rounded once, half to even from the binary value, "-0.000" for what rounds to zero from below. A value
/// that does not fit widens its field. A value that is not finite is written as NO_VALUE. Returns the end of the text;
/// behind it up to FIXED_FIELDS_ROOM may be overwritten.
char* PUT_FIXED_FIELDS(char* to, std::span<const float> values, int width, int decimals);
