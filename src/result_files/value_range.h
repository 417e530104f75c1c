// The smallest and the largest of the values of an output time.
#pragma once

#include "geometry/no_value.h"
#include "inputs/results.h"

struct ValueRange {
    float least = NO_VALUE, most = NO_VALUE;  ///< NO_VALUE where every value is missing
};

/// Of the values that are not missing, of dry cells too; of vectors their magnitudes.
ValueRange VALUE_RANGE(const Results& results);
/// The range of both together.
ValueRange WIDENED(const ValueRange& a, const ValueRange& b);
