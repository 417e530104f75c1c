// Whether results belong to the mesh that was read.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results_source.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// values: per time, from the file; flags: wet/dry flags per time, 0 for a file without. kind: ".dat" or ".xmdf", for
/// the messages. True: one value per cell (cell centred), with the stated notes. False: one value per node. Stops the
/// run when the counts fit neither.
bool MATCH_RESULTS_TO_MESH(const Mesh& mesh, std::int32_t values, std::int32_t flags, std::string_view kind);

/// The same of every dataset of a source: per dataset, whether it has one value per cell. Before anything is written,
/// so that a dataset of another model leaves nothing behind.
std::vector<bool> MATCH_SOURCE_TO_MESH(const ResultsSource& source, const Mesh& mesh);
