// Where an existing grid lies, from its header: the template that an output grid takes over.
#pragma once

#include "raster/grid.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Filled by READ_EXTERNAL_GRID_HEADER.
struct ExternalGrid {
    Grid grid;                    ///< corner, cell size and counts, all plausible by themselves; no values
    double noData = -9999.0;      ///< marker of its missing values; may be not-a-number
    std::string projection;       ///< its .prj on one line; blank for none
    std::int64_t dataOffset = 0;  ///< byte offset of the first line behind the header
};

/// Reads the header of an .asc, or the .hdr of the same base name for a .flt, and the .prj beside it. Keywords in any
/// letter case. A header that gives the centre of the lower-left cell is moved by a whole cell size, with a warning. A
/// header that is missing, incomplete, too long or unreadable stops the run, naming the file. The counts may still ask
/// for more cells than there is memory for.
ExternalGrid READ_EXTERNAL_GRID_HEADER(std::string_view name);
