// Points whose places in the mesh are found once, and their values at any output time.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "raster/point_sample.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Filled by LOCATE_POINTS. Points are numbered from 0.
struct SampledPoints {
    PointIndex index;
    std::vector<double> x, y;           ///< map units
    std::vector<std::uint32_t> starts;  ///< per point, and one more: its first entry in `places`
    std::vector<PointPlace> places;
    std::size_t count() const { return x.size(); }
    /// True for a point in an element, wet or dry.
    bool isInMesh(std::size_t point) const { return starts[point] != starts[point + 1]; }
};

/// index: of the kind that the values will be of.
SampledPoints LOCATE_POINTS(const PointIndex& index, const Mesh& mesh, std::vector<double> x, std::vector<double> y);

/// Per point. Filled by SAMPLE_RESULTS and SAMPLE_BED.
struct PointValues {
    std::vector<float> value;           ///< a scalar, or the magnitude of a vector; NO_VALUE for none
    std::vector<float> east, north;     ///< components of a vector; empty for scalars
    std::vector<std::int32_t> element;  ///< that supplied the value, 0 for none
    std::vector<float> magnitudes;      ///< per node or cell, numbered from 1: of vectors, while sampling
};

/// The values at every point by the rule of SAMPLE_POINT. Of vectors the element with the largest interpolated
/// magnitude counts, and the components are those interpolated in it.
void SAMPLE_RESULTS(const SampledPoints& points, const Mesh& mesh, const Results& results, PointValues& values);

/// The bed at every point, over all elements that take part, wet or dry. points: not of PlanKind::Cells.
void SAMPLE_BED(const SampledPoints& points, const Mesh& mesh, PointValues& values);
