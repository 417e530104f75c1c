// The values that a grid holds in the order of its files: north to south, each row west to east, in pieces for several
// threads.
#pragma once

#include "raster/grid.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

struct PiecesInOrder {
    const Grid& grid;
    std::size_t values;  ///< that a piece has; fewer in the last one

    std::size_t count() const { return (grid.values.size() + values - 1) / values; }
    /// The row, counted from 0 in the north of the whole grid, that the first value of a piece lies in.
    std::int64_t rowsBefore(std::size_t piece) const {
        return grid.nrows + 1 - HELD_ROWS(grid).end +
               static_cast<std::int64_t>(piece * values / static_cast<std::size_t>(grid.ncols));
    }

    /// Calls part(values, endsRow) for the stretches of rows that make up a piece (from 0), in their order.
    template <typename Part>
    void parts(std::size_t piece, Part part) const {
        const auto columns = static_cast<std::size_t>(grid.ncols);
        const std::int32_t north = HELD_ROWS(grid).end - 1;
        const std::size_t end = std::min((piece + 1) * values, grid.values.size());
        for (std::size_t at = piece * values; at < end;) {
            const std::size_t column = at % columns;
            const std::size_t count = std::min(columns - column, end - at);
            const auto row = north - static_cast<std::int32_t>(at / columns);
            const float* first = &grid.values[CELL_INDEX(grid, static_cast<std::int32_t>(column) + 1, row)];
            part(std::span<const float>(first, count), column + count == columns);
            at += count;
        }
    }
};
