// Names of the shape types, as the library prints them.
// Numbers: ESRI Shapefile Technical Description, July 1998, "Shape Type" table.
#pragma once

#include <cstdint>
#include <string_view>

constexpr std::int32_t SHP_NULL = 0, SHP_POINT = 1, SHP_POLYLINE = 3, SHP_POLYGON = 5, SHP_MULTIPOINT = 8;

/// 1 -> "Point", 13 -> "PolyLineZ"; "Unknown" for a number that is no shape type.
std::string_view SHP_TYPE_NAME(std::int32_t shapeType);
/// True for the five types that are read.
bool SHP_TYPE_SUPPORTED(std::int32_t shapeType);
