// A grid on its way to whoever looks at all its values: whole, or in bands of rows where it is too large to be held.
#pragma once

#include "raster/grid.h"

#include <cstdint>
#include <functional>
#include <utility>

struct GridBands {
    /// A grid that holds all its rows.
    GridBands(const Grid& whole) : grid(whole) {}
    GridBands(const Grid& held, std::int32_t rowsOfBand, std::function<void(RowRange)> fillBand)
        : grid(held), rows(rowsOfBand), fill(std::move(fillBand)) {}

    const Grid& grid;
    std::int32_t rows = 0;               ///< of a band; 0: the grid is whole
    std::function<void(RowRange)> fill;  ///< makes the grid hold these rows, filled; they are made anew at every call
};

/// Calls take() for the whole grid, or for each band in turn, which bands.grid holds then.
void FROM_NORTH(const GridBands& bands, const std::function<void()>& take);
void FROM_SOUTH(const GridBands& bands, const std::function<void()>& take);
