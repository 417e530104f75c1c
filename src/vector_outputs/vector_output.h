// The vector layers (-mif, -shp) and text points (-txt) of a run: which layer each input becomes, and its writing.
//   CHECK_VECTOR_SWITCHES()             before files are touched
//   run = START_VECTOR_OUTPUTS(...)     once the mesh and the kind of results are known
//   WRITE_RESULTS_LAYER / WRITE_MESH_LAYER   one file, or set of files, each
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "raster/grid.h"
#include "vector_outputs/arrow.h"
#include "vector_outputs/gridded_values.h"
#include "vector_outputs/point_types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the outputs of a run have in common. Filled by START_VECTOR_OUTPUTS; the mesh stays the caller's.
struct VectorRun {
    const Mesh* mesh = nullptr;
    PointTypes pointTypes;
    std::vector<std::uint8_t> oneDNodes;      ///< numbered from 1; empty when the mesh has none
    std::vector<std::int32_t> nodeMaterials;  ///< numbered from 1; with -verbose only
    bool gridded = false;
    GriddedValues grid;          ///< of a gridded run
    ArrowRules arrows;           ///< of a run with -vector
    int coordinateDecimals = 3;  ///< of -txt
};

/// True when the run's output is a vector layer or text points.
bool IS_VECTOR_OUTPUT();

/// The files that an output consists of, main file first: {".mif", ".mid"}.
std::vector<std::string_view> VECTOR_FILES();

/// Drops switches that others rule out and says so: -region drops -grid and -pts, grids have no point types, -txt has
/// no regions. Warns of letters in -pts that stand for nothing.
void CHECK_VECTOR_SWITCHES();

/// "Setting filter flags based on Zpt types: " with its count, where -pts filters nodes.
void REPORT_POINT_FILTER(const Mesh& mesh);

/// header: corner, cell size and counts of the grid of a gridded run; nullptr for none. vector, cellCentred,
/// severalTimes: of the results to come; all false for a mesh alone.
VectorRun START_VECTOR_OUTPUTS(const Mesh& mesh, const Grid* header, bool vector, bool cellCentred, bool severalTimes);

/// Writes one dataset at one output time. base: the output's name without extension. A scalar dataset of a run with
/// -vector is passed over with a WARNING. Regions of results that have no value at cell centres stop the run.
void WRITE_RESULTS_LAYER(VectorRun& run, const Results& results, const std::string& base);

/// Writes the nodes, or with -region the cells, of the mesh alone, all counted as wet.
void WRITE_MESH_LAYER(VectorRun& run, const std::string& base);
