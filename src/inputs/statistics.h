// What many values are like, in a few numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

/// All zero when there is no value.
struct Statistics {
    std::int64_t count = 0;  ///< of values that are not missing; the others count nowhere
    double least = 0.0, most = 0.0;
    double mean = 0.0, meanAbsolute = 0.0;
    double percentile5 = 0.0, percentile95 = 0.0;  ///< linear between the ranks 0 to count - 1
};

/// Values that are not held together: `each` hands on all of them in stretches, the same ones at every call.
struct ValuesInStretches {
    std::size_t count = 0;
    std::function<void(const std::function<void(std::span<const float>)>& take)> each;
};

/// Exact however many values there are, in a few passes and without a copy of them. Wherever the stretches are cut, the
/// result is the same to the last bit.
Statistics STATISTICS_OF(const ValuesInStretches& values);
Statistics STATISTICS_OF(std::span<const float> values);
