#include "raster/element_pieces.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Slots of the quads around the centre node of a 9-node quad.
constexpr std::array<std::array<std::uint8_t, 4>, 4> QUADS_OF_NINE = {
    {{0, 4, 8, 7}, {4, 1, 5, 8}, {8, 5, 2, 6}, {7, 8, 6, 3}}};

bool isSplitInFour(const MeshElement& element, PlanKind kind) {
    return element.shape == 9 && kind != PlanKind::Corners &&
           std::all_of(element.nodes.begin() + 4, element.nodes.end(), [](std::int32_t node) { return node > 0; });
}

/// The two triangles that the diagonal from a corner that points inwards makes: the quad itself, without the notch
/// beside that corner. Every triangle when no corner does.
unsigned trianglesInside(const PieceShape& shape) {
    const double area = shape.twiceArea[1] + shape.twiceArea[3];
    for (std::size_t corner = 0; corner < 4; ++corner)
        if (shape.twiceArea[(corner + 2) % 4] * area < 0.0) return corner % 2 == 0 ? 0b1010U : 0b0101U;
    return ALL_TRIANGLES;
}

}  // namespace

int PIECE_COUNT(const MeshElement& element, PlanKind kind) {
    if (element.removed || element.shape == 0) return 0;
    return isSplitInFour(element, kind) ? 4 : 1;
}

ElementPiece PIECE_OF(const MeshElement& element, PlanKind kind, int piece) {
    const auto& n = element.nodes;
    if (element.shape != 9 || !isSplitInFour(element, kind)) return {n[3] > 0 ? 4 : 3, {n[0], n[1], n[2], n[3]}};
    const auto& slots = QUADS_OF_NINE[static_cast<std::size_t>(piece)];
    return {4, {n[slots[0]], n[slots[1]], n[slots[2]], n[slots[3]]}};
}

double INSIDE_TOLERANCE(double size, double coordinateSize) {
    // Rounding of a coordinate, of a cell's position and of their difference, each a few units in the last place.
    constexpr double COORDINATE_ROUNDING = 16.0 * std::numeric_limits<double>::epsilon();
    return 1.0e-9 * size + COORDINATE_ROUNDING * coordinateSize;
}

bool FIND_TRIANGLES(PieceShape& shape, PlanKind kind, double coordinateSize) {
    const auto [west, east] = std::minmax({shape.x[0], shape.x[1], shape.x[2], shape.x[3]});
    const auto [south, north] = std::minmax({shape.y[0], shape.y[1], shape.y[2], shape.y[3]});
    const double size = std::max(east - west, north - south);
    shape.tolerance = INSIDE_TOLERANCE(size, coordinateSize);

    // Flat: no higher than the tolerance. Written so that anything that is not a number is flat too.
    const double smallest = shape.tolerance * size;
    const auto hasArea = [&](double twiceArea) { return std::abs(twiceArea) > smallest && std::isfinite(twiceArea); };
    shape.triangles = 0;
    if (shape.corners == 3) {
        shape.triangles = hasArea(shape.twiceArea[3]) ? 0b1000U : 0U;
        return shape.triangles != 0;
    }
    if (!hasArea(shape.twiceArea[1] + shape.twiceArea[3])) return false;
    for (unsigned triangle = 0; triangle < 4; ++triangle)
        if (hasArea(shape.twiceArea[triangle])) shape.triangles |= 1U << triangle;
    if (kind == PlanKind::Cells) shape.triangles &= trianglesInside(shape);
    return shape.triangles != 0;
}
