// Modelled against recorded values at calibration points.
#pragma once

#include "profiles/calibration_points.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a layer says was observed. Filled by FIND_RECORDED.
struct RecordedValues {
    std::string field;          ///< its name; blank when the layer holds no recorded values
    std::vector<double> value;  ///< per calibration point; NaN where nothing is recorded; empty without a field
};

/// The recorded values of the field `named` (letter case ignored), for -obs; the run stops when the layer lacks it or
/// it is no field of numbers. Blank: the first numeric field of the names that such layers use (obs, observed, wl,
/// level, h, rl, in this order), none when there is none. Blank and unreadable values and those at or below -9999 are
/// not recorded; in a .mif, which has no empty numbers, neither is a 0, with a "Check - " line.
RecordedValues FIND_RECORDED(const CalibrationPoints& points, std::string_view named);

/// Modelled less recorded; NO_VALUE where either lacks. Both per calibration point.
std::vector<float> DIFFERENCES(const RecordedValues& recorded, std::span<const float> modelled);

/// Prints how the modelled values of one output time compare: counts, mean and absolute differences, the largest ones,
/// how many are within usual limits, and which recorded points stayed dry. inMesh: per point, whether an element holds
/// it. decimals: of differences, which the limits compare as printed.
void REPORT_COMPARISON(const CalibrationPoints& points, const RecordedValues& recorded,
                       std::span<const float> differences, const std::vector<bool>& inMesh, int decimals);
