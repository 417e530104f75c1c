// From values on the mesh to a regular grid: the steps of a raster output, in their order.
//   run = START_GRID(LAYOUT_GRID(mesh, spacing, cellCentred), ...)   once per run; a template grid serves as well as a
//   layout GRID_RESULTS(run, mesh, RESULTS(), choice)                       once per output time; then run.grid goes to
//   the writer
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "raster/grid.h"
#include "raster/grid_plan.h"
#include "raster/node_scalars.h"

#include <cstdint>
#include <span>
#include <vector>

/// What a run keeps from one output time to the next.
struct GridRun {
    Grid grid;                   ///< the finished grid of the last output time
    GridPlan plan;               ///< which cells each element covers; grows during the first output time
    std::vector<float> scalars;  ///< per node or cell, numbered from 1: vector results as scalars, or the bed
    /// of the output time in the grid: 9-node quads laid by their corners (raster/grid_fill.h)
    std::vector<std::uint8_t> cornerQuads;
};

/// Takes the grid's memory and reports its size. header: corner, cell size and counts; its values are not read.
/// results: what is to come; with several times, or both sides of a difference, the plan is worth keeping; with one
/// time it is made and dropped piece by piece.
GridRun START_GRID(const Grid& header, PlanKind kind, const ResultsKind& results);

/// Fills run.grid from one output time, with its messages. Every cell whose point no wet element covers holds NO_VALUE.
/// results: values for every node of the mesh, or for every element when cellCentred (and then the run's kind is
/// Cells).
void GRID_RESULTS(GridRun& run, const Mesh& mesh, const Results& results, const VectorChoice& choice);

/// Fills run.grid with bed elevations: of the mesh alone with a run of kind Corners, or with a run of kind Nodes those
/// under the results that it has just gridded, over the same nodes of every element. wet: the elements to lay, per
/// element, numbered from 1; empty for all.
void GRID_BATHYMETRY(GridRun& run, const Mesh& mesh, std::span<const std::uint8_t> wet = {});
