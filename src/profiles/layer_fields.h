// The attributes of an input layer, as profiles and calibration points need them.
#pragma once

#include "gis/layers.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The values of a data line in column order, texts without their quotes.
std::vector<std::string> RECORD_VALUES(std::string_view line);

/// True for a column of numbers.
bool IS_NUMBER_FIELD(const GisAttribute& attribute);
/// The column that names an object to a reader: the first of text, else the first.
std::size_t LABEL_FIELD(const std::vector<GisAttribute>& attributes);
