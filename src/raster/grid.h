// A regular grid of square cells: what the interpolation fills and the writers write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// Columns run east from 1, rows run north from 1 (row 1 is the southernmost).
struct Grid {
    std::int32_t ncols = 0;
    std::int32_t nrows = 0;
    double xll = 0.0;  ///< lower-left corner of the lower-left cell, map units
    double yll = 0.0;
    double cellSize = 0.0;      ///< map units
    std::vector<float> values;  ///< ncols * nrows, row 1 first, west to east; NO_VALUE where there is nothing
};

/// Where the value of cell (column, row), both from 1, is sampled: the centre of the cell as the file's header places
/// it.
inline double CELL_X(const Grid& grid, std::int32_t column) {
    return grid.xll + (static_cast<double>(column) - 0.5) * grid.cellSize;
}
inline double CELL_Y(const Grid& grid, std::int32_t row) {
    return grid.yll + (static_cast<double>(row) - 0.5) * grid.cellSize;
}

inline std::size_t CELL_COUNT(const Grid& grid) {
    return static_cast<std::size_t>(grid.ncols) * static_cast<std::size_t>(grid.nrows);
}
/// Index into values of cell (column, row), both from 1.
inline std::size_t CELL_INDEX(const Grid& grid, std::int32_t column, std::int32_t row) {
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(grid.ncols) +
           static_cast<std::size_t>(column - 1);
}
