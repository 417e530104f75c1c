#include "raster/point_sample.h"

#include "geometry/no_value.h"
#include "inputs/one_d_triangles.h"
#include "raster/element_pieces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

constexpr std::int64_t MOST_BUCKETS_PER_ELEMENT = 64;

struct Box {
    double xmin = 9.0e29, xmax = -9.0e29, ymin = 9.0e29, ymax = -9.0e29;
    void include(double x, double y) {
        if (!std::isfinite(x) || !std::isfinite(y)) return;
        xmin = std::min(xmin, x);
        xmax = std::max(xmax, x);
        ymin = std::min(ymin, y);
        ymax = std::max(ymax, y);
    }
    double size() const { return std::max(xmax - xmin, ymax - ymin); }
    bool empty() const { return xmin > xmax; }
};

Box boxOf(const Mesh& mesh, const MeshElement& element) {
    Box box;
    for (const std::int32_t node : element.nodes)
        if (node > 0)
            box.include(mesh.nodes[static_cast<std::size_t>(node)].x, mesh.nodes[static_cast<std::size_t>(node)].y);
    return box;
}

/// Which bucket a coordinate falls into; the outermost ones take what lies beyond. Never falls as the coordinate grows,
/// so that a point inside a box is in one of the box's buckets whatever the rounding.
std::int32_t bucketOf(double coordinate, double lowest, double size, std::int32_t count) {
    const double at = (coordinate - lowest) / size;
    if (!(at > 0.0)) return 0;
    return at < count ? static_cast<std::int32_t>(at) : count - 1;
}

struct BucketRange {
    std::int32_t firstColumn, lastColumn, firstRow, lastRow;
    std::int64_t count() const { return std::int64_t{lastColumn - firstColumn + 1} * (lastRow - firstRow + 1); }
};

BucketRange bucketsOf(const PointIndex& index, const Box& box) {
    const double reach = INSIDE_TOLERANCE(box.size(), index.coordinateSize) * 2.0;
    return {bucketOf(box.xmin - reach, index.xmin, index.bucketSize, index.columns),
            bucketOf(box.xmax + reach, index.xmin, index.bucketSize, index.columns),
            bucketOf(box.ymin - reach, index.ymin, index.bucketSize, index.rows),
            bucketOf(box.ymax + reach, index.ymin, index.bucketSize, index.rows)};
}

/// About as many buckets as elements, however long and narrow the mesh.
void layOutBuckets(PointIndex& index, const Box& mesh, std::int32_t elements) {
    const double width = mesh.xmax - mesh.xmin;
    const double height = mesh.ymax - mesh.ymin;
    index.xmin = mesh.xmin;
    index.ymin = mesh.ymin;
    index.bucketSize = std::max(std::sqrt(width / elements * height), mesh.size() / elements);
    if (!(index.bucketSize > 0.0)) index.bucketSize = 1.0;
    index.columns = static_cast<std::int32_t>(width / index.bucketSize) + 1;
    index.rows = static_cast<std::int32_t>(height / index.bucketSize) + 1;
    index.coordinateSize = std::max(std::max(std::abs(mesh.xmin), std::abs(mesh.xmax)),
                                    std::max(std::abs(mesh.ymin), std::abs(mesh.ymax)));
}

/// Calls visit(element id, bucket number) for every bucket that a listed element touches, and wide(id) for the wide
/// ones.
template <typename Visit, typename Wide>
void forEachEntry(const PointIndex& index, const Mesh& mesh, Visit visit, Wide wide) {
    for (std::int32_t id = 1; id <= mesh.elementCount; ++id) {
        const MeshElement& element = mesh.elements[static_cast<std::size_t>(id)];
        if (PIECE_COUNT(element, index.kind) == 0) continue;
        const Box box = boxOf(mesh, element);
        if (box.empty()) continue;
        const BucketRange range = bucketsOf(index, box);
        if (range.count() > MOST_BUCKETS_PER_ELEMENT) {
            wide(id);
            continue;
        }
        for (std::int32_t row = range.firstRow; row <= range.lastRow; ++row)
            for (std::int32_t column = range.firstColumn; column <= range.lastColumn; ++column)
                visit(id, static_cast<std::size_t>(row) * static_cast<std::size_t>(index.columns) +
                              static_cast<std::size_t>(column));
    }
}

/// The triangles that contain a point given relative to the piece's first corner.
unsigned trianglesAround(const PieceShape& shape, double x, double y) {
    unsigned inside = 0;
    for (std::size_t k = 0; k < 4; ++k) {
        if ((shape.triangles >> k & 1U) == 0) continue;
        const auto& corners = TRIANGLE_CORNERS[k];
        const double turn = shape.twiceArea[k] > 0.0 ? 1.0 : -1.0;
        bool contains = true;
        Box box;
        for (std::size_t side = 0; side < 3 && contains; ++side) {
            const std::size_t a = corners[side], b = corners[(side + 1) % 3];
            const double east = shape.x[b] - shape.x[a];
            const double north = shape.y[b] - shape.y[a];
            const double left = (east * (y - shape.y[a]) - north * (x - shape.x[a])) * turn;
            contains = left >= -shape.tolerance * (std::abs(east) + std::abs(north));
            box.include(shape.x[a], shape.y[a]);
        }
        // The tolerance of two sides adds up at the tip of a sliver.
        contains = contains && x >= box.xmin - shape.tolerance && x <= box.xmax + shape.tolerance &&
                   y >= box.ymin - shape.tolerance && y <= box.ymax + shape.tolerance;
        if (contains) inside |= 1U << k;
    }
    return inside;
}

/// Value of one piece at a point; NO_VALUE where it has none.
float valueInPiece(const Mesh& mesh, const PointIndex& index, const ElementPiece& piece, std::span<const float> values,
                   double x, double y) {
    PieceShape shape;
    PLACE_PIECE(mesh, piece.corners, piece.nodes, shape);
    if (!FIND_TRIANGLES(shape, index.kind, index.coordinateSize)) return NO_VALUE;
    const double east = x - shape.x0;
    const double north = y - shape.y0;
    unsigned triangles = trianglesAround(shape, east, north);
    if (index.kind == PlanKind::Cells) return triangles != 0 ? 0.0F : NO_VALUE;  // inside or not is all that is asked

    CornerValues corners{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(piece.corners); ++i)
        corners[i] = values[static_cast<std::size_t>(piece.nodes[i])];
    triangles &= TRIANGLES_WITH_VALUES(piece.corners, corners);
    if (triangles == 0) return NO_VALUE;
    std::array<Plane, 4> planes;
    for (std::size_t k = 0; k < 4; ++k)
        if ((triangles >> k & 1U) != 0) planes[k] = TRIANGLE_PLANE(shape, k, corners);
    return MEAN_PLANE(triangles, planes, corners).AT(east, north);
}

/// Value of one element at a point: the largest of its pieces.
float valueInElement(const Mesh& mesh, const PointIndex& index, std::int32_t id, std::span<const float> values,
                     double x, double y) {
    const MeshElement& element = mesh.elements[static_cast<std::size_t>(id)];
    float value = NO_VALUE;
    const int pieces = PIECE_COUNT(element, index.kind);
    for (int piece = 0; piece < pieces; ++piece)
        value = std::max(value, valueInPiece(mesh, index, PIECE_OF(element, index.kind, piece), values, x, y));
    if (index.kind != PlanKind::Cells || IS_MISSING(value)) return value;
    return values[static_cast<std::size_t>(id)];
}

}  // namespace

PointIndex INDEX_ELEMENTS(const Mesh& mesh, PlanKind kind) {
    PointIndex index;
    index.kind = kind;
    index.oneD = ONE_D_TRIANGLES(mesh);
    Box whole;
    for (const MeshElement& element : mesh.elements) {
        if (PIECE_COUNT(element, kind) == 0) continue;
        const Box box = boxOf(mesh, element);
        if (box.empty()) continue;
        whole.include(box.xmin, box.ymin);
        whole.include(box.xmax, box.ymax);
    }
    if (whole.empty()) return index;
    layOutBuckets(index, whole, mesh.elementCount);

    // Entries per bucket, then where each bucket begins, then the entries: in numbering order inside every bucket.
    index.starts.assign(static_cast<std::size_t>(index.columns) * static_cast<std::size_t>(index.rows) + 1, 0);
    forEachEntry(
        index, mesh, [&](std::int32_t, std::size_t bucket) { ++index.starts[bucket]; },
        [&](std::int32_t id) { index.wideElements.push_back(id); });
    std::uint32_t total = 0;
    for (std::uint32_t& start : index.starts) start = std::exchange(total, total + start);
    index.elements.resize(total);
    std::vector<std::uint32_t> next = index.starts;
    forEachEntry(
        index, mesh, [&](std::int32_t id, std::size_t bucket) { index.elements[next[bucket]++] = id; },
        [](std::int32_t) {});
    return index;
}

PointSample SAMPLE_POINT(const PointIndex& index, const Mesh& mesh, std::span<const float> values,
                         std::span<const std::uint8_t> wet, double x, double y) {
    PointSample sample;
    if (index.starts.empty() || !std::isfinite(x) || !std::isfinite(y)) return sample;
    const auto offer = [&](std::int32_t id) {
        const auto at = static_cast<std::size_t>(id);
        if (!wet.empty() && wet[at] == 0 && (index.oneD.empty() || index.oneD[at] == 0)) return;
        const float value = valueInElement(mesh, index, id, values, x, y);
        if (IS_MISSING(value) || value < sample.value || (value == sample.value && id < sample.element)) return;
        sample = {value, id};
    };
    const auto column = static_cast<std::size_t>(bucketOf(x, index.xmin, index.bucketSize, index.columns));
    const auto row = static_cast<std::size_t>(bucketOf(y, index.ymin, index.bucketSize, index.rows));
    const std::size_t bucket = row * static_cast<std::size_t>(index.columns) + column;
    for (std::uint32_t i = index.starts[bucket]; i < index.starts[bucket + 1]; ++i) offer(index.elements[i]);
    for (const std::int32_t id : index.wideElements) offer(id);
    return sample;
}
