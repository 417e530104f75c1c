#include "geometry/median.h"

#include <algorithm>
#include <cstddef>

double MEDIAN(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 != 0) return *middle;
    return 0.5 * (*middle + *std::max_element(values.begin(), middle));
}
