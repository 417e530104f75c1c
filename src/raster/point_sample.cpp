#include "raster/point_sample.h"

#include "geometry/no_value.h"
#include "raster/element_pieces.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// True for a point within the box of a triangle, as far as the tolerance: that of two sides adds up at the tip of a
/// sliver.
bool isNearTriangle(const PieceShape& shape, const std::array<std::uint8_t, 3>& corners, double x, double y) {
    const auto [west, east] = std::minmax({shape.x[corners[0]], shape.x[corners[1]], shape.x[corners[2]]});
    const auto [south, north] = std::minmax({shape.y[corners[0]], shape.y[corners[1]], shape.y[corners[2]]});
    return x >= west - shape.tolerance && x <= east + shape.tolerance && y >= south - shape.tolerance &&
           y <= north + shape.tolerance;
}

/// The triangles that contain a point given relative to the piece's first corner.
unsigned trianglesAround(const PieceShape& shape, double x, double y) {
    unsigned inside = 0;
    for (std::size_t k = 0; k < 4; ++k) {
        if ((shape.triangles >> k & 1U) == 0) continue;
        const auto& corners = TRIANGLE_CORNERS[k];
        const double turn = shape.twiceArea[k] > 0.0 ? 1.0 : -1.0;
        bool contains = true;
        for (std::size_t side = 0; side < 3 && contains; ++side) {
            const std::size_t a = corners[side], b = corners[(side + 1) % 3];
            const double east = shape.x[b] - shape.x[a];
            const double north = shape.y[b] - shape.y[a];
            const double left = (east * (y - shape.y[a]) - north * (x - shape.x[a])) * turn;
            contains = left >= -shape.tolerance * (std::abs(east) + std::abs(north));
        }
        if (contains && isNearTriangle(shape, corners, x, y)) inside |= 1U << k;
    }
    return inside;
}

/// Adds a piece of an element when the point lies in it.
void locateIn(const PointIndex& index, const Mesh& mesh, const PointPlace& candidate, double x, double y,
              std::vector<PointPlace>& places) {
    const MeshElement& element = mesh.elements[static_cast<std::size_t>(candidate.element)];
    const ElementPiece piece = PIECE_OF(element, index.kind, candidate.piece);
    PieceShape shape;
    PLACE_PIECE(mesh, piece.corners, piece.nodes, shape);
    if (!FIND_TRIANGLES(shape, index.buckets->coordinateSize)) return;
    const unsigned triangles = trianglesAround(shape, x - shape.x0, y - shape.y0);
    if ((shape.inside >> triangles & 1U) == 0) return;
    places.push_back({candidate.element, candidate.piece, static_cast<std::uint8_t>(triangles)});
}

/// Whether a place counts when the nodes have these values: a 9-node quad that lacks one is the quad of its corners.
bool counts(const PointIndex& index, const MeshElement& element, const PointPlace& place,
            std::span<const float> values) {
    if (index.kind != PlanKind::Nodes || element.shape != 9) return true;
    return (place.piece == CORNER_PIECE) == LACKS_INNER_VALUE(element, values);
}

}  // namespace

PointIndex INDEX_ELEMENTS(const Mesh& mesh, PlanKind kind) {
    return {kind, std::make_shared<const ElementBuckets>(BUCKET_ELEMENTS(mesh)), mesh.oneD};
}

void LOCATE_POINT(const PointIndex& index, const Mesh& mesh, double x, double y, std::vector<PointPlace>& places) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    FOR_ELEMENTS_NEAR(*index.buckets, x, y, [&](std::int32_t id) {
        const MeshElement& element = mesh.elements[static_cast<std::size_t>(id)];
        const int pieces = PIECE_COUNT(element, index.kind);
        for (int number = 0; number < pieces; ++number)
            locateIn(index, mesh, {id, static_cast<std::uint8_t>(number)}, x, y, places);
        if (pieces > 1 && index.kind == PlanKind::Nodes) locateIn(index, mesh, {id, CORNER_PIECE}, x, y, places);
    });
}

float VALUE_IN_PLACE(const PointIndex& index, const Mesh& mesh, const PointPlace& place, std::span<const float> values,
                     double x, double y) {
    const auto id = static_cast<std::size_t>(place.element);
    if (index.kind == PlanKind::Cells) return values[id];
    const ElementPiece piece = PIECE_OF(mesh.elements[id], index.kind, place.piece);
    CornerValues corners{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(piece.corners); ++i)
        corners[i] = values[static_cast<std::size_t>(piece.nodes[i])];
    const unsigned triangles = place.triangles & TRIANGLES_WITH_VALUES(piece.corners, corners);
    if (triangles == 0) return NO_VALUE;
    PieceShape shape;
    PLACE_PIECE(mesh, piece.corners, piece.nodes, shape);
    std::array<Plane, 4> planes;
    for (std::size_t k = 0; k < 4; ++k)
        if ((triangles >> k & 1U) != 0) planes[k] = TRIANGLE_PLANE(shape, k, corners);
    return MEAN_PLANE(triangles, planes, corners).AT(x - shape.x0, y - shape.y0);
}

PointSample SAMPLE_PLACES(const PointIndex& index, const Mesh& mesh, std::span<const PointPlace> places,
                          std::span<const float> values, std::span<const std::uint8_t> wet, double x, double y) {
    PointSample sample;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto id = static_cast<std::size_t>(places[i].element);
        if (!wet.empty() && wet[id] == 0 && (index.oneD.empty() || index.oneD[id] == 0)) continue;
        if (!counts(index, mesh.elements[id], places[i], values)) continue;
        const float value = VALUE_IN_PLACE(index, mesh, places[i], values, x, y);
        if (!IS_MISSING(value) && value >= sample.value) sample = {value, places[i].element, i};
    }
    return sample;
}

PointSample SAMPLE_POINT(const PointIndex& index, const Mesh& mesh, std::span<const float> values,
                         std::span<const std::uint8_t> wet, double x, double y) {
    std::vector<PointPlace> places;
    LOCATE_POINT(index, mesh, x, y, places);
    return SAMPLE_PLACES(index, mesh, places, values, wet, x, y);
}
