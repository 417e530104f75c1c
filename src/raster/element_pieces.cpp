#include "raster/element_pieces.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace {

/// Slots of the quads around the centre node of a 9-node quad.
constexpr std::array<std::array<std::uint8_t, 4>, 4> QUADS_OF_NINE = {
    {{0, 4, 8, 7}, {4, 1, 5, 8}, {8, 5, 2, 6}, {7, 8, 6, 3}}};

bool isSplitInFour(const MeshElement& element, PlanKind kind) {
    return element.shape == 9 && kind != PlanKind::Corners;
}

/// The form of a quad whose triangles do not all turn the same way, and which sets are inside. positive, negative: the
/// triangles by their sense of turn, flat ones in neither.
void judgeOutline(unsigned positive, unsigned negative, PieceShape& shape) {
    shape.inside = 0;
    const auto include = [&shape](auto isInside) {
        for (unsigned set = 1; set <= ALL_TRIANGLES; ++set)
            if (isInside(set)) shape.inside = static_cast<std::uint16_t>(shape.inside | 1U << set);
    };
    if (std::popcount(positive) == 2 && std::popcount(negative) == 2) {
        // Two sides cross. Each lobe is where the two triangles on its outer side, which turn the same way, overlap.
        shape.form = QuadForm::Crossed;
        return include([=](unsigned set) { return (set & positive) == positive || (set & negative) == negative; });
    }
    // One triangle turns the other way: the notch beside a corner that points inwards. The diagonal from that corner
    // parts the quad into the two triangles that leave out a neighbour of the notch's missing corner.
    const unsigned notch = std::popcount(negative) == 1 ? negative : positive;
    const unsigned halves = notch == 0b0001U || notch == 0b0100U ? 0b1010U : 0b0101U;
    // Flat triangles beside the notch: the quad folds back on itself.
    shape.form = shape.triangles == ALL_TRIANGLES ? QuadForm::Concave : QuadForm::Crossed;
    include([=](unsigned set) { return (set & halves) != 0; });
}

}  // namespace

int PIECE_COUNT(const MeshElement& element, PlanKind kind) {
    if (element.removed || element.shape == 0) return 0;
    return isSplitInFour(element, kind) ? 4 : 1;
}

ElementPiece PIECE_OF(const MeshElement& element, PlanKind kind, int piece) {
    const auto& n = element.nodes;
    if (!isSplitInFour(element, kind) || piece == CORNER_PIECE) return {n[3] > 0 ? 4 : 3, {n[0], n[1], n[2], n[3]}};
    const auto& slots = QUADS_OF_NINE[static_cast<std::size_t>(piece)];
    return {4, {n[slots[0]], n[slots[1]], n[slots[2]], n[slots[3]]}};
}

bool LACKS_INNER_VALUE(const MeshElement& element, std::span<const float> values) {
    return element.shape == 9 && std::any_of(element.nodes.begin() + 4, element.nodes.end(), [&](std::int32_t node) {
               return IS_MISSING(values[static_cast<std::size_t>(node)]);
           });
}

double INSIDE_TOLERANCE(double size, double coordinateSize) {
    // Rounding of a coordinate, of a cell's position and of their difference, each a few units in the last place.
    constexpr double COORDINATE_ROUNDING = 16.0 * std::numeric_limits<double>::epsilon();
    return 1.0e-9 * size + COORDINATE_ROUNDING * coordinateSize;
}

bool FIND_TRIANGLES(PieceShape& shape, double coordinateSize) {
    constexpr std::uint16_t ANY_TRIANGLE = 0xFFFE;
    const auto [west, east] = std::minmax({shape.x[0], shape.x[1], shape.x[2], shape.x[3]});
    const auto [south, north] = std::minmax({shape.y[0], shape.y[1], shape.y[2], shape.y[3]});
    const double size = std::max(east - west, north - south);
    shape.tolerance = INSIDE_TOLERANCE(size, coordinateSize);
    shape.triangles = 0;
    shape.form = QuadForm::Convex;
    shape.inside = ANY_TRIANGLE;
    const std::size_t first = shape.corners == 3 ? 3 : 0;
    if (!std::isfinite(shape.twiceArea[3] + (first == 0 ? shape.twiceArea[1] : 0.0))) return false;

    // Flat: no higher than the tolerance. Written so that anything that is not a number is flat too.
    const double smallest = shape.tolerance * size;
    unsigned positive = 0;
    for (std::size_t triangle = first; triangle < 4; ++triangle) {
        if (!(std::abs(shape.twiceArea[triangle]) > smallest)) continue;
        shape.triangles |= 1U << triangle;
        if (shape.twiceArea[triangle] > 0.0) positive |= 1U << triangle;
    }
    const unsigned negative = shape.triangles & ~positive;
    if (positive != 0 && negative != 0) judgeOutline(positive, negative, shape);
    return shape.triangles != 0;
}
