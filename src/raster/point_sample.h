// The value of the mesh at any point, for profiles and point outputs.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid_plan.h"

#include <cstdint>
#include <span>
#include <vector>

/// Which elements are near a point: square buckets over the mesh, each listing the elements whose bounding box touches
/// it.
struct PointIndex {
    PlanKind kind = PlanKind::Nodes;
    double xmin = 0.0, ymin = 0.0, bucketSize = 1.0;  ///< map units
    double coordinateSize = 0.0;                      ///< largest coordinate, which rounding errors grow with
    std::int32_t columns = 0, rows = 0;
    /// per bucket, row by row from the south-west: its first entry in `elements`
    std::vector<std::uint32_t> starts;
    std::vector<std::int32_t> elements;
    std::vector<std::int32_t> wideElements;  ///< those that touch too many buckets to be listed in each
    /// per element, numbered from 1: 1 for a triangle of a 1D water-level line; empty for none
    std::vector<std::uint8_t> oneD;
};

struct PointSample {
    float value = -99999.0F;   ///< NO_VALUE where no active element covers the point
    std::int32_t element = 0;  ///< the element that supplied the value, 0 for none
};

/// The index of every element that takes part in outputs. kind: what the sampled values belong to.
PointIndex INDEX_ELEMENTS(const Mesh& mesh, PlanKind kind);

/// The largest value at (x, y) among the active elements that contain the point, edges and corners included; the
/// element is the last one in numbering order that gave that value. Triangles of 1D water-level lines count whatever
/// their flags say. values: per node, or per element for PlanKind::Cells, numbered from 1; vectors as their magnitudes.
/// wet: per element, numbered from 1; empty when everything is wet.
PointSample SAMPLE_POINT(const PointIndex& index, const Mesh& mesh, std::span<const float> values,
                         std::span<const std::uint8_t> wet, double x, double y);
