#include "vector_outputs/flow.h"

#include "geometry/vector_magnitude.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double DEGREES = 180.0 / std::numbers::pi;

}  // namespace

TurnedAxes TURNED_AXES(float degrees) {
    const double angle = static_cast<double>(degrees) / DEGREES;
    return {std::cos(angle), std::sin(angle)};
}

void SET_FLOW(MapItem& item, const TurnedAxes& axes) {
    const auto vx = static_cast<double>(item.vx);
    const auto vy = static_cast<double>(item.vy);
    const float magnitude = VECTOR_MAGNITUDE(item.vx, item.vy);
    item[Column::Magnitude] = static_cast<double>(magnitude);
    item[Column::XComponent] = vx * axes.cosine + vy * axes.sine;
    item[Column::YComponent] = vy * axes.cosine - vx * axes.sine;
    item[Column::Angle] = item[Column::Bearing] = 0.0;
    if (magnitude == 0.0F) return;
    const double angle = std::atan2(vy, vx) * DEGREES;
    item[Column::Angle] = angle <= -180.0 ? 180.0 : angle;  // due west whichever zero the y component is
    item[Column::Bearing] = angle > 90.0 ? 450.0 - angle : 90.0 - angle;
}
