#include "geometry/polygon_area.h"

#include <cstddef>

double POLYGON_AREA_8(std::span<const double> xs, std::span<const double> ys) {
    double sum = 0.0;
    for (std::size_t i = 0, previous = xs.size() - 1; i < xs.size(); previous = i++)
        sum += (xs[previous] + xs[i]) * (ys[previous] - ys[i]);
    return sum;
}
