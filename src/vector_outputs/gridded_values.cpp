#include "vector_outputs/gridded_values.h"

#include "geometry/no_value.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace {

/// A component as a scalar; missing where either component is.
void takeComponent(const Results& vectors, const std::vector<float>& component, Results& scalars) {
    scalars.x.assign(component.size(), NO_VALUE);
    for (std::size_t i = 1; i < component.size(); ++i)
        if (!IS_MISSING(vectors.x[i]) && !IS_MISSING(vectors.y[i])) scalars.x[i] = component[i];
}

/// Hands the values of the finished grid over; the grid gets back the memory of those they replace.
void handOver(Grid& grid, std::vector<float>& values) {
    values.resize(grid.values.size());
    values.swap(grid.values);
}

}  // namespace

GriddedValues START_GRIDDED(const Grid& header, const ResultsKind& kind) {
    GriddedValues gridded;
    ResultsKind components = kind;
    components.severalTimes |= kind.vector;  // the plan serves both components
    gridded.run = START_GRID(header, kind.cellCentred ? PlanKind::Cells : PlanKind::Nodes, components);
    return gridded;
}

void GRID_VALUES(GriddedValues& gridded, const Mesh& mesh, const Results& results) {
    if (!results.vector) {
        GRID_RESULTS(gridded.run, mesh, results, {});
        return handOver(gridded.run.grid, gridded.x);
    }
    Results& scalars = gridded.scalars;
    scalars.nodes = results.nodes;
    scalars.cells = results.cells;
    scalars.cellCentred = results.cellCentred;
    scalars.wet = results.wet;
    takeComponent(results, results.x, scalars);
    GRID_RESULTS(gridded.run, mesh, scalars, {});
    handOver(gridded.run.grid, gridded.x);
    takeComponent(results, results.y, scalars);
    GRID_RESULTS(gridded.run, mesh, scalars, {});
    handOver(gridded.run.grid, gridded.y);
}

void GRID_BED(GriddedValues& gridded, const Mesh& mesh, const Results& results) {
    const bool ofThisTime = !gridded.run.cornerQuads.empty();
    if (!gridded.bed.empty() && !ofThisTime && !gridded.bedOfOneTime) return;
    gridded.bedOfOneTime = ofThisTime;
    if (results.cellCentred) {
        GridRun run = START_GRID(gridded.run.grid, PlanKind::Nodes, {});
        GRID_BATHYMETRY(run, mesh);
        gridded.bed = std::move(run.grid.values);
        return;
    }
    // On a side between them a dry element, which lays all its nodes, would raise the bed above that of a quad of
    // corners.
    const bool wetOnly = ofThisTime && results.cells > 0;
    GRID_BATHYMETRY(gridded.run, mesh, wetOnly ? results.wet : std::span<const std::uint8_t>{});
    handOver(gridded.run.grid, gridded.bed);
}

void GRID_MATERIALS(GriddedValues& gridded, const Mesh& mesh) {
    Results materials;
    materials.nodes = mesh.elementCount;
    materials.cellCentred = true;
    materials.x.assign(mesh.elements.size(), NO_VALUE);
    for (std::size_t id = 1; id < mesh.elements.size(); ++id)
        materials.x[id] = static_cast<float>(mesh.elements[id].material);
    GridRun run = START_GRID(gridded.run.grid, PlanKind::Cells, {});
    GRID_RESULTS(run, mesh, materials, {});
    gridded.materials = std::move(run.grid.values);
}
