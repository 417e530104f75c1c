#include "geometry/direction.h"

#include "geometry/vector_magnitude.h"

#include <cmath>
#include <numbers>

float DIRECTION_OF(float east, float north) {
    if (VECTOR_MAGNITUDE(east, north) == 0.0F) return 0.0F;
    constexpr double DEGREES = 180.0 / std::numbers::pi;
    const auto degrees =
        static_cast<float>(std::atan2(static_cast<double>(north), static_cast<double>(east)) * DEGREES);
    return degrees <= -180.0F ? 180.0F : degrees;
}

float COMPONENT_ALONG(float east, float north, double directionEast, double directionNorth) {
    return static_cast<float>(static_cast<double>(east) * directionEast + static_cast<double>(north) * directionNorth);
}
