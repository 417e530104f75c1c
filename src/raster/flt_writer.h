// Binary float grids.
#pragma once

#include "raster/grid_writer.h"

#include <string>

/// Writes <base>.hdr, then <base>.flt: 4-byte little-endian IEEE values, row by row from north to south, without
/// anything between them. A file that cannot be written completely stops the run.
void WRITE_FLT(const std::string& base, const GridBands& bands, GridPrecision precision = {});
