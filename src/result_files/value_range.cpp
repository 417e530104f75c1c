#include "result_files/value_range.h"

#include "geometry/vector_magnitude.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace {

void take(float value, ValueRange& range) {
    if (IS_MISSING(value)) return;
    const bool first = range.most == NO_VALUE;
    range.least = first ? value : std::min(range.least, value);
    range.most = first ? value : std::max(range.most, value);
}

/// Without a branch on the values, so that the loop over millions of them is done several at a time.
template <typename ValueOf>
ValueRange rangeOf(std::size_t count, ValueOf valueOf) {
    float least = std::numeric_limits<float>::infinity(), most = -least;
    for (std::size_t i = 1; i < count; ++i) {
        const float value = valueOf(i);
        const bool counts = value > HIGHEST_MISSING && value <= std::numeric_limits<float>::max();
        const float low = counts ? value : least, high = counts ? value : most;
        least = low < least ? low : least;
        most = high > most ? high : most;
    }
    return most < least ? ValueRange{} : ValueRange{least, most};
}

}  // namespace

ValueRange VALUE_RANGE(const Results& results) {
    const std::vector<float>&x = results.x, &y = results.y;
    if (!results.vector) return rangeOf(x.size(), [&](std::size_t i) { return x[i]; });
    return rangeOf(x.size(), [&](std::size_t i) {
        return IS_MISSING(x[i]) || IS_MISSING(y[i]) ? NO_VALUE : VECTOR_MAGNITUDE(x[i], y[i]);
    });
}

ValueRange WIDENED(const ValueRange& a, const ValueRange& b) {
    ValueRange range = a;
    take(b.least, range);
    take(b.most, range);
    return range;
}
