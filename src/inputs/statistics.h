// What many values are like, in a few numbers.
#pragma once

#include <cstdint>
#include <span>

/// All zero when there is no value.
struct Statistics {
    std::int64_t count = 0;  ///< of values that are not missing; the others count nowhere
    double least = 0.0, most = 0.0;
    double mean = 0.0, meanAbsolute = 0.0;
    double percentile5 = 0.0, percentile95 = 0.0;  ///< linear between the ranks 0 to count - 1
};

/// Exact however many values there are, in a few passes and without a copy of them.
Statistics STATISTICS_OF(std::span<const float> values);
