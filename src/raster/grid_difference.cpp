#include "raster/grid_difference.h"

#include "inputs/wet_mesh.h"
#include "raster/grid_extent.h"
#include "raster/grid_fill.h"
#include "services/console.h"
#include "services/workers.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

namespace {

bool lacks(const Results& results, std::size_t i) {
    return IS_MISSING(results.x[i]) || (results.vector && IS_MISSING(results.y[i]));
}

/// True when a wet element has no value somewhere. Most files keep that for dry ones, and one look at the values tells.
bool hasHoles(const Mesh& mesh, const Results& results) {
    bool missing = false;
    for (std::size_t i = 1; i < results.x.size() && !missing; ++i) missing = lacks(results, i);
    for (std::size_t id = 1; id < mesh.elements.size() && missing; ++id) {
        const MeshElement& element = mesh.elements[id];
        if (!TAKES_PART(element) || (results.cells > 0 && results.wet[id] == 0)) continue;
        if (results.cellCentred && lacks(results, id)) return true;
        for (std::size_t slot = 0; slot < static_cast<std::size_t>(element.shape) && !results.cellCentred; ++slot)
            if (lacks(results, static_cast<std::size_t>(element.nodes[slot]))) return true;
    }
    return false;
}

/// One side at one output time.
struct Side {
    GridRun& run;
    const Mesh& mesh;
    const Results& results;
    bool ownMesh;
    GridWetness& wetness;
};

/// The cells under the elements: all that take part, or the wet ones.
std::vector<std::uint8_t> covered(const Side& side, std::span<const std::uint8_t> wet) {
    Grid cover = side.run.grid;
    std::vector<float>& zeros = side.wetness.zeros;
    zeros.resize(std::max(side.mesh.nodes.size(), side.mesh.elements.size()), 0.0F);
    const GridInput input{zeros, wet, {}, false};
    if (side.run.bandRows == 0) FILL_GRID(side.run.plan, side.mesh, input, cover);
    else FILL_BAND(side.run.plan.kind, side.mesh, input, cover);
    std::vector<std::uint8_t> cells(cover.values.size());
    std::transform(cover.values.begin(), cover.values.end(), cells.begin(),
                   [](float value) { return value == 0.0F ? std::uint8_t{1} : std::uint8_t{0}; });
    return cells;
}

/// Finds out where the grid, or the band of it at hand, is dry.
void findDry(const Side& side) {
    const std::span<const std::uint8_t> wet = side.results.wet;
    if (side.ownMesh && (side.wetness.inside.empty() || side.run.bandRows > 0)) side.wetness.inside = covered(side, {});
    side.wetness.holes.clear();
    if (side.wetness.hasHoles) side.wetness.holes = covered(side, side.results.cells > 0 ? wet : wet.first(0));
}

/// Grids one side, and finds out where it is dry; in bands it only gets ready for that, and says the same.
void gridSide(const Side& side, const VectorChoice& choice) {
    GRID_RESULTS(side.run, side.mesh, side.results, choice);
    side.wetness.hasHoles = hasHoles(side.mesh, side.results);
    if (side.run.bandRows == 0) return findDry(side);
    Progress progress("Element: ");
    if (side.ownMesh && side.wetness.inside.empty()) progress.finish(side.mesh.elementCount);
    if (side.wetness.hasHoles) progress.finish(side.mesh.elementCount);
}

Wetness wetnessAt(const GridWetness& side, std::size_t cell, float value) {
    if (!IS_MISSING(value)) return Wetness::Wet;
    if (!side.inside.empty() && side.inside[cell] == 0) return Wetness::Outside;
    return !side.holes.empty() && side.holes[cell] != 0 ? Wetness::Unknown : Wetness::Dry;
}

/// One cell of which one side has no value, or that holds a direction.
void subtractCell(float& now, float& was, std::size_t cell, const GridWas& sides, bool dryIsZero, bool directions) {
    const Wetness nowWetness = wetnessAt(sides.now, cell, now), wasWetness = wetnessAt(sides.was, cell, was);
    const bool turn = directions && nowWetness == Wetness::Wet && wasWetness == Wetness::Wet;
    now = turn ? TURN_OF(now, was) : DIFFERENCE_OF(now, nowWetness, was, wasWetness, dryIsZero);
    was = CLASS_OF(nowWetness, wasWetness);
}

/// Cells `first` to `end`: now becomes the difference, was the classes. Blocks of cells that have both values, or
/// neither, are most of a grid and need no look at each.
GridChanges subtractPart(float* now, float* was, std::size_t first, std::size_t end, const GridWas& sides,
                         bool dryIsZero, bool directions) {
    constexpr std::size_t BLOCK = 256;
    GridChanges changes;
    for (std::size_t next = 0; first < end; first = next) {
        next = std::min(first + BLOCK, end);
        std::uint32_t alone = directions ? 1 : 0;
        for (std::size_t i = first; i < next; ++i) alone |= VALUE_BITS(now[i]) ^ VALUE_BITS(was[i]);
        if (alone == 0) {
            for (std::size_t i = first; i < next; ++i) {
                const std::uint32_t both = VALUE_BITS(now[i]);
                now[i] = WITH_BITS(both, now[i] - was[i], NO_VALUE);
                was[i] = WITH_BITS(both, WET_IN_BOTH, NO_VALUE);
            }
            continue;
        }
        for (std::size_t i = first; i < next; ++i) {
            subtractCell(now[i], was[i], i, sides, dryIsZero, directions);
            changes.nowWet += was[i] == NOW_WET ? 1 : 0;
            changes.nowDry += was[i] == NOW_DRY ? 1 : 0;
        }
    }
    return changes;
}

GridChanges subtract(std::vector<float>& now, std::vector<float>& was, const GridWas& sides, bool dryIsZero,
                     bool directions) {
    constexpr std::size_t PART = std::size_t{1} << 18;
    std::vector<GridChanges> parts((now.size() + PART - 1) / PART);
    DO_PIECES(parts.size(), [&](std::size_t part) {
        parts[part] = subtractPart(now.data(), was.data(), part * PART, std::min((part + 1) * PART, now.size()), sides,
                                   dryIsZero, directions);
    });
    GridChanges changes;
    for (const GridChanges& part : parts) {
        changes.nowWet += part.nowWet;
        changes.nowDry += part.nowDry;
    }
    return changes;
}

/// The grid of what was, and its plan where it needs one.
void start(GridRun& run, GridWas& was, const DifferenceParts& parts) {
    const PlanKind kind = PLAN_KIND(parts.was.cellCentred, parts.was.cornersOnly);
    ResultsKind results;
    results.vector = parts.was.vector;
    results.severalTimes = true;
    was.run = START_GRID(run.grid, kind, results, run.limit);
    const auto [fewer, more] = std::minmax(run.bandRows, was.run.bandRows);
    run.bandRows = was.run.bandRows = fewer == 0 ? more : fewer;  // the bands of the two go together
    was.planned = parts.wasMesh != nullptr || kind != run.plan.kind || run.bandRows > 0;
}

}  // namespace

GridDifference GRID_DIFFERENCE(GridRun& run, GridWas& was, const Mesh& mesh, const DifferenceParts& parts,
                               const VectorChoice& choice) {
    if (was.run.grid.values.empty()) start(run, was, parts);
    const bool ownMesh = parts.wasMesh != nullptr;
    const Side sideWas{was.planned ? was.run : run, ownMesh ? *parts.wasMesh : mesh, parts.was, ownMesh, was.was};
    const Side sideNow{run, mesh, parts.now, ownMesh, was.now};
    gridSide(sideWas, choice);
    if (!was.planned) run.grid.values.swap(was.run.grid.values);
    // What is now comes last, so that the run tells of it how its elements were laid.
    gridSide(sideNow, choice);
    REPORT("Taking the difference...");
    const bool directions = parts.now.vector && choice.scalar == VectorScalar::Direction;
    const auto subtractHeld = [&run, &was, dryIsZero = parts.dryIsZero, directions] {
        return subtract(run.grid.values, was.run.grid.values, was, dryIsZero, directions);
    };
    if (run.bandRows == 0) return {subtractHeld(), run.grid, was.run.grid};
    const auto layBand = [sideNow, sideWas, subtractHeld](RowRange rows) {
        LAY_BAND(sideWas.run, sideWas.mesh, rows);
        findDry(sideWas);
        LAY_BAND(sideNow.run, sideNow.mesh, rows);
        findDry(sideNow);
        return subtractHeld();
    };
    GridDifference difference{{}, {run.grid, run.bandRows, layBand}, {was.run.grid, run.bandRows, layBand}};
    FROM_NORTH({run.grid, run.bandRows,
                [&](RowRange rows) {
                    const GridChanges ofBand = layBand(rows);
                    difference.changes.nowWet += ofBand.nowWet;
                    difference.changes.nowDry += ofBand.nowDry;
                }},
               [] {});
    return difference;
}
