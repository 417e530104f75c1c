// Binary float grids.
#pragma once

#include "raster/grid_behind.h"
#include "raster/grid_writer.h"

#include <memory>
#include <string>

/// Writes <base>.hdr, then <base>.flt: 4-byte little-endian IEEE values, row by row from north to south, without
/// anything between them. A file that cannot be written completely stops the run.
void WRITE_FLT(const std::string& base, const GridBands& bands, GridPrecision precision = {});

/// The same for a grid that is written beside the calling thread.
std::unique_ptr<GridBehind> WRITE_FLT_BEHIND(const std::string& base, const Grid& grid);
