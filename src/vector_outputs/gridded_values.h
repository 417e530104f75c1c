// Results on a regular grid, for the layers that have an object per grid cell.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "raster/grid_difference.h"

#include <vector>

/// Values in the grid's order (CELL_INDEX), NO_VALUE where there are none. Kept from one output time to the next.
struct GriddedValues {
    GridRun run;                ///< its grid lends its memory to `x` and `y` in turn
    std::vector<float> x, y;    ///< the scalar, or both components; y empty for scalars
    std::vector<float> bed;     ///< bed elevations; empty when nobody asks
    bool bedOfOneTime = false;  ///< the bed belongs to this output time only
    /// material of the cell under the point (of touching cells the largest); empty when nobody asks
    std::vector<float> materials;
    Results scalars;      ///< one component as a scalar result, and its flags
    GridWas was;          ///< of a difference
    GridChanges changes;  ///< of the difference in x
};

/// The components of vectors are interpolated one by one: the magnitude of what comes out is not the interpolated
/// magnitude. header: corner, cell size and counts. kind: of the results to come.
GriddedValues START_GRIDDED(const Grid& header, const ResultsKind& kind);

/// Fills x and y from one output time; of a difference with those of each side, one less the other.
void GRID_VALUES(GriddedValues& gridded, const Mesh& mesh, const Results& results);

/// Fills `bed` with the bed under the output time that GRID_VALUES has just gridded, over the same nodes, so that a
/// level less the bed is its depth. Returns at once where the bed of an earlier time serves.
void GRID_BED(GriddedValues& gridded, const Mesh& mesh, const Results& results);
/// Fills `materials`, once a run: they do not depend on the time.
void GRID_MATERIALS(GriddedValues& gridded, const Mesh& mesh);
