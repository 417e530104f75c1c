#include "inputs/coordinate_decimals.h"

#include "inputs/mesh_degrees.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

constexpr int METRE_DECIMALS = 3;
constexpr int DEGREE_DECIMALS = 8;
constexpr int MOST_DECIMALS = 12;

/// Infinite for a mesh without a side.
double shortestSide(const Mesh& mesh) {
    double shortest = std::numeric_limits<double>::infinity();
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (element.shape == 0 || element.removed) continue;
        const std::size_t corners = element.shape == 3 ? 3 : 4;
        for (std::size_t corner = 0; corner < corners; ++corner) {
            const MeshNode& from = mesh.nodes[static_cast<std::size_t>(element.nodes[corner])];
            const MeshNode& to = mesh.nodes[static_cast<std::size_t>(element.nodes[(corner + 1) % corners])];
            const double side = std::hypot(to.x - from.x, to.y - from.y);
            if (side > 0.0 && side < shortest) shortest = side;
        }
    }
    return shortest;
}

}  // namespace

int COORDINATE_DECIMALS(const Mesh& mesh, CoordinateKind kind) {
    constexpr double ROUNDING = 1.0e-6;  // a side of 0.01 needs five decimals, not six for its last bit
    const int least = IS_IN_DEGREES(mesh, kind) ? DEGREE_DECIMALS : METRE_DECIMALS;
    const double needed = std::ceil(-std::log10(shortestSide(mesh) / 1000.0) - ROUNDING);
    return std::clamp(static_cast<int>(std::clamp(needed, 0.0, 99.0)), least, MOST_DECIMALS);
}
