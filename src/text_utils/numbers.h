// Numbers to text. The decimal point is "." whatever the locale; nothing is ever starred: a number wider than its field
// widens it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// -12 -> "-12"
std::string AINTEGER(std::int32_t value);
std::string AINTEGER8(std::int64_t value);

/// Fixed notation with decimals by magnitude (below 0.01 six, then one fewer per power of ten, 1000 and above none);
/// trailing zeros go and the point stays: 2.0 -> "2.", 0.25 -> "0.25", 1500.0 -> "1500.".
std::string AREAL(float value);
/// The same for 64-bit reals: below 1 ten decimals, then one fewer per power of ten, 1e9 and above none.
std::string AREAL8(double value);

/// Fixed notation with exactly `decimals` (0 to 20) decimals: (2.5, 2) -> "2.50", (2.5, 0) -> "2." rounded half to even
/// as printf rounds. With no decimals the point stays, as everywhere in the program's files.
std::string AREALD(float value, int decimals);
std::string AREALD8(double value, int decimals);

/// Fixed notation right-aligned in `width` characters, as a Fortran Fw.d field: (1.5, 8, 3) -> "   1.500". Widened when
/// it does not fit.
std::string FIXED_FIELD(double value, int width, int decimals);

/// True when the trimmed text is digits only, without a sign, and its value fits 32 bits. "0" counts: -prec0.3 is read
/// as 1 unit.
bool POSITIVEINTEGERNUMBER(std::string_view text);

/// The number that the value's text with so many decimals names: (1.23456, 2) -> 1.23; halves as the text has them, no
/// negative zero. Beyond 15 decimals the value as it is.
double ROUNDED(double value, int decimals);
