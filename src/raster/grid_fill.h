// One output time onto the cells of a grid, element by element.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"
#include "raster/grid_plan.h"

#include <cstdint>
#include <span>
#include <vector>

/// What is laid onto the grid.
struct GridInput {
    /// per node, or per element for PlanKind::Cells, numbered from 1; IS_MISSING where there is none
    std::span<const float> values;
    std::span<const std::uint8_t> wet;  ///< per element, numbered from 1: 1 wet, 0 dry; empty when everything is wet
    /// per element, numbered from 1: 1 for a 9-node quad of PlanKind::Nodes of which the quad of its corners is laid at
    /// this time; empty for none
    std::span<const std::uint8_t> cornerQuads;
    /// degrees in (-180, 180], which do not jump inside an element: FILTER_DIRECTIONS comes after
    bool directions = false;
};

/// The cornerQuads of an output time: the wet elements that LACKS_INNER_VALUE is true of; empty when none does. values,
/// wet: as in GridInput.
std::vector<std::uint8_t> CORNER_QUADS(const Mesh& mesh, std::span<const float> values,
                                       std::span<const std::uint8_t> wet);

/// Starts from NO_VALUE everywhere and gives each cell the largest of the values that the wet elements around its point
/// have there. Quads take the mean over their triangles that contain the point and have values at all corners. Adds to
/// the plan what fits its limit.
void FILL_GRID(GridPlan& plan, const Mesh& mesh, const GridInput& input, Grid& grid);

/// The same for the rows that a grid holds, by a plan that is dropped piece by piece, and without a count on the
/// screen.
void FILL_BAND(PlanKind kind, const Mesh& mesh, const GridInput& input, Grid& grid);
