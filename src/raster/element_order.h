// In which order elements are laid onto a grid: neighbours in turn, so that nodes and cells are still at hand.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"

#include <cstdint>
#include <vector>

/// The numbers of all elements along a line that fills the grid, those of one place of it in the order of the mesh;
/// empty for a mesh whose own order is nearly as good.
std::vector<std::int32_t> ELEMENT_ORDER(const Mesh& mesh, const Grid& grid);
