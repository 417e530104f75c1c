#include "inputs/mesh_blocks.h"
#include "inputs/mesh_cards.h"
#include "inputs/mesh_line_error.h"
#include "inputs/mesh_reader.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t SHORTEST_GEO_REFERENCE = 10;  ///< characters of the first line; fewer in a QL mesh
constexpr std::size_t SHORTEST_CURRENT = 83;        ///< fewer: the pre-2005 flavour

/// Elements of other programs that the mesh has no place for.
constexpr std::array<std::string_view, 4> SKIPPED_CARDS = {"E2L", "E3L", "E6T", "E8Q"};

struct CardCounts {
    std::int64_t nodes = 0, triangles = 0, quads4 = 0, quads9 = 0;
    std::array<std::int64_t, SKIPPED_CARDS.size()> skipped{};
    std::int64_t elements() const { return triangles + quads4 + quads9; }
};

/// A value that the width of a line cuts in two could pass for another one.
void checkNotCut(int file, std::string_view line) {
    constexpr std::string_view SEPARATORS = " ,\t";
    const auto holdsText = [&](std::size_t at) { return SEPARATORS.find(line[at]) == std::string_view::npos; };
    if (line.size() > MESH_LINE_WIDTH && holdsText(MESH_LINE_WIDTH - 1) && holdsText(MESH_LINE_WIDTH))
        refuseMeshLine(file, line, 1, "a value runs past column " + AINTEGER8(MESH_LINE_WIDTH));
}

/// What the line does not supply stays zero.
void readGeoReference(int file, std::string_view line, Mesh& mesh) {
    checkNotCut(file, line);
    FreeForm form(fittedMeshLine(line).substr(SHORTEST_GEO_REFERENCE));
    const auto supplied = [&](auto& value) {
        const FreeForm::Read read = form.NEXT_REAL(value);
        if (read == FreeForm::Read::Bad) refuseMeshLine(file, line, 1, "a value of the geo-reference cannot be read");
        if (read == FreeForm::Read::Value && !std::isfinite(value))
            refuseMeshLine(file, line, 1, "a value of the geo-reference is not finite");
        return read == FreeForm::Read::Value;
    };
    for (double& value : mesh.geoReference.values)
        if (!supplied(value)) return;
    if (!mesh.pre2005) mesh.geoReference.offsetGiven = supplied(mesh.geoReference.verticalOffset);
}

void readFirstLine(int file, Mesh& mesh) {
    std::string_view line;
    const bool empty = !nextMeshLine(file, line);
    if (empty) line = {};
    if (!line.starts_with("MESH2D")) {
        REPORT("Did not find \"MESH2D\" in first 6 characters of first line");
        REPORT("Found: " + shownMeshLine(line));
        STOP_RUN("ERROR - " + GETNAM(file) + (empty ? " is empty." : " is not a .2dm mesh."));
    }
    line = TRIMF(line);
    if (line.size() < SHORTEST_GEO_REFERENCE) {
        REPORT("No VORANT geo-referencing information - assume QELDRA mesh...");
        mesh.qlMesh = true;
        return;
    }
    REPORT("Reading geo-referencing information...");
    mesh.pre2005 = line.size() < SHORTEST_CURRENT;
    readGeoReference(file, line, mesh);
    if (mesh.pre2005) REPORT("Detected pre 2005-09-AF .2dm format.");
}

/// Counts a line by its card.
void count(std::string_view line, CardCounts& counts) {
    switch (meshCard(line)) {
        case MeshCard::Node: ++counts.nodes; break;
        case MeshCard::Triangle: ++counts.triangles; break;
        case MeshCard::Quad4: ++counts.quads4; break;
        case MeshCard::Quad9: ++counts.quads9; break;
        case MeshCard::Part: break;
        case MeshCard::Other:
            for (std::size_t i = 0; i < SKIPPED_CARDS.size(); ++i)
                if (line.starts_with(SKIPPED_CARDS[i])) ++counts.skipped[i];
            break;
    }
}

CardCounts sumOf(const std::vector<CardCounts>& parts) {
    CardCounts sum;
    for (const CardCounts& part : parts) {
        sum.nodes += part.nodes;
        sum.triangles += part.triangles;
        sum.quads4 += part.quads4;
        sum.quads9 += part.quads9;
        for (std::size_t i = 0; i < SKIPPED_CARDS.size(); ++i) sum.skipped[i] += part.skipped[i];
    }
    return sum;
}

/// From where the file stands.
CardCounts countCards(int file) {
    if (MeshBlocks::WORTH_WHILE(file)) {
        const std::int64_t start = FILE_POSITION(file);
        const MeshBlocks blocks(file, start);
        std::vector<CardCounts> counts(blocks.count());
        const bool good = blocks.readAll([&](std::size_t block, LinesOfBlock& lines) {
            std::string_view line;
            CardCounts own;
            while (lines.next(line)) count(line, own);
            counts[block] = own;
            return true;
        });
        if (good) return sumOf(counts);
    }
    CardCounts counts;
    std::string_view line;
    while (nextMeshLine(file, line)) count(line, counts);
    return counts;
}

void keepCounts(int file, const CardCounts& counts, Mesh& mesh) {
    constexpr std::int64_t MOST = std::numeric_limits<std::int32_t>::max() - 1;
    if (counts.nodes > MOST || counts.elements() > MOST)
        STOP_RUN("ERROR - " + GETNAM(file) + " holds more than " + AINTEGER8(MOST) + " nodes or elements.");
    mesh.nodeCount = static_cast<std::int32_t>(counts.nodes);
    mesh.triangleCount = static_cast<std::int32_t>(counts.triangles);
    mesh.quad4Count = static_cast<std::int32_t>(counts.quads4);
    mesh.quad9Count = static_cast<std::int32_t>(counts.quads9);
    mesh.elementCount = static_cast<std::int32_t>(counts.elements());
    mesh.highResolution = mesh.quad9Count > 0;
}

void reportCounts(const Mesh& mesh) {
    REPORT("Finished Scanning .2dm file");
    REPORT("Number of nodes: " + AINTEGER(mesh.nodeCount));
    REPORT("Number of triangles: " + AINTEGER(mesh.triangleCount));
    REPORT("Number of 4-node quads: " + AINTEGER(mesh.quad4Count));
    REPORT("Number of 9-node quads: " + AINTEGER(mesh.quad9Count));
    REPORT("Total number of elements: " + AINTEGER(mesh.elementCount));
    if (mesh.highResolution) REPORT("Detected High Resolution Output");
    if (mesh.quad4Count > 0 && mesh.quad9Count > 0) {
        DMESSAGE("WARNING - Both 4 and 9 node quadrilateral elements detected.  This may cause issues");
        PAUSE();
    }
}

void warnOfSkippedElements(const CardCounts& counts, const Mesh& mesh) {
    std::string list;
    const auto add = [&list](std::int64_t count, std::string_view card) {
        if (count > 0) list += (list.empty() ? "" : ", ") + AINTEGER8(count) + ' ' + std::string(card);
    };
    for (std::size_t i = 0; i < SKIPPED_CARDS.size(); ++i) add(counts.skipped[i], SKIPPED_CARDS[i]);
    if (!IS_CURRENT_FLAVOUR(mesh)) add(counts.quads9, "E9Q");
    if (!list.empty()) DMESSAGE("WARNING - Elements of the mesh that are not read: " + list + ".");
}

}  // namespace

void SCAN_2DM(int file, Mesh& mesh) {
    mesh = Mesh{};
    readFirstLine(file, mesh);
    REPORT("...scanning .2dm file to determine size");
    const CardCounts counts = countCards(file);
    keepCounts(file, counts, mesh);
    reportCounts(mesh);
    warnOfSkippedElements(counts, mesh);
    if (mesh.nodeCount == 0) STOP_RUN("ERROR - " + GETNAM(file) + " holds no nodes (ND cards).");
}
