// A calibration-point layer with columns of results behind its own.
#pragma once

#include "profiles/calibration_points.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// A column to append, per calibration point: reals or whole numbers.
struct AppendedColumn {
    std::string name;
    std::span<const float> reals;
    std::span<const std::int32_t> integers;  ///< where there are no reals
};

/// Writes a copy of the layer in its own format (a GeoPackage of what GDAL reads) and coordinate system, its objects in
/// their order. Where there is no value, and for objects that are no points, reals are -99999 and whole numbers 0.
/// width, decimals: of the reals; the width grows to the longest. file: with its extension.
void WRITE_POINT_LAYER(const std::string& file, const CalibrationPoints& points,
                       const std::vector<AppendedColumn>& columns, int width, int decimals);
