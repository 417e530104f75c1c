#include "inputs/mesh_reader.h"

#include "inputs/mesh_blocks.h"
#include "inputs/mesh_line_error.h"
#include "inputs/mesh_nodes.h"
#include "inputs/mesh_pass.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

[[noreturn]] void refuse(int file, std::string_view line, std::int64_t number, std::string_view reason) {
    if (reason != MeshPass::TOO_FEW_VALUES) refuseMeshLine(file, line, number, reason);
    REPORT("   Line " + AINTEGER8(number) + " of " + GETNAM(file) + " has too few values for the current layout.");
    STOP_RUN("Detected pre 2007-05-AB mesh.  Please use older version of utility.");
}

/// Line by line, as messages count them.
MeshTally readInOrder(int file, std::span<const std::string> removedParts, Mesh& mesh, Progress& progress) {
    constexpr std::int64_t SHOWN_EVERY = 10000;
    MeshRead read(mesh);
    MeshPass pass(mesh, removedParts, read, false);
    std::int64_t nextShown = SHOWN_EVERY;
    std::string_view line;
    for (std::int64_t number = 1; nextMeshLine(file, line); ++number) {
        const std::string_view reason = pass.take(line);
        if (reason == MeshPass::UNEXPECTED_QUAD9) {
            DMESSAGE("ERROR - Unexpected 9 point quad in QL or pre 2005 mesh.");
            pass.passOverElement();
        } else if (!reason.empty()) {
            refuse(file, line, number, reason);
        }
        if (pass.tally().elements < nextShown) continue;
        progress.show(pass.tally().elements);
        nextShown += SHOWN_EVERY;
    }
    return ADD_UP_PASSES({&pass.tally(), 1}, removedParts, mesh);
}

/// Blocks of the file on all threads. Nothing when anything stood out: reading in order then says what, as ever.
std::optional<MeshTally> readTogether(int file, std::span<const std::string> removedParts, Mesh& mesh) {
    const MeshBlocks blocks(file, 0);
    MeshRead read(mesh);
    std::vector<MeshTally> tallies(blocks.count());
    const bool good = blocks.readAll([&](std::size_t block, LinesOfBlock& lines) {
        MeshPass pass(mesh, removedParts, read, true);
        std::string_view line;
        while (lines.next(line))
            if (!pass.take(line).empty()) return false;
        tallies[block] = pass.tally();
        return true;
    });
    if (!good) return std::nullopt;
    return ADD_UP_PASSES(tallies, removedParts, mesh);
}

MeshTally readCards(int file, std::span<const std::string> removedParts, Mesh& mesh) {
    Progress progress("Element: ", mesh.elementCount);
    std::optional<MeshTally> read;
    if (MeshBlocks::WORTH_WHILE(file)) {
        read = readTogether(file, removedParts, mesh);
        if (!read) SIZE_MESH_TABLES(mesh);  // nothing of what was read stays
    }
    if (!read) read = readInOrder(file, removedParts, mesh, progress);
    progress.finish(read->elements);
    return *read;
}

void checkCounts(const Mesh& mesh, const MeshTally& read) {
    if (read.elements != mesh.elementCount)
        STOP_RUN("ERROR - Number of cells does not match results file. Expecting number of cells: " +
                 AINTEGER(mesh.elementCount));
    if (read.nodes != mesh.nodeCount)
        STOP_RUN("ERROR - Number of nodes does not match results file. Expecting number of nodes: " +
                 AINTEGER(mesh.nodeCount));
}

void rewind(int file) {
    REPORT("Rewinding .2dm file...");
    if (!SEEK_FILE(file, 0)) STOP_UNREADABLE(file);
    REPORT("Done.");
}

void warnOfPartsNotFound(std::span<const std::string> removedParts, const Mesh& mesh) {
    for (std::size_t k = 0; k < removedParts.size(); ++k) {
        if (mesh.meshParts[k + 1].found) continue;
        DMESSAGE("WARNING - Meshpart \"" + removedParts[k] + "\" was not found in .2dm file and cannot be removed.");
        PAUSE();
    }
}

void warnOfMissingOffset(const Mesh& mesh) {
    if (!IS_CURRENT_FLAVOUR(mesh) || mesh.geoReference.offsetGiven) return;
    if (std::any_of(mesh.nodes.begin(), mesh.nodes.end(), [](const MeshNode& node) { return node.datumFlag == 1; }))
        DMESSAGE("WARNING - The MESH2D line gives no vertical offset, 0 is taken.");
}

/// A mesh without elements would end in an output without values.
void checkElementsLeft(int file, const Mesh& mesh) {
    bool any = false;
    for (const MeshElement& element : mesh.elements) {
        if (element.shape == 0) continue;
        if (!element.removed) return;
        any = true;
    }
    if (any) STOP_RUN("ERROR - Nothing is left of the mesh after -rmp.");
    STOP_RUN("ERROR - " + GETNAM(file) + " holds no elements that are read (E3T, E4Q or E9Q cards).");
}

}  // namespace

void READ_2DM(int file, std::span<const std::string> removedParts, Mesh& mesh) {
    rewind(file);
    REPORT("...reading .2dm file");
    mesh.meshParts.resize(removedParts.size() + 1);
    const MeshTally read = readCards(file, removedParts, mesh);
    REPORT("Finished Reading .2dm file");
    warnOfPartsNotFound(removedParts, mesh);
    SET_NODE_KINDS(mesh);
    checkCounts(mesh, read);
    warnOfMissingOffset(mesh);
    checkElementsLeft(file, mesh);
    EXCLUDE_REMOVED_NODES(mesh);
}
