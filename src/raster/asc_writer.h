// ESRI ASCII grids.
#pragma once

#include "raster/grid_writer.h"

#include <string>

/// Writes <base>.asc: six header lines, then a line per row from north to south. A file that cannot be written
/// completely stops the run.
void WRITE_ASC(const std::string& base, const GridBands& bands, GridPrecision precision);
