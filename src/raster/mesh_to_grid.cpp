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

void processElements(GridRun& run, const Mesh& mesh, const GridInput& input) {
    REPORT("Processing " + AINTEGER(mesh.elementCount) + " elements...");
    try {
        FILL_GRID(run.plan, mesh, input, run.grid);
    } catch (const std::bad_alloc&) {
        STOP_RUN(OUT_OF_MEMORY);  // a few elements that cover a huge grid need room for their rows
    }
    REPORT("Finished processing.");
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

GridRun START_GRID(const Grid& header, PlanKind kind, const ResultsKind& results) {
    GridRun run;
    run.grid.ncols = header.ncols;
    run.grid.nrows = header.nrows;
    run.grid.xll = header.xll;
    run.grid.yll = header.yll;
    run.grid.cellSize = header.cellSize;
    ALLOCATE_GRID(run.grid, results.vector);
    run.plan.kind = kind;
    run.plan.memoryLimit = results.severalTimes || results.difference ? planLimit() : 0;
    return run;
}

void GRID_RESULTS(GridRun& run, const Mesh& mesh, const Results& results, const VectorChoice& choice) {
    checkSizes(run, mesh, results);
    GridInput input;
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
    processElements(run, mesh, input);
    if (!input.directions) return;
    REPORT("Filtering values >360 for -va option.");
    FILTER_DIRECTIONS(run.grid);
    REPORT("   Done.");
    if (choice.compass) DIRECTIONS_TO_BEARINGS(run.grid);
}

void GRID_BATHYMETRY(GridRun& run, const Mesh& mesh, std::span<const std::uint8_t> wet) {
    run.scalars.resize(mesh.nodes.size());
    for (std::size_t id = 1; id < mesh.nodes.size(); ++id) run.scalars[id] = mesh.nodes[id].z;
    processElements(run, mesh, {run.scalars, wet, run.cornerQuads, false});
}
