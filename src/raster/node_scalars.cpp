#include "raster/node_scalars.h"

#include "geometry/direction.h"
#include "geometry/no_value.h"
#include "geometry/vector_magnitude.h"
#include "services/console.h"
#include "services/exits.h"

#include <cmath>
#include <cstddef>
#include <numbers>
#include <string_view>

namespace {

constexpr double DEGREES = 180.0 / std::numbers::pi;

struct Saying {
    std::string_view before, after;
};
Saying sayingOf(VectorScalar scalar) {
    switch (scalar) {
        case VectorScalar::XComponent:
            return {"Vector input and raster output, using X direction component.", "   ... done."};
        case VectorScalar::YComponent:
            return {"Vector input and raster output, using Y direction component.", "   ... done."};
        case VectorScalar::Direction: return {"Vector input and raster output, using direction.", "   ... done."};
        case VectorScalar::Magnitude: break;
    }
    return {"Vector input and raster output, converting vectors to scalar...",
            "   ... done converting vector to scalar."};
}

template <typename Rule>
void applyRule(const Results& results, std::vector<float>& scalars, Rule rule) {
    scalars.assign(results.x.size(), NO_VALUE);
    for (std::size_t i = 1; i < results.x.size(); ++i)
        if (!IS_MISSING(results.x[i]) && !IS_MISSING(results.y[i])) scalars[i] = rule(results.x[i], results.y[i]);
}

}  // namespace

VectorChoice VECTOR_CHOICE(const RunOptions& options) {
    VectorChoice choice;
    choice.slantAngle = options.slantAngle;
    choice.compass = options.compass;
    if (options.vx) choice.scalar = VectorScalar::XComponent;
    else if (options.vy) choice.scalar = VectorScalar::YComponent;
    else if (options.va || options.vdir) choice.scalar = VectorScalar::Direction;
    return choice;
}

void NODE_SCALARS(const Results& results, const VectorChoice& choice, bool highResolution,
                  std::vector<float>& scalars) {
    if (choice.scalar == VectorScalar::Direction && highResolution)
        STOP_RUN("ERROR - \"-va\" not supported for high res results.");
    const Saying saying = sayingOf(choice.scalar);
    REPORT(saying.before);
    const double angle = static_cast<double>(choice.slantAngle) / DEGREES;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const auto turned = [](double alongCosine, double alongSine, double cosine, double sine) {
        return static_cast<float>(alongCosine * cosine + alongSine * sine);
    };
    switch (choice.scalar) {
        case VectorScalar::XComponent:
            applyRule(results, scalars, [&](float vx, float vy) { return turned(vx, vy, c, s); });
            break;
        case VectorScalar::YComponent:
            applyRule(results, scalars, [&](float vx, float vy) { return turned(vy, vx, c, -s); });
            break;
        case VectorScalar::Direction: applyRule(results, scalars, DIRECTION_OF); break;
        case VectorScalar::Magnitude: applyRule(results, scalars, VECTOR_MAGNITUDE); break;
    }
    REPORT(saying.after);
}

void FILTER_DIRECTIONS(Grid& grid) {
    for (float& value : grid.values)
        if (value > 180.0F) value -= 360.0F;
}

void DIRECTIONS_TO_BEARINGS(Grid& grid) {
    for (float& value : grid.values) {
        if (IS_MISSING(value)) continue;
        const float bearing = 90.0F - value;
        value = bearing < 0.0F ? bearing + 360.0F : bearing;
        if (value >= 360.0F) value = 0.0F;  // a hair west of north rounds to a whole turn
    }
}
