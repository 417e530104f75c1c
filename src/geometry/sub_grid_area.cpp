#include "geometry/sub_grid_area.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The number of the cell at a coordinate, from 1; coordinates that no number reaches, or not a number, stay within the
/// type.
std::int32_t cellAt(float coordinate, float cellSize) {
    const double cell = static_cast<double>(std::trunc(coordinate / cellSize)) + 1.0;
    constexpr double LEAST = std::numeric_limits<std::int32_t>::min();
    constexpr double MOST = std::numeric_limits<std::int32_t>::max();
    return std::isnan(cell) ? 0 : static_cast<std::int32_t>(std::clamp(cell, LEAST, MOST));
}

}  // namespace

SubGridArea SET_SUB_GRID_AREA(std::span<const float> xs, std::span<const float> ys, float cellSize,
                              std::int32_t columns, std::int32_t rows) {
    SubGridArea area;
    if (xs.empty()) return area;
    const auto [west, east] = std::minmax_element(xs.begin(), xs.end());
    const auto [south, north] = std::minmax_element(ys.begin(), ys.end());
    area.xmin = *west;
    area.xmax = *east;
    area.ymin = *south;
    area.ymax = *north;
    area.firstColumn = std::max(cellAt(area.xmin, cellSize), 0);
    area.firstRow = std::max(cellAt(area.ymin, cellSize), 0);
    area.lastColumn = std::min(cellAt(area.xmax, cellSize), columns);
    area.lastRow = std::min(cellAt(area.ymax, cellSize), rows);
    return area;
}
