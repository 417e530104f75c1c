// The vector layers and text points of a run: which layer each input becomes, and its writing.
//   run = START_VECTOR_OUTPUTS(...)          once the mesh and the kind of results are known
//   WRITE_RESULTS_LAYER / WRITE_MESH_LAYER   one file, or set of files, each
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "raster/grid.h"
#include "vector_outputs/gridded_values.h"
#include "vector_outputs/layer_choice.h"

#include <cstdint>
#include <string>
#include <vector>

/// What the outputs of a run have in common. Filled by START_VECTOR_OUTPUTS; the mesh stays the caller's.
struct VectorRun {
    const Mesh* mesh = nullptr;
    LayerChoice choice;
    std::vector<std::uint8_t> oneDNodes;      ///< numbered from 1; empty when the mesh has none
    std::vector<std::int32_t> nodeMaterials;  ///< numbered from 1; with -verbose only
    bool gridded = false;
    GriddedValues grid;          ///< of a gridded run
    ArrowRules arrows;           ///< of a run with arrows
    int coordinateDecimals = 3;  ///< of text points
};

/// header: corner, cell size and counts of the grid of a gridded run; nullptr for none. kind: of the results to come.
VectorRun START_VECTOR_OUTPUTS(const Mesh& mesh, const Grid* header, const ResultsKind& kind,
                               const LayerChoice& choice);

/// Writes one dataset at one output time. base: the output's name without extension. A scalar dataset of a run with
/// arrows is passed over with a WARNING. Regions of results that have no value at cell centres stop the run. A
/// difference has neither cutoff nor depths; its regions have their classes beside them, as <base>_class.
void WRITE_RESULTS_LAYER(VectorRun& run, const Results& results, const std::string& base);

/// Writes the nodes, or as regions the cells, of the mesh alone, all counted as wet.
void WRITE_MESH_LAYER(VectorRun& run, const std::string& base);
