// The value of the mesh at any point, for profiles and point outputs.
#pragma once

#include "inputs/mesh.h"
#include "raster/element_buckets.h"
#include "raster/grid_plan.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// How points are looked up. Copies share the buckets, so that one search serves values of several kinds.
struct PointIndex {
    PlanKind kind = PlanKind::Nodes;
    std::shared_ptr<const ElementBuckets> buckets;
    /// per element, numbered from 1: 1 for a triangle of a 1D water-level line; empty for none
    std::vector<std::uint8_t> oneD;
};

/// A piece of an element that a point lies in: all that the search for a point finds out.
struct PointPlace {
    std::int32_t element = 0;
    std::uint8_t piece = 0;      ///< of the element's pieces, or CORNER_PIECE (raster/element_pieces.h)
    std::uint8_t triangles = 0;  ///< set of the piece's triangles around the point
};

struct PointSample {
    float value = -99999.0F;   ///< NO_VALUE where no active element covers the point
    std::int32_t element = 0;  ///< the element that supplied the value, 0 for none
    std::size_t place = 0;     ///< index of the place that did
};

/// The index of every element that takes part in outputs. kind: what the sampled values belong to.
PointIndex INDEX_ELEMENTS(const Mesh& mesh, PlanKind kind);

/// Adds the places of the point (x, y), edges and corners included, in numbering order of the elements. They hold for
/// all values of the index's kind, at every output time. A 9-node quad has places in the quads around its centre and in
/// that of its corners: which of them count, SAMPLE_PLACES decides from the values. The bed under a sample is
/// VALUE_IN_PLACE of the sample's place.
void LOCATE_POINT(const PointIndex& index, const Mesh& mesh, double x, double y, std::vector<PointPlace>& places);

/// The value of one place of the point (x, y); NO_VALUE where a corner that it needs has none. values: as for
/// SAMPLE_POINT.
float VALUE_IN_PLACE(const PointIndex& index, const Mesh& mesh, const PointPlace& place, std::span<const float> values,
                     double x, double y);

/// SAMPLE_POINT for a point whose places are known.
PointSample SAMPLE_PLACES(const PointIndex& index, const Mesh& mesh, std::span<const PointPlace> places,
                          std::span<const float> values, std::span<const std::uint8_t> wet, double x, double y);

/// The largest value at (x, y) among the active elements that contain the point, edges and corners included; the
/// element is the last one in numbering order that gave that value. Triangles of 1D water-level lines count whatever
/// their flags say. values: per node, or per element for PlanKind::Cells, numbered from 1; vectors as their magnitudes.
/// wet: per element, numbered from 1; empty when everything is wet.
PointSample SAMPLE_POINT(const PointIndex& index, const Mesh& mesh, std::span<const float> values,
                         std::span<const std::uint8_t> wet, double x, double y);
