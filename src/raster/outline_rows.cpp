#include "raster/outline_rows.h"

#include <cmath>

namespace {

Crossing crossingOf(const PieceShape& shape, const LocalGrid& grid, std::size_t a, std::size_t b) {
    const double east = shape.x[b] - shape.x[a];
    const double north = shape.y[b] - shape.y[a];
    Crossing line;
    line.level = !(std::abs(north) > shape.tolerance);
    if (line.level) return line;
    const double columnsPerNorth = grid.perCell / north;
    line.slope = east * columnsPerNorth;
    line.at = grid.firstColumn + shape.x[a] * grid.perCell - shape.y[a] * line.slope;
    line.width = shape.tolerance * (std::abs(east) + std::abs(north)) * std::abs(columnsPerNorth);
    return line;
}

}  // namespace

void Outline::place(const PieceShape& shape, const LocalGrid& grid, const std::uint8_t* corners, std::size_t count,
                    bool counterClockwise) {
    double west = shape.x[corners[0]], east = west, south = shape.y[corners[0]], north = south;
    for (std::size_t i = 1; i < count; ++i) {
        west = std::min(west, shape.x[corners[i]]);
        east = std::max(east, shape.x[corners[i]]);
        south = std::min(south, shape.y[corners[i]]);
        north = std::max(north, shape.y[corners[i]]);
    }
    const double reach = shape.tolerance * grid.perCell;
    rows_ = WHOLE_NUMBERS(grid.firstRow + south * grid.perCell - reach, grid.firstRow + north * grid.perCell + reach,
                          grid.rows);
    columns_ = grid.columns;
    west_ = grid.firstColumn + west * grid.perCell - reach;
    east_ = grid.firstColumn + east * grid.perCell + reach;
    left_.fill({west_, 0.0});
    right_.fill({east_, 0.0});
    std::size_t lefts = 0, rights = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t a = corners[i], b = corners[i + 1 < count ? i + 1 : 0];
        const Crossing line = crossingOf(shape, grid, a, b);
        if (line.level) continue;  // the range of rows is its bound
        const bool goesNorth = shape.y[b] > shape.y[a];
        if (goesNorth == counterClockwise) {
            if (rights < right_.size()) right_[rights++] = {line.at + line.width, line.slope};
        } else {
            if (lefts < left_.size()) left_[lefts++] = {line.at - line.width, line.slope};
        }
    }
}

void Diagonal::place(const PieceShape& shape, const LocalGrid& grid, std::size_t a, std::size_t b, std::size_t c,
                     std::uint8_t withC, std::uint8_t withoutC) {
    line_ = crossingOf(shape, grid, a, b);
    level_ = shape.y[a];
    tolerance_ = shape.tolerance;
    columns_ = grid.columns;
    const double columnOfC = grid.firstColumn + shape.x[c] * grid.perCell;
    const bool cIsWest = line_.level ? shape.y[c] > level_ : columnOfC < line_.at + line_.slope * shape.y[c];
    west_ = cIsWest ? withC : withoutC;
    east_ = cIsWest ? withoutC : withC;
}
