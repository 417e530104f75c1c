// Writes a finished grid to disk by the writer of its format, and its .prj.
#pragma once

#include "raster/grid_bands.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// How a value is written in an ASCII grid.
struct GridPrecision {
    int width = 10;  ///< characters of a value's field: units + decimals + 1; one blank stands before each field
    int decimals = 3;
};

/// The precision given (-prec), at most what a field holds. Without one it follows the largest value of the grid: 10
/// units above 9999 either side of zero, 11 above 99999, else 6; always 3 decimals: a grid in bands is filled once for
/// that. Missing cells do not count, and a grid of nothing else keeps the default.
GridPrecision SET_OUTPUT_PRECISION(const GridBands& grid, const std::optional<GridPrecision>& given = {});

/// Writes the grid's own files under `base`, a name without extension; the precision is that of text formats. A file
/// that cannot be written completely stops the run.
using GridWriter = void (*)(const std::string& base, const GridBands& grid, GridPrecision precision);

/// Writes the grid by its format's writer, and with a projection <base>.prj. Rows go out from north to south; cells
/// that are not finite are written as NO_VALUE. The corner in the header is that of the lower-left cell. projection:
/// the .prj text on one line; blank writes no .prj. A file that cannot be written completely stops the run, naming it.
void WRITE_GRID(GridWriter writer, const std::string& base, const GridBands& grid, GridPrecision precision,
                std::string_view projection);
/// The <base>.prj of WRITE_GRID alone.
void WRITE_GRID_PROJECTION(const std::string& base, std::string_view projection);
