// The cells of a regular grid that a polygon may cover.
#pragma once

#include <cstdint>
#include <span>

/// A polygon's bounding box and the cells under it, columns and rows from 1. Filled by SET_SUB_GRID_AREA.
struct SubGridArea {
    std::int32_t firstColumn = 1, firstRow = 1;  ///< at least 0: west and south of the grid it is not cut to 1
    std::int32_t lastColumn = 0, lastRow = 0;    ///< at most the grid's counts
    float xmin = 0.0F, ymin = 0.0F, xmax = 0.0F, ymax = 0.0F;
};

/// xs, ys: the polygon's vertices, relative to the grid's origin, in map units. Cell n spans from (n - 1) to n cell
/// sizes; quotients are truncated towards zero. A polygon outside the grid gives a first beyond its last, and so does
/// one without vertices.
SubGridArea SET_SUB_GRID_AREA(std::span<const float> xs, std::span<const float> ys, float cellSize,
                              std::int32_t columns, std::int32_t rows);
