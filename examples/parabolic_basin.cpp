#include "parabolic_basin.h"

#include <cmath>
#include <numbers>

namespace {
constexpr double GRAVITY = 9.81;  // m/s2
constexpr double SECONDS_PER_HOUR = 3600.0;
constexpr double OMEGA = 2.0 * std::numbers::pi / SECONDS_PER_HOUR;  // one turn an hour, radians a second
// metres; levels like those of a real valley, well off zero
constexpr double LOWEST_BED = 20.0;

double angle(double hours) { return OMEGA * SECONDS_PER_HOUR * hours; }
}  // namespace

// omega = sqrt(2 g h0) / a, solved for the depth h0. The disc reaches 0.37 + 0.12 = 0.49 of the side from the centre.
ParabolicBasin::ParabolicBasin(double side)
    : radius_(0.37 * side), excursion_(0.12 * side), depth_(radius_ * OMEGA * radius_ * OMEGA / (2.0 * GRAVITY)) {}

double ParabolicBasin::bed(BasinPoint p) const {
    return LOWEST_BED + depth_ * (p.x * p.x + p.y * p.y) / (radius_ * radius_);
}

double ParabolicBasin::surface(BasinPoint p, double hours) const {
    const double along = 2.0 * p.x * std::cos(angle(hours)) + 2.0 * p.y * std::sin(angle(hours)) - excursion_;
    return LOWEST_BED + depth_ + excursion_ * depth_ / (radius_ * radius_) * along;
}

BasinPoint ParabolicBasin::velocity(double hours) const {
    return {-excursion_ * OMEGA * std::sin(angle(hours)), excursion_ * OMEGA * std::cos(angle(hours))};
}
