// The values at calibration points as a .csv file: a row per point and output time.
#pragma once

#include "profiles/point_stage.h"

#include <string>

/// "Water Level", "Magnitude" of vectors, "Value" of an unknown quantity.
std::string VALUE_COLUMN_NAME(const DatasetFacts& facts);

/// Writes what the stage has taken of its dataset: Label, X, Y, Elevation, SMS_ID, then Time, the values and the
/// difference from what was recorded; the times of one point stand together. A cell without a value is empty. A file
/// that cannot be written completely stops the run.
void WRITE_POINT_TABLE(const std::string& file, const PointStage& stage);
