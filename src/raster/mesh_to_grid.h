// From values on the mesh to a regular grid: the steps of a raster output, in their order.
//   run = START_GRID(LAYOUT_GRID(mesh, spacing, cellCentred), ...)   once per run; a template grid serves as well as a
//   layout GRID_RESULTS(run, mesh, RESULTS(), choice)                       once per output time; then run.grid goes to
//   the writer
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "raster/grid.h"
#include "raster/grid_bands.h"
#include "raster/grid_extent.h"
#include "raster/grid_fill.h"
#include "raster/grid_plan.h"
#include "raster/node_scalars.h"

#include <cstdint>
#include <span>
#include <vector>

/// What a run keeps from one output time to the next.
struct GridRun {
    Grid grid;                   ///< the finished grid of the last output time, or the band that was laid last
    std::uint64_t limit = 0;     ///< bytes of a grid that is held whole
    std::int32_t bandRows = 0;   ///< rows of a band; 0: the grid is held whole
    GridPlan plan;               ///< which cells each element covers; grows during the first output time
    std::vector<float> scalars;  ///< per node or cell, numbered from 1: vector results as scalars, or the bed
    /// of the output time in the grid: 9-node quads laid by their corners (raster/grid_fill.h)
    std::vector<std::uint8_t> cornerQuads;
    GridInput input;       ///< of the output time; points to the results, the mesh or the tables above
    bool compass = false;  ///< its directions become bearings
};

/// Takes the grid's memory and reports its size. header: corner, cell size and counts; its values are not read.
/// results: what is to come; with several times, or both sides of a difference, the plan is worth keeping; with one
/// time it is made and dropped piece by piece. limit: bytes beyond which the grid is laid in bands of rows, each with a
/// plan of its own.
GridRun START_GRID(const Grid& header, PlanKind kind, const ResultsKind& results, std::uint64_t limit = ANY_SIZE);

/// Fills run.grid from one output time, with its messages; in bands that is left to LAY_BAND, and the results have to
/// stay as they are until then. Every cell whose point no wet element covers holds NO_VALUE.
/// results: values for every node of the mesh, or for every element when cellCentred (and then the run's kind is
/// Cells).
void GRID_RESULTS(GridRun& run, const Mesh& mesh, const Results& results, const VectorChoice& choice);

/// Fills run.grid with bed elevations: of the mesh alone with a run of kind Corners, or with a run of kind Nodes those
/// under the results that it has just gridded, over the same nodes of every element. wet: the elements to lay, per
/// element, numbered from 1; empty for all.
void GRID_BATHYMETRY(GridRun& run, const Mesh& mesh, std::span<const std::uint8_t> wet = {});

/// Makes run.grid hold these rows of the output time, without a message.
void LAY_BAND(GridRun& run, const Mesh& mesh, RowRange rows);
/// The grid of the output time, for its writers.
GridBands BANDS_OF(GridRun& run, const Mesh& mesh);
