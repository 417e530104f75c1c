#include "vector_outputs/cell_shape.h"

#include "geometry/polygon_area.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double ROUNDING = 4.0e-16;  ///< relative error of a cross product of two differences

using Ring = std::span<const double>;

std::size_t cornerCount(const PieceShape& shape) { return static_cast<std::size_t>(shape.corners); }
Ring ringOf(const std::array<double, 4>& coordinates, const PieceShape& shape) {
    return Ring(coordinates).first(cornerCount(shape));
}

/// Side of c from the line a-b: 1 left, -1 right, 0 on it as far as rounding can tell.
int sideOf(Ring x, Ring y, std::size_t a, std::size_t b, std::size_t c) {
    const double first = (x[b] - x[a]) * (y[c] - y[a]);
    const double second = (y[b] - y[a]) * (x[c] - x[a]);
    const double cross = first - second;
    if (std::abs(cross) <= ROUNDING * (std::abs(first) + std::abs(second))) return 0;
    return cross > 0.0 ? 1 : -1;
}

/// For a point known to be on the line a-b.
bool between(Ring x, Ring y, std::size_t a, std::size_t b, std::size_t c) {
    return x[c] >= std::min(x[a], x[b]) && x[c] <= std::max(x[a], x[b]) && y[c] >= std::min(y[a], y[b]) &&
           y[c] <= std::max(y[a], y[b]);
}

/// True when sides a-b and c-d have a point in common.
bool meet(Ring x, Ring y, std::size_t a, std::size_t b, std::size_t c, std::size_t d) {
    const int sideC = sideOf(x, y, a, b, c);
    const int sideD = sideOf(x, y, a, b, d);
    if (sideC * sideD > 0) return false;
    const int sideA = sideOf(x, y, c, d, a);
    const int sideB = sideOf(x, y, c, d, b);
    if (sideA * sideB > 0) return false;
    if (sideC * sideD < 0 && sideA * sideB < 0) return true;
    return (sideC == 0 && between(x, y, a, b, c)) || (sideD == 0 && between(x, y, a, b, d)) ||
           (sideA == 0 && between(x, y, c, d, a)) || (sideB == 0 && between(x, y, c, d, b));
}

/// True when the ring turns straight back at vertex b, or has no length there.
bool turnsBack(Ring x, Ring y, std::size_t a, std::size_t b, std::size_t c) {
    if (sideOf(x, y, a, b, c) != 0) return false;
    return (x[a] - x[b]) * (x[c] - x[b]) + (y[a] - y[b]) * (y[c] - y[b]) >= 0.0;
}

double inSteps(double coordinate, double step) { return std::nearbyint(coordinate / step); }

}  // namespace

PieceShape CELL_SHAPE(const Mesh& mesh, const MeshElement& element) {
    PieceShape shape;
    const auto& nodes = element.nodes;
    PLACE_PIECE(mesh, element.shape == 3 ? 3 : 4, {nodes[0], nodes[1], nodes[2], nodes[3]}, shape);
    return shape;
}

double TWICE_CLOCKWISE_AREA(const PieceShape& shape) {
    return POLYGON_AREA_8(ringOf(shape.x, shape), ringOf(shape.y, shape));
}

bool VALID_RING(std::span<const double> x, std::span<const double> y) {
    const std::size_t n = x.size();
    for (std::size_t i = 0; i < n; ++i)
        if (turnsBack(x, y, i, (i + 1) % n, (i + 2) % n)) return false;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 2; j < n; ++j)
            if ((j + 1) % n != i && meet(x, y, i, i + 1, j, (j + 1) % n)) return false;
    return true;
}

bool VALID_CELL(const PieceShape& shape, double step) {
    if (step <= 0.0) return VALID_RING(ringOf(shape.x, shape), ringOf(shape.y, shape));
    // Rounded where they stand, as the file does it, in whole steps, whose differences are exact.
    std::array<double, 4> x{};
    std::array<double, 4> y{};
    const double firstX = inSteps(shape.x0, step);
    const double firstY = inSteps(shape.y0, step);
    for (std::size_t i = 1; i < cornerCount(shape); ++i) {
        x[i] = inSteps(shape.x0 + shape.x[i], step) - firstX;
        y[i] = inSteps(shape.y0 + shape.y[i], step) - firstY;
    }
    return VALID_RING(ringOf(x, shape), ringOf(y, shape));
}

MapPoint CELL_CENTROID(const PieceShape& shape) {
    const bool valid = VALID_CELL(shape, 0.0);
    const std::size_t corners = cornerCount(shape);
    double x = 0.0;
    double y = 0.0;
    for (std::size_t i = 0; i < corners; ++i) {
        const std::size_t next = (i + 1) % corners;
        const double weight = valid ? shape.x[i] * shape.y[next] - shape.x[next] * shape.y[i] : 1.0;
        x += weight * (valid ? shape.x[i] + shape.x[next] : shape.x[i]);
        y += weight * (valid ? shape.y[i] + shape.y[next] : shape.y[i]);
    }
    const double divisor = valid ? -3.0 * TWICE_CLOCKWISE_AREA(shape) : static_cast<double>(corners);
    return {shape.x0 + x / divisor, shape.y0 + y / divisor};
}

void CELL_REGION(const Mesh& mesh, const MeshElement& element, const PieceShape& shape, GisObject& o) {
    o.start(GisKind::Region);
    const std::size_t corners = cornerCount(shape);
    const bool clockwise = TWICE_CLOCKWISE_AREA(shape) > 0.0;
    for (std::size_t k = 0; k <= corners; ++k) {
        const std::size_t along = k % corners;
        const std::size_t corner = clockwise ? along : (corners - along) % corners;
        const MeshNode& node = mesh.nodes[static_cast<std::size_t>(element.nodes[corner])];
        o.add(node.x, node.y);
    }
    o.endPart();
}
