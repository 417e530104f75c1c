#include "raster/default_spacing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

void addSides(const Mesh& mesh, const MeshElement& quad, std::vector<double>& sides) {
    for (std::size_t corner = 0; corner < 4; ++corner) {
        const MeshNode& from = mesh.nodes[static_cast<std::size_t>(quad.nodes[corner])];
        const MeshNode& to = mesh.nodes[static_cast<std::size_t>(quad.nodes[(corner + 1) % 4])];
        const double side = std::hypot(to.x - from.x, to.y - from.y);
        if (std::isfinite(side)) sides.push_back(side);
    }
}

/// The middle one, or the mean of the two in the middle.
double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 != 0) return *middle;
    return 0.5 * (*middle + *std::max_element(values.begin(), middle));
}

}  // namespace

std::optional<double> DEFAULT_SPACING(const Mesh& mesh) {
    if (mesh.qlMesh) return std::nullopt;
    std::vector<double> sides;
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (!element.removed && (element.shape == 4 || element.shape == 9)) addSides(mesh, element, sides);
    }
    if (sides.empty()) return std::nullopt;
    const double spacing = median(sides) * (mesh.highResolution ? 0.5 : 1.0);
    const double rounded = std::round(spacing * 1000.0) / 1000.0;
    return rounded > 0.0 ? std::optional(rounded) : std::nullopt;
}
