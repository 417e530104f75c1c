// Where a grid lies and how many cells it has; taking its memory.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"

#include <cstdint>
#include <limits>
#include <string_view>

constexpr std::string_view OUT_OF_MEMORY = "ERROR - Could not allocate enough memory (RAM).";

/// The grid over all nodes that are not excluded, without values. spacing: cell size in map units.
/// The corner is the smallest x and y of those nodes in both layouts. Columns and rows: whole cells that fit into the
/// extent, one more of each in the node layout (cellCentred false). "ERROR - Grid spacing is larger than the mesh."
/// stops the run when no cell fits in either direction, or when a count comes out below 1 (a channel narrower than one
/// cell still makes a grid in the node layout). More cells than 32-bit counts hold or than there is memory for: "ERROR
/// - Could not allocate enough memory (RAM).".
Grid LAYOUT_GRID(const Mesh& mesh, double spacing, bool cellCentred);

/// The limit of a grid that has to be held whole.
constexpr std::uint64_t ANY_SIZE = std::numeric_limits<std::uint64_t>::max();

/// Takes the memory of the values, reports that of the whole grid with its size and dimensions, and sets every cell to
/// NO_VALUE. vector: the results are vectors, which the message mentions; they are made scalars node by node, so that
/// one array serves them too. Returns 0, or of a grid of more than `limit` bytes, or than there is memory for, the rows
/// of the bands in which it is to be taken. Not even one row: OUT_OF_MEMORY.
std::int32_t ALLOCATE_GRID(Grid& grid, bool vector, std::uint64_t limit);
