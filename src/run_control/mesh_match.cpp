#include "run_control/mesh_match.h"

#include "inputs/mesh.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "text_utils/numbers.h"

#include <string>

namespace {

/// what: "nodes" or "cells".
[[noreturn]] void mismatch(const std::string& what, std::int32_t inFile, std::int32_t inMesh, const std::string& kind) {
    DMESSAGE("ERROR - Number of " + what + " in " + kind + " file is different to .2dm file.");
    REPORT("        Check that they are from same VORANT run/model.");
    REPORT("Number of " + what + " in " + kind + " file =   " + AINTEGER(inFile));
    REPORT("Number of " + what + " in .2dm file =   " + AINTEGER(inMesh));
    EXITS();
}

}  // namespace

bool MATCH_RESULTS_TO_MESH(const Mesh& mesh, std::int32_t values, std::int32_t flags, std::string_view kind) {
    const bool fitsNodes = values == mesh.nodeCount;
    const bool fitsCells = values == mesh.elementCount;
    if (!fitsNodes && !fitsCells) mismatch("nodes", values, mesh.nodeCount, std::string(kind));
    if (flags != 0 && flags != mesh.elementCount) mismatch("cells", flags, mesh.elementCount, std::string(kind));
    // Where a mesh has as many cells as nodes the counts cannot tell: -cc decides.
    const bool cellCentred = fitsCells && (!fitsNodes || OPTIONS().cellCentred);
    if (!cellCentred && OPTIONS().cellCentred)
        DMESSAGE("WARNING - The values of the " + std::string(kind) +
                 " file are at nodes, not at cell centres as -cc says.");
    if (!cellCentred) return false;
    REPORT("Number of cells matches number of nodes... assume cell centered QELDRA output");
    if (!OPTIONS().cellCentred) DMESSAGE("WARNING - Cell Centered flag not specified: use input flag \"-cc\".");
    REPORT("Allocating number of nodes based on cell centered output.");
    return true;
}

std::vector<bool> MATCH_SOURCE_TO_MESH(const ResultsSource& source, const Mesh& mesh) {
    std::vector<bool> cellCentred;
    const Dataset* last = nullptr;
    for (const Dataset& dataset : source.datasets()) {
        if (last != nullptr && last->values == dataset.values && last->flags == dataset.flags) {
            cellCentred.push_back(cellCentred.back());
            continue;
        }
        if (!dataset.path.empty()) REPORT("Comparing counts of dataset " + dataset.path + " with the mesh...");
        cellCentred.push_back(MATCH_RESULTS_TO_MESH(mesh, dataset.values, dataset.flags, source.kind()));
        last = &dataset;
    }
    return cellCentred;
}
