#include "geometry/distance.h"

#include <cmath>

namespace {

constexpr float SAME_PLACE = 1e-6F;

template <typename Real>
float distance(Real x1, Real y1, Real x2, Real y2) {
    const float dx = static_cast<float>(std::abs(x2 - x1));
    const float dy = static_cast<float>(std::abs(y2 - y1));
    if (dx < SAME_PLACE && dy < SAME_PLACE) return 0.0F;
    return std::sqrt(dx * dx + dy * dy);
}

template <typename Real>
bool samePoint(Real x1, Real y1, Real x2, Real y2, Real tolerance) {
    return std::abs(x1 - x2) < tolerance && std::abs(y1 - y2) < tolerance;
}

}  // namespace

float DISTANCE(float x1, float y1, float x2, float y2) { return distance(x1, y1, x2, y2); }
float DISTANCE_8(double x1, double y1, double x2, double y2) { return distance(x1, y1, x2, y2); }

bool SAME_POINT(float x1, float y1, float x2, float y2, float tolerance) {
    return samePoint(x1, y1, x2, y2, tolerance);
}
bool SAME_POINT_8(double x1, double y1, double x2, double y2, double tolerance) {
    return samePoint(x1, y1, x2, y2, tolerance);
}
