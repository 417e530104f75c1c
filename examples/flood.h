// The flood on a mesh: what the results files hold at one output time, and the extremes over all of them.
#pragma once

#include "parabolic_basin.h"
#include "square_mesh.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// The times under which stored extremes stand in a results file.
constexpr double MAXIMUM_TIME = 99999.0;
constexpr double MINIMUM_TIME = -99999.0;

/// One output time. A node is wet where the water surface lies above the bed. Dry nodes carry the bed as their water
/// level, with no depth and no velocity. A cell is wet when all its nodes are, so that every wet cell lies on the plane
/// of the water surface.
struct FloodState {
    double time = 0.0;              ///< hours
    std::vector<float> level;       ///< per node, metres
    std::vector<float> depth;       ///< per node, metres
    std::vector<float> velocity;    ///< per node: x, y, metres a second
    std::vector<std::uint8_t> wet;  ///< per cell: 1 wet, 0 dry
};

void FLOOD_AT(const ParabolicBasin& basin, const SquareMesh& mesh, double hours, FloodState& state);

/// Running extremes over the states given to `add`, per node of each quantity; of velocity the first vector of the
/// largest (smallest) magnitude. The maximum of a cell's flags is wet when it was wet at any time, the minimum when it
/// was wet at every time.
class FloodExtremes {
public:
    void add(const FloodState& state);
    const FloodState& maximum() const { return maximum_; }
    const FloodState& minimum() const { return minimum_; }
    /// Hours at which each node first reached its highest level.
    const std::vector<float>& timeOfPeak() const { return timeOfPeak_; }

private:
    FloodState maximum_, minimum_;
    std::vector<float> timeOfPeak_;
};
