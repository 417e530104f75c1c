// The points of a calibration-point layer, with everything that a copy of the layer needs.
#pragma once

#include "gis/layers.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// An object of the layer: a point, or another kind that only passes through.
struct CalibrationObject {
    std::int32_t point = -1;  ///< its number from 0 among the points; -1 for another kind
    std::int32_t other = -1;  ///< its number from 0 among `others`; -1 for a point
    std::string record;       ///< its data line
};

/// Filled by READ_CALIBRATION_POINTS.
struct CalibrationPoints {
    std::string file;
    GisHeader header;
    std::vector<CalibrationObject> objects;  ///< in the order of the layer
    std::vector<GisObject> others;
    std::vector<double> x, y;            ///< per point, map units
    std::vector<std::string> labels;     ///< per point: the first text attribute, else the first
    std::vector<std::int32_t> objectOf;  ///< per point: its number from 0 among `objects`
    std::size_t count() const { return x.size(); }
};

/// Reads the layer whole. A multipoint counts as its first point, with a WARNING. Stops the run when the layer cannot
/// be read or holds no point. file: .mif, .shp, or what GDAL reads.
CalibrationPoints READ_CALIBRATION_POINTS(const std::string& file);
