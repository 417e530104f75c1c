// Elements as 3- and 4-cornered pieces and their triangles: the geometry that the grid pass and the point sampling
// share. What runs for every element of every output time is inline.
#pragma once

#include "geometry/no_value.h"
#include "inputs/mesh.h"
#include "raster/grid_plan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

/// A quad is covered by four triangles, each leaving one corner out. Triangle k (from 0) leaves out corner k, and
/// stands for bit k in a set of triangles. A 3-cornered piece is triangle 3 of a quad whose last corner does not exist.
constexpr std::array<std::array<std::uint8_t, 3>, 4> TRIANGLE_CORNERS = {{{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}}};
constexpr unsigned ALL_TRIANGLES = 0b1111U;

/// The number of the quad of its corners among the pieces of a 9-node quad, behind the four quads around its centre.
constexpr std::uint8_t CORNER_PIECE = 4;

struct ElementPiece {
    std::int32_t corners = 0;  ///< 3 or 4
    std::array<std::int32_t, 4> nodes{};
};

/// Number of pieces of an element: 0 when it takes no part in outputs, 4 for a 9-node quad unless only its corners
/// count, else 1.
int PIECE_COUNT(const MeshElement& element, PlanKind kind);
/// Piece `piece` (from 0) of an element that has it; CORNER_PIECE: the quad of its corners, whatever the kind.
ElementPiece PIECE_OF(const MeshElement& element, PlanKind kind, int piece);

/// True for a 9-node quad that lacks a value at a mid-side or centre node: the quad of its corners is laid then
/// (PlanKind::Corners), since without that node the quads around the centre would leave holes. values: per node,
/// numbered from 1.
bool LACKS_INNER_VALUE(const MeshElement& element, std::span<const float> values);

/// How far outside a triangle a point still counts as inside, so that rounding opens no gap between neighbours. size:
/// of the element; coordinateSize: largest coordinate of the grid or mesh, both in map units.
double INSIDE_TOLERANCE(double size, double coordinateSize);

/// A quad's outline. Crossed: it crosses itself, or folds back on itself.
enum class QuadForm : std::uint8_t { Convex, Concave, Crossed };

/// Where a piece lies. Coordinates are relative to its first corner, so that nothing is lost at coordinates of millions
/// of metres.
struct PieceShape {
    std::int32_t corners = 0;
    double x0 = 0.0, y0 = 0.0;          ///< first corner, map units
    std::array<double, 4> x{}, y{};     ///< corners relative to it; the fourth of a triangle repeats the first
    std::array<double, 4> twiceArea{};  ///< of the triangles, positive counter-clockwise
    double tolerance = 0.0;             ///< a point this near to a triangle is inside it, map units
    unsigned triangles = 0;             ///< set of the triangles that are not flat
    QuadForm form = QuadForm::Convex;
    /// bit s: points that lie in just the triangles of set s are inside the outline. The notch of a concave quad and
    /// the gaps beside the lobes of a crossed one are outside, though triangles of three corners cover them.
    std::uint16_t inside = 0;
};

/// Fills the coordinates and the areas of the triangles.
inline void PLACE_PIECE(const Mesh& mesh, std::int32_t corners, const std::array<std::int32_t, 4>& nodes,
                        PieceShape& shape) {
    const MeshNode& first = mesh.nodes[static_cast<std::size_t>(nodes[0])];
    shape.corners = corners;
    shape.x0 = first.x;
    shape.y0 = first.y;
    shape.x[0] = shape.y[0] = shape.x[3] = shape.y[3] = 0.0;
    for (std::size_t corner = 1; corner < static_cast<std::size_t>(corners); ++corner) {
        const MeshNode& node = mesh.nodes[static_cast<std::size_t>(nodes[corner])];
        shape.x[corner] = node.x - first.x;
        shape.y[corner] = node.y - first.y;
    }
    const auto& x = shape.x;
    const auto& y = shape.y;
    shape.twiceArea[3] = x[1] * y[2] - x[2] * y[1];
    if (corners == 3) return;
    shape.twiceArea[2] = x[1] * y[3] - x[3] * y[1];
    shape.twiceArea[1] = x[2] * y[3] - x[3] * y[2];
    shape.twiceArea[0] = (x[2] - x[1]) * (y[3] - y[1]) - (x[3] - x[1]) * (y[2] - y[1]);
}

/// Sets tolerance, triangles, form and inside. False for a piece that is flat in every triangle or has a coordinate
/// that is not a number.
bool FIND_TRIANGLES(PieceShape& shape, double coordinateSize);

using CornerValues = std::array<float, 4>;

/// Set of the triangles all of whose corners have values.
inline unsigned TRIANGLES_WITH_VALUES(std::int32_t corners, const CornerValues& values) {
    unsigned missing = corners == 3 ? 0b1000U : 0U;
    for (std::size_t corner = 0; corner < static_cast<std::size_t>(corners); ++corner)
        missing |= IS_MISSING(values[corner]) ? 1U << corner : 0U;
    // A triangle can do without the one corner that it leaves out.
    if (missing == 0) return ALL_TRIANGLES;
    return (missing & (missing - 1)) == 0 ? missing : 0U;
}

/// Linear function over a piece: value + east * x + north * y, relative to the piece's first corner.
struct Plane {
    double value = 0.0, east = 0.0, north = 0.0;
};

/// The plane through the corner values of a triangle that is not flat.
inline Plane TRIANGLE_PLANE(const PieceShape& shape, std::size_t triangle, const CornerValues& values) {
    const std::size_t a = TRIANGLE_CORNERS[triangle][0], b = TRIANGLE_CORNERS[triangle][1],
                      c = TRIANGLE_CORNERS[triangle][2];
    const double valueA = static_cast<double>(values[a]);
    const double riseB = static_cast<double>(values[b]) - valueA;
    const double riseC = static_cast<double>(values[c]) - valueA;
    const double scale = 1.0 / shape.twiceArea[triangle];
    Plane plane;
    plane.east = (riseB * (shape.y[c] - shape.y[a]) - riseC * (shape.y[b] - shape.y[a])) * scale;
    plane.north = (riseC * (shape.x[b] - shape.x[a]) - riseB * (shape.x[c] - shape.x[a])) * scale;
    plane.value = valueA - plane.east * shape.x[a] - plane.north * shape.y[a];
    return plane;
}

/// Mean over a set of triangles, kept within the range of their corner values, which no mean of values inside the
/// triangles leaves.
struct MeanPlane {
    Plane plane;
    float lowest = NO_VALUE, highest = NO_VALUE;

    /// NO_VALUE everywhere for an empty set.
    float AT(double east, double north) const {
        // Copies, so that no branch is taken to spare a load: which of the three it is cannot be foretold.
        const float low = lowest, high = highest;
        const auto value = static_cast<float>(plane.value + plane.east * east + plane.north * north);
        const float raised = value < low ? low : value;
        return high < raised ? high : raised;
    }
};

inline MeanPlane MEAN_PLANE(unsigned triangles, const std::array<Plane, 4>& planes, const CornerValues& values) {
    constexpr std::array<double, 16> SHARE = {0.0,       1.0,       1.0,       1.0 / 2.0, 1.0,       1.0 / 2.0,
                                              1.0 / 2.0, 1.0 / 3.0, 1.0,       1.0 / 2.0, 1.0 / 2.0, 1.0 / 3.0,
                                              1.0 / 2.0, 1.0 / 3.0, 1.0 / 3.0, 1.0 / 4.0};
    MeanPlane mean;
    if (triangles == 0) return mean;
    for (unsigned left = triangles; left != 0; left &= left - 1) {
        const auto triangle = static_cast<std::size_t>(std::countr_zero(left));
        mean.plane.value += planes[triangle].value;
        mean.plane.east += planes[triangle].east;
        mean.plane.north += planes[triangle].north;
    }
    mean.plane.value *= SHARE[triangles];
    mean.plane.east *= SHARE[triangles];
    mean.plane.north *= SHARE[triangles];

    // Two triangles have all four corners between them.
    const bool single = (triangles & (triangles - 1)) == 0;
    CornerValues used = values;
    if (single) {
        const auto corner = static_cast<std::size_t>(std::countr_zero(triangles));
        used[corner] = values[(corner + 1) % 4];
    }
    mean.lowest = std::min(std::min(used[0], used[1]), std::min(used[2], used[3]));
    mean.highest = std::max(std::max(used[0], used[1]), std::max(used[2], used[3]));
    return mean;
}
