#include "inputs/mesh_cards.h"
#include "inputs/mesh_line_error.h"
#include "inputs/mesh_reader.h"
#include "inputs/mesh_to_fill.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <cmath>
#include <limits>

namespace {

constexpr std::size_t SHORTEST_GEO_REFERENCE = 10;  ///< characters of the first line; fewer in a QL mesh
constexpr std::size_t SHORTEST_CURRENT = 83;        ///< fewer: the pre-2005 flavour

struct CardCounts {
    std::int64_t nodes = 0, triangles = 0, quads4 = 0, quads9 = 0;
    std::int64_t elements() const { return triangles + quads4 + quads9; }
};

/// What the line does not supply stays zero.
void readGeoReference(int file, std::string_view line, Mesh& mesh) {
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
    if (!mesh.pre2005) supplied(mesh.geoReference.verticalOffset);
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

CardCounts countCards(int file) {
    CardCounts counts;
    std::string_view line;
    while (nextMeshLine(file, line)) {
        switch (meshCard(line)) {
            case MeshCard::Node: ++counts.nodes; break;
            case MeshCard::Triangle: ++counts.triangles; break;
            case MeshCard::Quad4: ++counts.quads4; break;
            case MeshCard::Quad9: ++counts.quads9; break;
            case MeshCard::Part:
            case MeshCard::Other: break;
        }
    }
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

}  // namespace

void SCAN_2DM(int file) {
    INITIALISE_MESH();
    Mesh& mesh = MESH_TO_FILL();
    readFirstLine(file, mesh);
    REPORT("...scanning .2dm file to determine size");
    keepCounts(file, countCards(file), mesh);
    reportCounts(mesh);
    if (mesh.nodeCount == 0) STOP_RUN("ERROR - " + GETNAM(file) + " holds no nodes (ND cards).");
}
