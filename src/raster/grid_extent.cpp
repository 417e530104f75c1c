#include "raster/grid_extent.h"

#include "geometry/no_value.h"
#include "platform/platform.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string>

namespace {

struct Extent {
    // 9e29 in single precision, the start of every extent of the program.
    double xmin = static_cast<double>(9.0e29F), xmax = -static_cast<double>(9.0e29F);
    double ymin = static_cast<double>(9.0e29F), ymax = -static_cast<double>(9.0e29F);
};

Extent extentOf(const Mesh& mesh) {
    Extent extent;
    for (std::size_t id = 1; id < mesh.nodes.size(); ++id) {
        if (id < mesh.nodeExcluded.size() && mesh.nodeExcluded[id] != 0) continue;
        const MeshNode& node = mesh.nodes[id];
        extent.xmin = std::min(extent.xmin, node.x);
        extent.xmax = std::max(extent.xmax, node.x);
        extent.ymin = std::min(extent.ymin, node.y);
        extent.ymax = std::max(extent.ymax, node.y);
    }
    return extent;
}

/// A quotient as a count. The addition keeps the last cell of a mesh that is a whole number of cells long but for
/// rounding.
std::int32_t countOf(double quotient) {
    const double count = std::trunc(quotient + 1.0e-6);
    if (!(count < std::numeric_limits<std::int32_t>::max())) STOP_RUN(OUT_OF_MEMORY);
    return static_cast<std::int32_t>(std::max(count, -1.0));
}

/// Bytes of the grid's values; nothing a machine has when they cannot be counted.
std::uint64_t bytesOf(const Grid& grid) {
    const std::uint64_t cells = static_cast<std::uint64_t>(grid.ncols) * static_cast<std::uint64_t>(grid.nrows);
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return cells > most / sizeof(float) ? most : cells * sizeof(float);
}

std::int32_t rowsWithin(std::uint64_t limit, const Grid& grid) {
    const std::uint64_t row = sizeof(float) * static_cast<std::uint64_t>(grid.ncols);
    return static_cast<std::int32_t>(std::clamp<std::uint64_t>(limit / row, 1, static_cast<std::uint64_t>(grid.nrows)));
}

bool tryToTake(Grid& grid, std::int32_t rows) {
    const std::uint64_t available = AVAILABLE_MEMORY();
    const std::uint64_t cells = static_cast<std::uint64_t>(grid.ncols) * static_cast<std::uint64_t>(rows);
    if (available != 0 && cells * sizeof(float) > available) return false;
    try {
        grid.values.assign(static_cast<std::size_t>(cells), NO_VALUE);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

/// Takes the memory of rows, or of as many as there is memory for.
std::int32_t takeMemory(Grid& grid, std::int32_t rows, bool whole) {
    for (; rows > 0; rows = whole ? 0 : rows / 2)
        if (tryToTake(grid, rows)) return rows;
    STOP_RUN(OUT_OF_MEMORY);
}

}  // namespace

Grid LAYOUT_GRID(const Mesh& mesh, double spacing, bool cellCentred) {
    if (!(spacing > 0.0) || !std::isfinite(spacing)) STOP_RUN("ERROR - Grid spacing must be a number above zero.");
    const Extent extent = extentOf(mesh);
    const std::int32_t across = countOf((extent.xmax - extent.xmin) / spacing);
    const std::int32_t up = countOf((extent.ymax - extent.ymin) / spacing);
    Grid grid;
    grid.ncols = cellCentred ? across : across + 1;
    grid.nrows = cellCentred ? up : up + 1;
    if ((across < 1 && up < 1) || grid.ncols < 1 || grid.nrows < 1)
        STOP_RUN("ERROR - Grid spacing is larger than the mesh.");
    grid.xll = extent.xmin;
    grid.yll = extent.ymin;
    grid.cellSize = spacing;
    return grid;
}

std::int32_t ALLOCATE_GRID(Grid& grid, bool vector, std::uint64_t limit) {
    REPORT("Allocating RAM, for grid interpolation.");
    const std::uint64_t bytes = bytesOf(grid);
    const std::uint64_t kilobytes = bytes / 1024 + (bytes % 1024 == 0 ? 0 : 1);
    REPORT("Allocating " + AINTEGER8(static_cast<std::int64_t>(kilobytes)) +
           (vector ? "Kb vector memory..." : "Kb memory..."));
    const std::int32_t rows =
        takeMemory(grid, bytes <= limit ? grid.nrows : rowsWithin(limit, grid), limit == ANY_SIZE);
    REPORT("Grid Size: " + AREAL8(grid.cellSize));
    REPORT("Grid Dimensions: " + AINTEGER(grid.nrows) + " high by " + AINTEGER(grid.ncols) + " wide");
    return rows == grid.nrows ? 0 : rows;
}
