#include "vector_outputs/gridded_values.h"

#include "geometry/no_value.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace {

/// A component as a scalar, with the flags; missing where either component is.
void takeComponent(const Results& vectors, std::vector<float> Results::*component, Results& scalars) {
    scalars.nodes = vectors.nodes;
    scalars.cells = vectors.cells;
    scalars.cellCentred = vectors.cellCentred;
    scalars.wet = vectors.wet;
    const std::vector<float>& values = vectors.*component;
    scalars.x.assign(values.size(), NO_VALUE);
    for (std::size_t i = 1; i < values.size(); ++i)
        if (!IS_MISSING(vectors.x[i]) && !IS_MISSING(vectors.y[i])) scalars.x[i] = values[i];
}

/// Hands the values of the finished grid over; the grid gets back the memory of those they replace.
void handOver(Grid& grid, std::vector<float>& values) {
    values.resize(grid.values.size());
    values.swap(grid.values);
}

void gridScalar(GriddedValues& gridded, const Mesh& mesh, const Results& results, std::vector<float>& values) {
    if (results.parts == nullptr) GRID_RESULTS(gridded.run, mesh, results, {});
    else gridded.changes = GRID_DIFFERENCE(gridded.run, gridded.was, mesh, *results.parts, {}).changes;
    handOver(gridded.run.grid, values);
}

/// sides: room for the component on both sides of a difference.
void gridComponent(GriddedValues& gridded, const Mesh& mesh, const Results& results,
                   std::vector<float> Results::*component, DifferenceParts& sides, std::vector<float>& values) {
    if (results.parts == nullptr) {
        takeComponent(results, component, gridded.scalars);
    } else {
        takeComponent(results.parts->now, component, sides.now);
        takeComponent(results.parts->was, component, sides.was);
        gridded.scalars.parts = &sides;
    }
    gridScalar(gridded, mesh, gridded.scalars, values);
    gridded.scalars.parts = nullptr;
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
    if (!results.vector) return gridScalar(gridded, mesh, results, gridded.x);
    DifferenceParts sides;
    gridComponent(gridded, mesh, results, &Results::x, sides, gridded.x);
    gridComponent(gridded, mesh, results, &Results::y, sides, gridded.y);
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
