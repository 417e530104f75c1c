// The regular grid of the run: checked before the inputs are read, laid out once the mesh is known.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"

/// -grid needs an output that it applies to, and a spacing: asked for when it was not given. A template grid (-like)
/// settles both. Looks at no file.
void CHECK_GRID_SWITCHES();

/// Reads the header of the template grid, if there is one. Its projection takes the place of the one found before.
void TAKE_OVER_TEMPLATE_GRID();

/// Settles the cell size of a raster output once the mesh is known: the template's, -grid's, the mesh's own, or asked
/// for.
void CHOOSE_GRID(const Mesh& mesh);

/// Corner, counts and cell size of the run's grid, without values: the template's, else laid over the mesh.
/// cellCentred: the cell-centre layout, for -cc or for cell-centred results.
Grid GRID_HEADER(const Mesh& mesh, bool cellCentred);
