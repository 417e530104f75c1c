// The .shx file: a list of the .shp file's records.
// Layout: ESRI Shapefile Technical Description, July 1998, "Organization of the Index File".
#pragma once

#include <cstdint>

/// Number of records that an open .shx input lists. Stops the run with an ERROR that names the file when it has no
/// header of its own, when the length in it is no whole number of records, or when the file ends before that length.
std::int64_t READ_SHX_COUNT(int file);
