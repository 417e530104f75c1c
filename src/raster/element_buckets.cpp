#include "raster/element_buckets.h"

#include "raster/element_pieces.h"

#include <algorithm>
#include <cmath>
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

/// Empty for an element that takes part in nothing.
Box boxOf(const Mesh& mesh, const MeshElement& element) {
    Box box;
    if (element.removed || element.shape == 0) return box;
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
std::int32_t columnOf(const ElementBuckets& b, double x) { return bucketOf(x, b.xmin, b.bucketSize, b.columns); }
std::int32_t rowOf(const ElementBuckets& b, double y) { return bucketOf(y, b.ymin, b.bucketSize, b.rows); }

std::size_t bucketNumber(const ElementBuckets& buckets, std::int32_t column, std::int32_t row) {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(buckets.columns) + static_cast<std::size_t>(column);
}

struct BucketRange {
    std::int32_t firstColumn, lastColumn, firstRow, lastRow;
    std::int64_t count() const { return std::int64_t{lastColumn - firstColumn + 1} * (lastRow - firstRow + 1); }
};

BucketRange bucketsOf(const ElementBuckets& buckets, const Box& box) {
    const double reach = INSIDE_TOLERANCE(box.size(), buckets.coordinateSize) * 2.0;
    return {columnOf(buckets, box.xmin - reach), columnOf(buckets, box.xmax + reach), rowOf(buckets, box.ymin - reach),
            rowOf(buckets, box.ymax + reach)};
}

/// About as many buckets as elements, however long and narrow the mesh.
void layOutBuckets(ElementBuckets& buckets, const Box& mesh, std::int32_t elements) {
    const double width = mesh.xmax - mesh.xmin;
    const double height = mesh.ymax - mesh.ymin;
    buckets.xmin = mesh.xmin;
    buckets.ymin = mesh.ymin;
    buckets.xmax = mesh.xmax;
    buckets.ymax = mesh.ymax;
    buckets.bucketSize = std::max(std::sqrt(width / elements * height), mesh.size() / elements);
    if (!(buckets.bucketSize > 0.0)) buckets.bucketSize = 1.0;
    buckets.columns = static_cast<std::int32_t>(width / buckets.bucketSize) + 1;
    buckets.rows = static_cast<std::int32_t>(height / buckets.bucketSize) + 1;
    buckets.coordinateSize = std::max(std::max(std::abs(mesh.xmin), std::abs(mesh.xmax)),
                                      std::max(std::abs(mesh.ymin), std::abs(mesh.ymax)));
}

/// Calls visit(element id, bucket number) for every bucket that a listed element touches, and wide(id) for the wide
/// ones.
template <typename Visit, typename Wide>
void forEachEntry(const ElementBuckets& buckets, const Mesh& mesh, Visit visit, Wide wide) {
    for (std::int32_t id = 1; id <= mesh.elementCount; ++id) {
        const Box box = boxOf(mesh, mesh.elements[static_cast<std::size_t>(id)]);
        if (box.empty()) continue;
        const BucketRange range = bucketsOf(buckets, box);
        if (range.count() > MOST_BUCKETS_PER_ELEMENT) {
            wide(id);
            continue;
        }
        for (std::int32_t row = range.firstRow; row <= range.lastRow; ++row)
            for (std::int32_t column = range.firstColumn; column <= range.lastColumn; ++column)
                visit(id, bucketNumber(buckets, column, row));
    }
}

/// Cuts the range [from, to] of a line's parameter to where start + t * step lies in [lowest, highest].
void clip(double start, double step, double lowest, double highest, double& from, double& to) {
    if (step == 0.0) {
        if (start < lowest || start > highest) to = from - 1.0;
        return;
    }
    const double a = (lowest - start) / step, b = (highest - start) / step;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
}

}  // namespace

ElementBuckets BUCKET_ELEMENTS(const Mesh& mesh) {
    ElementBuckets buckets;
    Box whole;
    for (const MeshElement& element : mesh.elements) {
        const Box box = boxOf(mesh, element);
        if (box.empty()) continue;
        whole.include(box.xmin, box.ymin);
        whole.include(box.xmax, box.ymax);
    }
    if (whole.empty()) return buckets;
    layOutBuckets(buckets, whole, mesh.elementCount);

    // Entries per bucket, then where each bucket begins, then the entries: in numbering order inside every bucket.
    buckets.starts.assign(bucketNumber(buckets, 0, buckets.rows) + 1, 0);
    forEachEntry(
        buckets, mesh, [&](std::int32_t, std::size_t bucket) { ++buckets.starts[bucket]; },
        [&](std::int32_t id) { buckets.wideElements.push_back(id); });
    std::uint32_t total = 0;
    for (std::uint32_t& start : buckets.starts) start = std::exchange(total, total + start);
    buckets.elements.resize(total);
    std::vector<std::uint32_t> next = buckets.starts;
    forEachEntry(
        buckets, mesh, [&](std::int32_t id, std::size_t bucket) { buckets.elements[next[bucket]++] = id; },
        [](std::int32_t) {});
    return buckets;
}

std::size_t BUCKET_AT(const ElementBuckets& buckets, double x, double y) {
    return bucketNumber(buckets, columnOf(buckets, x), rowOf(buckets, y));
}

void ELEMENTS_ALONG(const ElementBuckets& buckets, double x1, double y1, double x2, double y2,
                    std::vector<std::int32_t>& ids) {
    ids.clear();
    if (buckets.rows == 0) return;
    // Wide enough for the rounding of where the line meets a row's edge; a bucket too many does no harm.
    const double margin = buckets.bucketSize * 1.0e-6 + INSIDE_TOLERANCE(0.0, buckets.coordinateSize) * 4.0;
    const double dx = x2 - x1, dy = y2 - y1;
    double from = 0.0, to = 1.0;
    clip(x1, dx, buckets.xmin - margin, buckets.xmax + margin, from, to);
    clip(y1, dy, buckets.ymin - margin, buckets.ymax + margin, from, to);
    if (from > to) return;
    const auto [south, north] = std::minmax({y1 + from * dy, y1 + to * dy});
    const std::int32_t lastRow = rowOf(buckets, north + margin);
    for (std::int32_t row = rowOf(buckets, south - margin); row <= lastRow; ++row) {
        const double low = buckets.ymin + row * buckets.bucketSize;
        double a = from, b = to;
        clip(y1, dy, low - margin, low + buckets.bucketSize + margin, a, b);
        if (a > b) continue;
        const auto [west, east] = std::minmax({x1 + a * dx, x1 + b * dx});
        const std::int32_t lastColumn = columnOf(buckets, east + margin);
        const std::size_t first = bucketNumber(buckets, columnOf(buckets, west - margin), row);
        const std::size_t end = bucketNumber(buckets, lastColumn, row) + 1;
        ids.insert(ids.end(), buckets.elements.begin() + buckets.starts[first],
                   buckets.elements.begin() + buckets.starts[end]);
    }
    ids.insert(ids.end(), buckets.wideElements.begin(), buckets.wideElements.end());
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}
