// Attribute definitions: names that GIS packages accept, and the column types.
#pragma once

#include "gis/layers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

constexpr std::size_t MIF_NAME_WIDTH = 31;  ///< GIS packages cut longer column names, which could make two alike
constexpr std::size_t DBF_NAME_WIDTH = 11;  ///< the whole name field of a .dbf, no terminator

/// Letters, digits and "_" stay, all else becomes "_", a leading digit gets "_" in front: "Water Level" ->
/// "Water_Level", "2D" -> "_2D". Only ASCII letters count, and each byte of another character becomes one "_". Blank ->
/// "_".
std::string CLEANATTRIBUTENAME(std::string_view name);

/// The attributes' names cleaned, cut to `width` and unique whatever the letter case: a later one that would repeat
/// gets a final number in place of its last characters (Elevation, Elevation -> Elevation, Elevation2).
std::vector<std::string> CLEANED_NAMES(const std::vector<GisAttribute>& attributes, std::size_t width);

/// A column type taken apart.
struct ColumnType {
    std::string word;        ///< upper case: "CHAR", "DECIMAL", "INTEGER", "FLOAT", "LOGICAL", "DATE", ...
    std::int32_t width = 0;  ///< in parentheses; 0 when there are none
    std::int32_t decimals = 0;
};
/// "Char(254)" -> CHAR 254 0, "decimal (10, 4)" -> DECIMAL 10 4, "Integer" -> INTEGER 0 0. Nothing when the text is no
/// type: a word is missing, or what stands in parentheses is not one or two whole numbers from 0 to 32767.
std::optional<ColumnType> COLUMN_TYPE(std::string_view type);
