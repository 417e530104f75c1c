// Which elements are near a point or along a line: square buckets over the mesh, each listing the elements whose
// bounding box touches it.
#pragma once

#include "inputs/mesh.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Filled by BUCKET_ELEMENTS. Elements stand in numbering order inside every list.
struct ElementBuckets {
    double xmin = 0.0, ymin = 0.0, bucketSize = 1.0;  ///< map units
    double xmax = 0.0, ymax = 0.0;                    ///< of the elements
    double coordinateSize = 0.0;                      ///< largest coordinate, which rounding errors grow with
    std::int32_t columns = 0, rows = 0;               ///< 0: nothing to find
    /// per bucket, row by row from the south-west: its first entry in `elements`
    std::vector<std::uint32_t> starts;
    std::vector<std::int32_t> elements;
    std::vector<std::int32_t> wideElements;  ///< those that touch too many buckets to be listed in each
};

/// Every element that takes part in outputs: those of removed mesh parts and refused cards do not.
ElementBuckets BUCKET_ELEMENTS(const Mesh& mesh);

/// The bucket of a point, the nearest one for a point beside the mesh. Coordinates are finite, rows above 0.
std::size_t BUCKET_AT(const ElementBuckets& buckets, double x, double y);

/// Calls visit(element id) in numbering order for every element whose bounding box may hold the point, and for a few
/// whose box does not. Coordinates are finite.
template <typename Visit>
void FOR_ELEMENTS_NEAR(const ElementBuckets& buckets, double x, double y, Visit visit) {
    if (buckets.rows == 0) return;
    const std::size_t bucket = BUCKET_AT(buckets, x, y);
    std::size_t wide = 0;
    for (std::uint32_t i = buckets.starts[bucket]; i < buckets.starts[bucket + 1]; ++i) {
        const std::int32_t id = buckets.elements[i];
        while (wide < buckets.wideElements.size() && buckets.wideElements[wide] < id)
            visit(buckets.wideElements[wide++]);
        visit(id);
    }
    while (wide < buckets.wideElements.size()) visit(buckets.wideElements[wide++]);
}

/// Sets `ids` to the elements whose bounding box the segment (x1, y1)-(x2, y2) may touch, in numbering order, each
/// once. Coordinates are finite.
void ELEMENTS_ALONG(const ElementBuckets& buckets, double x1, double y1, double x2, double y2,
                    std::vector<std::int32_t>& ids);
