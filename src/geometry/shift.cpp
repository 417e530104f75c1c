#include "geometry/shift.h"

#include <cmath>
#include <cstddef>
#include <numbers>

void GEO_SHIFT(std::span<const double> xs, std::span<const double> ys, double x0, double y0, double angle,
               std::span<float> us, std::span<float> vs) {
    const double radians = angle * std::numbers::pi / 180.0;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    for (std::size_t i = 0; i < xs.size(); ++i) {
        const double dx = xs[i] - x0;
        const double dy = ys[i] - y0;
        us[i] = static_cast<float>(dx * c + dy * s);
        vs[i] = static_cast<float>(dy * c - dx * s);
    }
}
