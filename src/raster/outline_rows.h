// Straight-sided outlines on the rows of a grid: which columns of a row lie inside. Inline where it runs once per row.
#pragma once

#include "raster/element_pieces.h"
#include "raster/grid.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

/// Cells from `first` to before `end`; none when end is not above first.
struct Interval {
    std::int64_t first = 1, end = 1;
};

/// A grid as seen from the first corner of a piece: columns and rows are real numbers, whole ones at the cells' points.
struct LocalGrid {
    double cellSize, perCell, xll, yll;
    std::int64_t columns, rows;
    double firstColumn = 0.0, firstRow = 0.0;  ///< of the piece's first corner
    double y0 = 0.0;

    explicit LocalGrid(const Grid& grid)
        : cellSize(grid.cellSize),
          perCell(1.0 / grid.cellSize),
          xll(grid.xll),
          yll(grid.yll),
          columns(grid.ncols),
          rows(grid.nrows) {}
    void standAt(const PieceShape& shape) {
        firstColumn = (shape.x0 - xll) * perCell + 0.5;
        firstRow = (shape.y0 - yll) * perCell + 0.5;
        y0 = shape.y0;
    }
    /// Distance of a row's points from the first corner, northwards in map units.
    double north(std::int64_t row) const { return yll + (static_cast<double>(row) - 0.5) * cellSize - y0; }
};

/// The whole numbers of a real range that are from 1 to `most`. Quicker than std::ceil and std::floor, which are calls
/// on older processors.
inline Interval WHOLE_NUMBERS(double from, double to, std::int64_t most) {
    const double low = std::min(std::max(from, 1.0), static_cast<double>(most) + 1.0);
    const double high = std::min(std::max(to, 0.0), static_cast<double>(most));
    const auto first = static_cast<std::int64_t>(low);
    return {first + (low > static_cast<double>(first) ? 1 : 0), static_cast<std::int64_t>(high) + 1};
}

/// Where a straight line crosses the rows: column at + slope * north. A line along the rows does not.
struct Crossing {
    bool level = false;
    double at = 0.0;
    double slope = 0.0;  ///< columns per map unit northwards
    double width = 0.0;  ///< columns by which the closed test moves the line outwards
};

/// A convex outline, a triangle or a quad, on the rows of a grid.
class Outline {
public:
    /// corners: slots of the shape in order; count: 3 or 4 of them; counterClockwise: their winding.
    void place(const PieceShape& shape, const LocalGrid& grid, const std::uint8_t* corners, std::size_t count,
               bool counterClockwise);
    std::int64_t firstRow() const { return rows_.first; }
    std::int64_t endRow() const { return rows_.end; }
    /// Columns whose points are inside, edges included.
    Interval columnsAt(double north) const {
        double from = west_, to = east_;
        for (const Bound& bound : left_) from = std::max(from, bound.at + bound.slope * north);
        for (const Bound& bound : right_) to = std::min(to, bound.at + bound.slope * north);
        return WHOLE_NUMBERS(from, to, columns_);
    }

private:
    struct Bound {
        double at = 0.0, slope = 0.0;
    };
    Interval rows_;
    std::int64_t columns_ = 0;
    double west_ = 0.0, east_ = 0.0;     // the box, which also ends the tips of slivers, where two tolerances add up
    std::array<Bound, 3> left_, right_;  // places that are not needed repeat the box
};

/// A diagonal of a convex quad: which of the two triangles beside it a cell lies in, or both on the diagonal itself.
class Diagonal {
public:
    /// From corner a to b. Of the two triangles beside it, withC is the one that corner c belongs to.
    void place(const PieceShape& shape, const LocalGrid& grid, std::size_t a, std::size_t b, std::size_t c,
               std::uint8_t withC, std::uint8_t withoutC);
    /// Divides the cells of a row inside the quad among the two triangles; those on the diagonal go to both.
    void split(double north, const Interval& cells, std::array<Interval, 4>& triangles) const;

private:
    Crossing line_;
    double level_ = 0.0, tolerance_ = 0.0;
    std::uint8_t west_ = 0, east_ = 0;  // of a diagonal along the rows: north and south of it
    std::int64_t columns_ = 0;
};

inline void Diagonal::split(double north, const Interval& cells, std::array<Interval, 4>& triangles) const {
    if (line_.level) {
        triangles[west_] = north >= level_ - tolerance_ ? cells : Interval{};
        triangles[east_] = north <= level_ + tolerance_ ? cells : Interval{};
        return;
    }
    const double at = line_.at + line_.slope * north;
    const Interval shared = WHOLE_NUMBERS(at - line_.width, at + line_.width, columns_);
    triangles[west_] = {cells.first, std::min(cells.end, shared.end)};
    triangles[east_] = {std::max(cells.first, shared.first), cells.end};
}
