#include "flood.h"

#include <algorithm>
#include <cmath>

namespace {

/// The speed is the same in all the water at all times; only more than rounding counts as faster.
bool faster(const float* a, const float* b) {
    constexpr double ROUNDING = 1.0e-4;
    return std::hypot(static_cast<double>(a[0]), static_cast<double>(a[1])) >
           std::hypot(static_cast<double>(b[0]), static_cast<double>(b[1])) + ROUNDING;
}

/// pick: the larger or the smaller of two values. beats: true when the first vector replaces the kept one.
template <typename Pick, typename Beats>
void fold(FloodState& kept, const FloodState& state, Pick&& pick, Beats&& beats) {
    for (std::size_t i = 0; i < state.level.size(); ++i) {
        kept.level[i] = pick(kept.level[i], state.level[i]);
        kept.depth[i] = pick(kept.depth[i], state.depth[i]);
        if (beats(&state.velocity[2 * i], &kept.velocity[2 * i])) {
            kept.velocity[2 * i] = state.velocity[2 * i];
            kept.velocity[2 * i + 1] = state.velocity[2 * i + 1];
        }
    }
    for (std::size_t cell = 0; cell < state.wet.size(); ++cell) kept.wet[cell] = pick(kept.wet[cell], state.wet[cell]);
}

}  // namespace

void FLOOD_AT(const ParabolicBasin& basin, const SquareMesh& mesh, double hours, FloodState& state) {
    const std::size_t nodes = mesh.x.size();
    state.time = hours;
    state.level.resize(nodes);
    state.depth.resize(nodes);
    state.velocity.resize(2 * nodes);
    const BasinPoint flow = basin.velocity(hours);
    for (std::size_t i = 0; i < nodes; ++i) {
        const BasinPoint p = {mesh.x[i] - mesh.centreX, mesh.y[i] - mesh.centreY};
        const double bed = basin.bed(p);
        const double depth = std::max(0.0, basin.surface(p, hours) - bed);
        state.depth[i] = static_cast<float>(depth);
        state.level[i] = static_cast<float>(bed + depth);
        state.velocity[2 * i] = depth > 0.0 ? static_cast<float>(flow.x) : 0.0F;
        state.velocity[2 * i + 1] = depth > 0.0 ? static_cast<float>(flow.y) : 0.0F;
    }
    state.wet.clear();
    state.wet.reserve(mesh.elementCount());
    FOR_EACH_ELEMENT(mesh, [&](const ElementNodes& element) {
        const bool wet = std::all_of(element.begin(), element.end(), [&](std::int32_t node) {
            return node == 0 || state.depth[static_cast<std::size_t>(node) - 1] > 0.0F;
        });
        state.wet.push_back(wet ? 1 : 0);
    });
}

void FloodExtremes::add(const FloodState& state) {
    if (maximum_.level.empty()) {
        maximum_ = minimum_ = state;
        maximum_.time = MAXIMUM_TIME;
        minimum_.time = MINIMUM_TIME;
        timeOfPeak_.assign(state.level.size(), static_cast<float>(state.time));
        return;
    }
    for (std::size_t i = 0; i < state.level.size(); ++i)
        if (state.level[i] > maximum_.level[i]) timeOfPeak_[i] = static_cast<float>(state.time);
    fold(
        maximum_, state, [](const auto& a, const auto& b) { return std::max(a, b); }, faster);
    fold(
        minimum_, state, [](const auto& a, const auto& b) { return std::min(a, b); },
        [](const float* a, const float* b) { return faster(b, a); });
}
