// The missing value, the same in results, grids and files.
#pragma once

#include <cmath>

constexpr float NO_VALUE = -99999.0F;

/// Results at or below this are missing, which leaves room for rounding in files written by other programs.
constexpr float HIGHEST_MISSING = -99998.0F;

/// True for a value that stands for nothing: at or below HIGHEST_MISSING, not a number, or infinite.
inline bool IS_MISSING(float value) { return !(value > HIGHEST_MISSING) || std::isinf(value); }
