// The quantities that results files hold: the names they go by and the short codes of switches and file names.
#pragma once

#include <span>
#include <string>
#include <string_view>

struct OutputType {
    std::string_view name;  ///< up to 40 characters, as in dataset paths: "Water Level"
    std::string_view code;  ///< up to 4 characters: "h"
    bool vector = false;    ///< a vector quantity
};

/// The 60 rows in their fixed order. Some are placeholders ("029", "054" with code "n/a") that keep the numbering.
std::span<const OutputType> OUTPUT_TYPES();

/// The last row of this code, letter case ignored, so that "v" and "q" are the vector quantities; nullptr when no row
/// has it.
const OutputType* OUTPUT_TYPE_OF_CODE(std::string_view code);
/// The row of the tag that a .dat file's name ends in ("h" of x_h.dat): a vector row for a vector file, a scalar row
/// for a scalar one, letter case ignored. nullptr when there is none of that sort.
const OutputType* OUTPUT_TYPE_OF_TAG(std::string_view tag, bool vector);
/// The row of this name, letter case ignored; nullptr when no row has it.
const OutputType* OUTPUT_TYPE_OF_NAME(std::string_view name);

/// True for the name or the code of the quantity, letter case ignored. Velocity is the scalar or the vector one.
bool IS_WATER_LEVEL(std::string_view type);
bool IS_DEPTH(std::string_view type);
bool IS_VELOCITY(std::string_view type);

/// The dataset name that a -type text stands for: the name of its code's row, else the text itself with a warning,
/// since any text that occurs in a dataset path can be searched for.
std::string DATASET_NAME_OF_TYPE(std::string_view typeText);
