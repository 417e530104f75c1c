// Grid headers: how many decimals place a grid right.
#pragma once

#include "raster/grid.h"

#include <string>

/// The fewest decimals, three at least, with which an .asc header holds the corner to a thousandth of a cell, and the
/// cell size so well that the far edge of the grid is held to that too: 2.5 m cells -> 3, a corner at 151.2345678
/// degrees with cells of 0.0001 -> 7.
int ASC_HEADER_DECIMALS(const Grid& grid);

/// A number of an .hdr as AREAL8 writes it, with more decimals where those do not come within `tolerance`.
std::string HDR_NUMBER(double value, double tolerance);

/// By how much the corner in a header may be off, and the cell size, in map units.
double CORNER_TOLERANCE(const Grid& grid);
double CELL_SIZE_TOLERANCE(const Grid& grid);
