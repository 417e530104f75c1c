#include "result_files/value_range.h"

#include "geometry/vector_magnitude.h"

#include <algorithm>
#include <cstddef>

namespace {

void take(float value, ValueRange& range) {
    if (IS_MISSING(value)) return;
    const bool first = range.most == NO_VALUE;
    range.least = first ? value : std::min(range.least, value);
    range.most = first ? value : std::max(range.most, value);
}

}  // namespace

ValueRange VALUE_RANGE(const Results& results) {
    ValueRange range;
    for (std::size_t i = 1; i < results.x.size(); ++i) {
        if (!results.vector) take(results.x[i], range);
        else if (!IS_MISSING(results.x[i]) && !IS_MISSING(results.y[i]))
            take(VECTOR_MAGNITUDE(results.x[i], results.y[i]), range);
    }
    return range;
}

ValueRange WIDENED(const ValueRange& a, const ValueRange& b) {
    ValueRange range = a;
    take(b.least, range);
    take(b.most, range);
    return range;
}
