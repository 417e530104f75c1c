// Writes a finished grid to disk: ESRI ASCII grid (.asc) or binary float grid (.flt with .hdr), and its .prj.
#pragma once

#include "raster/grid.h"

#include <cstdint>
#include <string>
#include <string_view>

enum class GridFormat : std::int32_t { Ascii = 1, Float = 2 };

/// How a value is written in an ASCII grid.
struct GridPrecision {
    int width = 10;  ///< characters of a value's field: units + decimals + 1; one blank stands before each field
    int decimals = 3;
};

/// The precision of -prec. Without -prec it follows the largest value of the grid: 10 units above 9999 either side of
/// zero, 11 above 99999, else 6; always 3 decimals. Missing cells do not count, and a grid of nothing else keeps the
/// default.
GridPrecision SET_OUTPUT_PRECISION(const Grid& grid);

/// Writes <base>.asc, or <base>.hdr and <base>.flt, and with a projection <base>.prj. Rows go out from north to south;
/// cells that are not finite are written as NO_VALUE. The corner in the header is that of the lower-left cell.
/// projection: the .prj text on one line; blank writes no .prj. A file that cannot be written completely stops the run,
/// naming it.
void WRITE_GRID(GridFormat format, const std::string& base, const Grid& grid, GridPrecision precision,
                std::string_view projection);
