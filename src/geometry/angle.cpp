#include "geometry/angle.h"

#include <cmath>
#include <numbers>

namespace {

double directionDegrees(double dx, double dy) { return std::atan2(dy, dx) * 180.0 / std::numbers::pi; }

}  // namespace

float ANGLE2D(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    // 9.99999997e-7: the single-precision value, compared in double
    constexpr double VERTICAL = static_cast<double>(1e-6F);
    if (std::abs(x2 - x1) < VERTICAL || std::abs(x4 - x3) < VERTICAL) return 0.0F;
    const double turn = std::abs(directionDegrees(x2 - x1, y2 - y1) - directionDegrees(x4 - x3, y4 - y3));
    return static_cast<float>(turn > 180.0 ? 360.0 - turn : turn);
}
