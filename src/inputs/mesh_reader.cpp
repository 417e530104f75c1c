#include "inputs/mesh_reader.h"

#include "inputs/mesh_cards.h"
#include "inputs/mesh_line_error.h"
#include "inputs/mesh_nodes.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cmath>

namespace {

/// The pass over the cards, and where it stands.
class MeshPass {
public:
    MeshPass(int file, std::span<const std::string> removedParts, Mesh& mesh)
        : file_(file),
          removedParts_(removedParts),
          mesh_(mesh),
          nodeRead_(mesh.nodes.size(), 0),
          progress_("Element: ", mesh.elementCount) {}

    void readCards() {
        while (nextMeshLine(file_, line_)) {
            ++lineNumber_;
            switch (meshCard(line_)) {
                case MeshCard::Node: readNode(); break;
                case MeshCard::Triangle: readElement(TRIANGLE_SLOTS); break;
                case MeshCard::Quad4: readElement(QUAD4_SLOTS); break;
                case MeshCard::Quad9: readQuad9(); break;
                case MeshCard::Part: readPart(); break;
                case MeshCard::Other: break;
            }
        }
        progress_.finish(elementsRead_);
    }

    void checkCounts() const {
        if (elementsRead_ != mesh_.elementCount)
            STOP_RUN("ERROR - Number of cells does not match results file. Expecting number of cells: " +
                     AINTEGER(mesh_.elementCount));
        if (nodesRead_ != mesh_.nodeCount)
            STOP_RUN("ERROR - Number of nodes does not match results file. Expecting number of nodes: " +
                     AINTEGER(mesh_.nodeCount));
    }

private:
    [[noreturn]] void refuse(std::string_view reason) const { refuseMeshLine(file_, line_, lineNumber_, reason); }

    bool currentFlavour() const { return IS_CURRENT_FLAVOUR(mesh_); }

    /// A layout between the pre-2005 and the current one shows in the first card of a kind, which has too few values.
    void checkRead(CardRead read, bool firstOfItsKind) const {
        if (read == CardRead::Whole) return;
        if (read == CardRead::Bad) refuse("a value cannot be read");
        if (currentFlavour() && firstOfItsKind) {
            REPORT("   Line " + AINTEGER8(lineNumber_) + " of " + GETNAM(file_) +
                   " has too few values for the current layout.");
            STOP_RUN("Detected pre 2007-05-AB mesh.  Please use older version of utility.");
        }
        refuse("a value is missing");
    }

    void readNode() {
        std::int32_t id = 0;
        MeshNode node;
        checkRead(readNodeCard(fittedMeshLine(line_), currentFlavour(), id, node), nodesRead_ == 0);
        if (id < 1 || id > mesh_.nodeCount) refuse("node number out of range");
        if (!std::isfinite(node.x) || !std::isfinite(node.y) || !std::isfinite(node.z))
            refuse("a coordinate is not finite");
        std::uint8_t& alreadyRead = nodeRead_[static_cast<std::size_t>(id)];
        if (alreadyRead != 0) refuse("this node was given before");
        alreadyRead = 1;
        if (node.datumFlag == 1) node.z -= mesh_.geoReference.verticalOffset;
        mesh_.nodes[static_cast<std::size_t>(id)] = node;
        ++nodesRead_;
        mesh_.xmin = std::min(mesh_.xmin, node.x);
        mesh_.xmax = std::max(mesh_.xmax, node.x);
        mesh_.ymin = std::min(mesh_.ymin, node.y);
        mesh_.ymax = std::max(mesh_.ymax, node.y);
        mesh_.zmin = std::min(mesh_.zmin, node.z);
        mesh_.zmax = std::max(mesh_.zmax, node.z);
    }

    template <std::size_t Count>
    void readElement(const std::array<std::uint8_t, Count>& slots) {
        std::int32_t id = 0;
        MeshElement element;
        checkRead(readElementCard(fittedMeshLine(line_), slots, !mesh_.qlMesh, currentFlavour(), id, element),
                  elementsRead_ == 0);
        if (id < 1 || id > mesh_.elementCount) refuse("element number out of range");
        for (const std::uint8_t slot : slots)
            if (element.nodes[slot] < 1 || element.nodes[slot] > mesh_.nodeCount) refuse("node number out of range");
        MeshElement& entry = mesh_.elements[static_cast<std::size_t>(id)];
        if (entry.shape != 0) refuse("this element was given before");
        element.removed = removing_;
        entry = element;
        countElement();
    }

    void readQuad9() {
        if (currentFlavour()) return readElement(QUAD9_SLOTS);
        DMESSAGE("ERROR - Unexpected 9 point quad in QL or pre 2005 mesh.");
        countElement();  // its element keeps shape 0
    }

    void countElement() {
        constexpr std::int64_t SHOWN_EVERY = 10000;
        if (++elementsRead_ % SHOWN_EVERY == 0) progress_.show(elementsRead_);
    }

    void readPart() {
        constexpr std::size_t NAME_COLUMN = 9;
        const std::string_view line = fittedMeshLine(line_);
        FreeForm form(line.substr(std::min(line.size(), NAME_COLUMN)));
        std::string_view text;
        const CardRead read = cardRead(form.NEXT_TEXT(text));
        if (read == CardRead::Bad) refuse("the name's quotes are not closed");
        if (read == CardRead::Short) refuse("a value is missing");
        const std::string name = FITTED(text, MESH_PART_WIDTH);
        partOf(++mesh_.meshPartCount).name = name;
        removing_ = false;
        for (std::size_t k = 0; k < removedParts_.size() && !removing_; ++k) {
            removing_ = TRIMF(name) == TRIMF(FITTED(removedParts_[k], MESH_PART_WIDTH));
            if (removing_) partOf(static_cast<std::int32_t>(k) + 1).found = true;
        }
    }

    MeshPart& partOf(std::int32_t number) {
        const auto index = static_cast<std::size_t>(number);
        if (mesh_.meshParts.size() <= index) mesh_.meshParts.resize(index + 1);
        return mesh_.meshParts[index];
    }

    int file_;
    std::span<const std::string> removedParts_;
    Mesh& mesh_;
    std::vector<std::uint8_t> nodeRead_;  ///< per node, numbered from 1
    Progress progress_;
    std::string_view line_;
    std::int64_t lineNumber_ = 0;
    std::int64_t nodesRead_ = 0, elementsRead_ = 0;
    bool removing_ = false;  ///< the mesh part at hand is named with -rmp
};

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
    MeshPass pass(file, removedParts, mesh);
    pass.readCards();
    REPORT("Finished Reading .2dm file");
    warnOfPartsNotFound(removedParts, mesh);
    SET_NODE_KINDS(mesh);
    pass.checkCounts();
    warnOfMissingOffset(mesh);
    checkElementsLeft(file, mesh);
    EXCLUDE_REMOVED_NODES(mesh);
}
