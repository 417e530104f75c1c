#include "raster/mesh_to_grid.h"

#include "platform/platform.h"
#include "raster/grid_extent.h"
#include "raster/grid_fill.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <cstddef>
#include <new>

namespace {

/// Bytes that the plan of a run with several output times may take: a quarter of what is left, since the writers and
/// readers need their share.
std::uint64_t planLimit() {
    constexpr std::uint64_t WHEN_UNKNOWN = std::uint64_t{1} << 30;
    const std::uint64_t available = AVAILABLE_MEMORY();
    return available == 0 ? WHEN_UNKNOWN : available / 4;
}

void processElements(GridRun& run, const Mesh& mesh) {
    REPORT("Processing " + AINTEGER(mesh.elementCount) + " elements...");
    try {
        if (run.bandRows == 0) FILL_GRID(run.plan, mesh, run.input, run.grid);
        else Progress("Element: ").finish(mesh.elementCount);
    } catch (const std::bad_alloc&) {
        STOP_RUN(OUT_OF_MEMORY);  // a few elements that cover a huge grid need room for their rows
    }
    REPORT("Finished processing.");
}

void finishDirections(GridRun& run) {
    FILTER_DIRECTIONS(run.grid);
    if (run.compass) DIRECTIONS_TO_BEARINGS(run.grid);
}

/// The readers have compared the counts with the mesh's; a table that is short here is a fault of the program.
void checkSizes(const GridRun& run, const Mesh& mesh, const Results& results) {
    const bool perCell = run.plan.kind == PlanKind::Cells;
    const auto values = static_cast<std::size_t>(perCell ? mesh.elementCount : mesh.nodeCount);
    const bool flagsFit = results.cells == 0 || results.wet.size() > static_cast<std::size_t>(mesh.elementCount);
    if (perCell != results.cellCentred || results.x.size() <= values ||
        (results.vector && results.y.size() != results.x.size()) || !flagsFit)
        SHOULD_NOT_BE_HERE("GRID_RESULTS");
}

}  // namespace

GridRun START_GRID(const Grid& header, PlanKind kind, const ResultsKind& results, std::uint64_t limit) {
    GridRun run;
    run.grid.ncols = header.ncols;
    run.grid.nrows = header.nrows;
    run.grid.xll = header.xll;
    run.grid.yll = header.yll;
    run.grid.cellSize = header.cellSize;
    run.limit = limit;
    run.bandRows = ALLOCATE_GRID(run.grid, results.vector, limit);
    run.plan.kind = kind;
    run.plan.memoryLimit = results.severalTimes || results.difference ? planLimit() : 0;
    return run;
}

void GRID_RESULTS(GridRun& run, const Mesh& mesh, const Results& results, const VectorChoice& choice) {
    checkSizes(run, mesh, results);
    GridInput& input = run.input = {};
    input.values = results.x;
    if (results.cells > 0) input.wet = results.wet;
    if (results.vector) {
        NODE_SCALARS(results, choice, mesh.highResolution, run.scalars);
        input.values = run.scalars;
        input.directions = choice.scalar == VectorScalar::Direction;
    }
    run.cornerQuads.clear();
    if (run.plan.kind == PlanKind::Nodes) run.cornerQuads = CORNER_QUADS(mesh, input.values, input.wet);
    input.cornerQuads = run.cornerQuads;
    run.compass = input.directions && choice.compass;
    processElements(run, mesh);
    if (!input.directions) return;
    REPORT("Filtering values >360 for -va option.");
    if (run.bandRows == 0) finishDirections(run);
    REPORT("   Done.");
}

void GRID_BATHYMETRY(GridRun& run, const Mesh& mesh, std::span<const std::uint8_t> wet) {
    run.scalars.resize(mesh.nodes.size());
    for (std::size_t id = 1; id < mesh.nodes.size(); ++id) run.scalars[id] = mesh.nodes[id].z;
    run.input = {run.scalars, wet, run.cornerQuads, false};
    processElements(run, mesh);
}

void LAY_BAND(GridRun& run, const Mesh& mesh, RowRange rows) {
    run.grid.firstHeld = rows.first;
    try {
        run.grid.values.resize(static_cast<std::size_t>(rows.end - rows.first) *
                               static_cast<std::size_t>(run.grid.ncols));
        FILL_BAND(run.plan.kind, mesh, run.input, run.grid);
    } catch (const std::bad_alloc&) {
        STOP_RUN(OUT_OF_MEMORY);
    }
    if (run.input.directions) finishDirections(run);
}

GridBands BANDS_OF(GridRun& run, const Mesh& mesh) {
    return {run.grid, run.bandRows, [&run, &mesh](RowRange rows) { LAY_BAND(run, mesh, rows); }};
}
