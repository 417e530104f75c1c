#include "raster/default_spacing.h"

#include "geometry/median.h"

#include <array>
#include <charconv>
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

double toThreeDigits(double value) {
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, 2);
    std::from_chars(text.data(), written.ptr, value);
    return value;
}

}  // namespace

std::optional<double> DEFAULT_SPACING(const Mesh& mesh, bool degrees) {
    if (mesh.qlMesh) return std::nullopt;
    std::vector<double> sides;
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (!element.removed && (element.shape == 4 || element.shape == 9)) addSides(mesh, element, sides);
    }
    if (sides.empty()) return std::nullopt;
    const double spacing = MEDIAN(sides) * (mesh.highResolution ? 0.5 : 1.0);
    const double rounded = degrees ? toThreeDigits(spacing) : std::round(spacing * 1000.0) / 1000.0;
    return rounded > 0.0 ? std::optional(rounded) : std::nullopt;
}
