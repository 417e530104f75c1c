// The regular grid of the run: checked before the inputs are read, laid out once the mesh is known.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"
#include "run_control/run_crs.h"
#include "services/options.h"
#include "services/projection_text.h"

#include <array>
#include <cstdint>

/// -grid needs an output that it applies to, and a spacing: asked for when it was not given. A template grid (-like)
/// settles both. Looks at no file.
void CHECK_GRID_SWITCHES();

/// Reads where the template grid lies, if there is one: .asc and .flt by their header, others through GDAL. The
/// projection beside a header takes the place of the one found before; another raster's is taken where the run has
/// none.
void TAKE_OVER_TEMPLATE_GRID(RunCrs& crs);

/// Settles the cell size of a raster output once the mesh is known: the template's, -grid's, the mesh's own, or asked
/// for. coordinates: of the run's projection.
void CHOOSE_GRID(const Mesh& mesh, CoordinateKind coordinates);

/// Corner, counts and cell size of the run's grid, without values: the template's, else laid over the mesh.
/// cellCentred: the cell-centre layout, for -cc or for cell-centred results.
Grid GRID_HEADER(const Mesh& mesh, bool cellCentred);

/// Bytes that the values of a grid may take before it is made in bands: -mem, else a quarter of the memory that is
/// there.
std::uint64_t GRID_MEMORY(const RunOptions& options);

/// The place of such a grid as GDAL has it: to the last bit the template's where GDAL has read that.
std::array<double, 6> GRID_TRANSFORM(const Grid& grid);
