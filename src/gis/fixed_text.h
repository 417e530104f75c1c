// Fixed-notation numbers at speed, for files of millions of coordinates.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// Most characters that PUT_FIXED writes: 1.8e308 with sign, point and decimals.
constexpr std::size_t LONGEST_FIXED = 330;

/// Writes `value` with 0 to 9 decimals to `at` and returns the position behind it: what printf's "%.<decimals>f" gives,
/// to the last digit (half-way cases of the exact binary value to even). No decimals, no point. NaN and infinity become
/// "nan" and "inf".
char* PUT_FIXED(char* at, double value, int decimals);
/// The same right-aligned in `width` characters. A value that fills or passes the width is written wider with one blank
/// before it, so that neighbours never run together: (1e8, 16, 6) -> " 100000000.000000". Needs width or LONGEST_FIXED
/// + 1 characters at `at`.
char* PUT_FIXED_FIELD(char* at, double value, int width, int decimals);

/// Room for REAL_TEXT.
using RealText = std::array<char, LONGEST_FIXED + 32>;
/// The value with 0 to 20 decimals, rounded as printf rounds; no decimals, no point. A negative value that rounds to
/// nothing has no sign. The text stands in `buffer`.
std::string_view REAL_TEXT(RealText& buffer, double value, int decimals);
