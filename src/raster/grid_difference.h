// A difference on a grid: what each side alone gives at the point of a cell, one less the other.
#pragma once

#include "inputs/difference.h"
#include "raster/mesh_to_grid.h"

#include <cstdint>
#include <vector>

/// Where a cell without a value is dry. Per cell, 1 or 0; an empty table has nothing to tell.
struct GridWetness {
    std::vector<std::uint8_t> inside;  ///< of the side's mesh; empty: wherever the other side has a value
    std::vector<std::uint8_t> holes;   ///< under a wet element that lacks a value there; empty: nowhere
    bool hasHoles = false;             ///< at this output time
    std::vector<float> zeros;          ///< for every node and cell, to lay what is covered
};

/// What was, beside the GridRun of what is. Kept from one output time to the next.
struct GridWas {
    GridRun run;           ///< its grid: what was, then the classes. Its plan: where the other's does not serve
    bool planned = false;  ///< it has a plan of its own, on its own mesh or for its own kind of values
    GridWetness now, was;
};

/// Grid cells that changed.
struct GridChanges {
    std::int64_t nowWet = 0, nowDry = 0;
};

/// The difference of one output time, and its classes, on their way to the files.
struct GridDifference {
    GridChanges changes;
    GridBands values, classes;
};

/// Fills run.grid with the difference of the parts at one output time, and was.run.grid with its classes (CLASS_OF); in
/// bands both are filled with each band of either, and all that is handed over has to stay as it is until then.
/// Vectors are scalars by `choice` on each side first; directions differ by the short way round. run: started for
/// several times, of the kind that parts.now has on `mesh`. was: empty at the first time.
GridDifference GRID_DIFFERENCE(GridRun& run, GridWas& was, const Mesh& mesh, const DifferenceParts& parts,
                               const VectorChoice& choice);
