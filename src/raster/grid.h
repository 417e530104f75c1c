// A regular grid of square cells: what the interpolation fills and the writers write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// Rows of a grid, from 1: first to before end.
struct RowRange {
    std::int32_t first = 1, end = 1;
};

/// Columns run east from 1, rows run north from 1 (row 1 is the southernmost).
struct Grid {
    std::int32_t ncols = 0;
    std::int32_t nrows = 0;
    double xll = 0.0;  ///< lower-left corner of the lower-left cell, map units
    double yll = 0.0;
    double cellSize = 0.0;  ///< map units
    /// of the rows that are held, southernmost first, west to east; NO_VALUE where there is nothing
    std::vector<float> values;
    std::int32_t firstHeld = 1;  ///< the row that values begin with; all rows are held but by a band of a large grid
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
inline RowRange HELD_ROWS(const Grid& grid) {
    const auto count = static_cast<std::int32_t>(grid.values.size() / static_cast<std::size_t>(grid.ncols));
    return {grid.firstHeld, grid.firstHeld + count};
}
/// Index into values of cell (column, row), both from 1, of a row that is held.
inline std::size_t CELL_INDEX(const Grid& grid, std::int32_t column, std::int32_t row) {
    return static_cast<std::size_t>(row - grid.firstHeld) * static_cast<std::size_t>(grid.ncols) +
           static_cast<std::size_t>(column - 1);
}
