#include "profiles/edge_crossings.h"

#include "raster/element_pieces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

/// One segment of a line, seen from its first vertex, so that nothing is lost at coordinates of millions of metres.
struct Segment {
    double x = 0.0, y = 0.0;         ///< first vertex, map units
    double east = 0.0, north = 0.0;  ///< unit direction
    double chainage = 0.0, length = 0.0;
    double tolerance = 0.0;  ///< a node this near to the line is on it
};

/// A node as the segment sees it.
struct Sight {
    double along = 0.0, left = 0.0;
};

Sight sightOf(const Segment& segment, const MeshNode& node) {
    const double x = node.x - segment.x, y = node.y - segment.y;
    return {segment.east * x + segment.north * y, segment.east * y - segment.north * x};
}

void add(const Segment& segment, double along, std::vector<double>& crossings) {
    if (along < -segment.tolerance || along > segment.length + segment.tolerance) return;
    crossings.push_back(segment.chainage + std::min(std::max(along, 0.0), segment.length));
}

void crossEdge(const Segment& segment, const Sight& a, const Sight& b, std::vector<double>& crossings) {
    const bool onA = std::abs(a.left) <= segment.tolerance, onB = std::abs(b.left) <= segment.tolerance;
    if (onA) add(segment, a.along, crossings);
    if (onB) add(segment, b.along, crossings);
    if (onA || onB || (a.left > 0.0) == (b.left > 0.0)) return;
    add(segment, a.along + (b.along - a.along) * (a.left / (a.left - b.left)), crossings);
}

void crossElement(const Segment& segment, const Mesh& mesh, const MeshElement& element, PlanKind kind,
                  std::vector<double>& crossings) {
    const int pieces = PIECE_COUNT(element, kind);
    // Within a cell that holds one value nothing changes.
    const std::int32_t centre = kind == PlanKind::Cells && pieces > 1 ? element.nodes[8] : 0;
    for (int number = 0; number < pieces; ++number) {
        const ElementPiece piece = PIECE_OF(element, kind, number);
        const auto corners = static_cast<std::size_t>(piece.corners);
        for (std::size_t i = 0; i < corners; ++i) {
            const std::int32_t a = piece.nodes[i], b = piece.nodes[(i + 1) % corners];
            if (centre != 0 && (a == centre || b == centre)) continue;
            // From the lower number, so that both elements beside an edge find the same place.
            crossEdge(segment, sightOf(segment, mesh.nodes[static_cast<std::size_t>(std::min(a, b))]),
                      sightOf(segment, mesh.nodes[static_cast<std::size_t>(std::max(a, b))]), crossings);
        }
    }
}

}  // namespace

std::vector<double> EDGE_CROSSINGS(const ProfileLine& line, const ElementBuckets& buckets, const Mesh& mesh,
                                   PlanKind kind) {
    std::vector<double> crossings;
    std::vector<std::int32_t> ids;
    for (std::size_t i = 0; i + 1 < line.x.size(); ++i) {
        Segment segment{line.x[i], line.y[i]};
        segment.chainage = line.chainage[i];
        segment.length = std::hypot(line.x[i + 1] - line.x[i], line.y[i + 1] - line.y[i]);
        segment.east = (line.x[i + 1] - line.x[i]) / segment.length;
        segment.north = (line.y[i + 1] - line.y[i]) / segment.length;
        segment.tolerance = INSIDE_TOLERANCE(0.0, buckets.coordinateSize);
        ELEMENTS_ALONG(buckets, line.x[i], line.y[i], line.x[i + 1], line.y[i + 1], ids);
        for (const std::int32_t id : ids)
            crossElement(segment, mesh, mesh.elements[static_cast<std::size_t>(id)], kind, crossings);
    }
    std::sort(crossings.begin(), crossings.end());
    return crossings;
}
