// Profiles and calibration points as layers of a GeoPackage. Where a table has an empty cell, a layer has null.
#pragma once

#include "gdal_outputs/layer_file.h"
#include "profiles/calibration_points.h"
#include "profiles/point_layer.h"
#include "profiles/profile_set.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

struct SamplePackage {
    LayerFile file;
    std::string crs = {};                     ///< text of the layers' system; blank: of the points' own layer, or none
    std::vector<LayerField> timeFields = {};  ///< of layers that hold several times
    std::vector<GdalValue> timeValues = {};   ///< of the time at hand
    std::map<std::string, std::int32_t> layers = {};  ///< of points, by name
};

/// The objects of a calibration-point layer with columns of results behind their own, in a layer of that name; another
/// time goes behind those that it has. decimals: of the reals.
void PUT_POINTS(SamplePackage& package, const std::string& layer, const CalibrationPoints& points,
                const std::vector<AppendedColumn>& columns, int decimals);

/// A layer of the lines with their lengths.
void PUT_LINES(SamplePackage& package, const std::string& layer, const std::vector<ProfileLine>& lines, int decimals);
/// A layer of points, one a station, with what the .csv files hold of it. points: as the set was made with.
void PUT_STATIONS(SamplePackage& package, const std::string& layer, const ProfileSet& set,
                  const std::vector<ProfileLine>& lines, const CalibrationPoints* points, const ProfileRules& rules);
