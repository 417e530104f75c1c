#include "profiles/sampled_difference.h"

namespace {

/// A wet element, or a 1D line whatever its flag, without a value at the point.
bool isWet(const SampledPoints& points, std::size_t point, const Results& results) {
    for (std::size_t i = points.starts[point]; i < points.starts[point + 1]; ++i) {
        const auto id = static_cast<std::size_t>(points.places[i].element);
        if (results.cells == 0 || results.wet[id] != 0) return true;
        if (!points.index.oneD.empty() && points.index.oneD[id] != 0) return true;
    }
    return false;
}

}  // namespace

std::vector<Wetness> WETNESS_AT(const SampledPoints& points, const Results& results, const PointValues& values) {
    std::vector<Wetness> wetness(points.count(), Wetness::Outside);
    for (std::size_t i = 0; i < wetness.size(); ++i)
        if (!IS_MISSING(values.value[i])) wetness[i] = Wetness::Wet;
        else if (points.isInMesh(i)) wetness[i] = isWet(points, i, results) ? Wetness::Unknown : Wetness::Dry;
    return wetness;
}

void SUBTRACT_AT(const PointWetness& wetness, bool dryIsZero, std::vector<float>& now, const std::vector<float>& was) {
    for (std::size_t i = 0; i < now.size(); ++i)
        now[i] = DIFFERENCE_OF(now[i], wetness.now[i], was[i], wetness.was[i], dryIsZero);
}

void SUBTRACT_DIRECTIONS_AT(std::vector<float>& now, const std::vector<float>& was) {
    for (std::size_t i = 0; i < now.size(); ++i)
        now[i] = IS_MISSING(now[i]) || IS_MISSING(was[i]) ? NO_VALUE : TURN_OF(now[i], was[i]);
}
