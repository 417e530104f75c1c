#include "inputs/mesh_pass.h"

#include "text_utils/text.h"

#include <algorithm>
#include <cmath>

namespace {

MeshPart& partOf(Mesh& mesh, std::size_t number) {
    if (mesh.meshParts.size() <= number) mesh.meshParts.resize(number + 1);
    return mesh.meshParts[number];
}

/// Mesh and tally keep the extents of their nodes by the same names.
template <typename To>
void widen(To& to, double x, double y, float z) {
    to.xmin = std::min(to.xmin, x);
    to.xmax = std::max(to.xmax, x);
    to.ymin = std::min(to.ymin, y);
    to.ymax = std::max(to.ymax, y);
    to.zmin = std::min(to.zmin, z);
    to.zmax = std::max(to.zmax, z);
}

/// The first of the names to remove that is the part's, as a number from 1; 0 for none.
std::size_t removedNumber(const std::string& name, std::span<const std::string> removedParts) {
    for (std::size_t k = 0; k < removedParts.size(); ++k)
        if (TRIMF(name) == TRIMF(FITTED(removedParts[k], MESH_PART_WIDTH))) return k + 1;
    return 0;
}

}  // namespace

std::string_view MeshPass::take(std::string_view line) {
    switch (meshCard(line)) {
        case MeshCard::Node: return takeNode(fittedMeshLine(line));
        case MeshCard::Triangle: return takeElement(fittedMeshLine(line), TRIANGLE_SLOTS);
        case MeshCard::Quad4: return takeElement(fittedMeshLine(line), QUAD4_SLOTS);
        case MeshCard::Quad9:
            return IS_CURRENT_FLAVOUR(mesh_) ? takeElement(fittedMeshLine(line), QUAD9_SLOTS) : UNEXPECTED_QUAD9;
        case MeshCard::Part: return takePart(fittedMeshLine(line));
        case MeshCard::Other: break;
    }
    return {};
}

std::string_view MeshPass::reasonOf(CardRead read, bool firstOfItsKind) const {
    if (read == CardRead::Whole) return {};
    if (read == CardRead::Bad) return "a value cannot be read";
    return IS_CURRENT_FLAVOUR(mesh_) && firstOfItsKind ? TOO_FEW_VALUES : "a value is missing";
}

std::string_view MeshPass::takeNode(std::string_view line) {
    std::int32_t id = 0;
    MeshNode node;
    const CardRead read = readNodeCard(line, IS_CURRENT_FLAVOUR(mesh_), id, node);
    if (read != CardRead::Whole) return reasonOf(read, tally_.nodes == 0);
    if (id < 1 || id > mesh_.nodeCount) return "node number out of range";
    if (!std::isfinite(node.x) || !std::isfinite(node.y) || !std::isfinite(node.z)) return "a coordinate is not finite";
    if (!claim(read_.nodes[static_cast<std::size_t>(id)])) return "this node was given before";
    if (node.datumFlag == 1) node.z -= mesh_.geoReference.verticalOffset;
    mesh_.nodes[static_cast<std::size_t>(id)] = node;
    ++tally_.nodes;
    widen(tally_, node.x, node.y, node.z);
    return {};
}

template <std::size_t Count>
std::string_view MeshPass::takeElement(std::string_view line, const std::array<std::uint8_t, Count>& slots) {
    std::int32_t id = 0;
    MeshElement element;
    const CardRead read = readElementCard(line, slots, !mesh_.qlMesh, IS_CURRENT_FLAVOUR(mesh_), id, element);
    if (read != CardRead::Whole) return reasonOf(read, tally_.elements == 0);
    if (id < 1 || id > mesh_.elementCount) return "element number out of range";
    for (const std::uint8_t slot : slots)
        if (element.nodes[slot] < 1 || element.nodes[slot] > mesh_.nodeCount) return "node number out of range";
    if (!claim(read_.elements[static_cast<std::size_t>(id)])) return "this element was given before";
    element.removed = removing_;
    mesh_.elements[static_cast<std::size_t>(id)] = element;
    ++tally_.elements;
    if (!removedParts_.empty() && tally_.parts.empty()) tally_.elementsBeforeAnyPart.push_back(id);
    return {};
}

std::string_view MeshPass::takePart(std::string_view line) {
    constexpr std::size_t NAME_COLUMN = 9;
    FreeForm form(line.substr(std::min(line.size(), NAME_COLUMN)));
    std::string_view text;
    const CardRead read = cardRead(form.NEXT_TEXT(text));
    if (read == CardRead::Bad) return "the name's quotes are not closed";
    if (read == CardRead::Short) return "a value is missing";
    tally_.parts.push_back(FITTED(text, MESH_PART_WIDTH));
    removing_ = removedNumber(tally_.parts.back(), removedParts_) > 0;
    return {};
}

MeshTally ADD_UP_PASSES(std::span<const MeshTally> tallies, std::span<const std::string> removedParts, Mesh& mesh) {
    MeshTally whole;
    bool removing = false;  // as the lines before a pass left it
    for (const MeshTally& tally : tallies) {
        whole.nodes += tally.nodes;
        whole.elements += tally.elements;
        if (tally.nodes > 0) {
            widen(mesh, tally.xmin, tally.ymin, tally.zmin);
            widen(mesh, tally.xmax, tally.ymax, tally.zmax);
        }
        if (removing)
            for (const std::int32_t id : tally.elementsBeforeAnyPart)
                mesh.elements[static_cast<std::size_t>(id)].removed = true;
        for (const std::string& name : tally.parts) {
            partOf(mesh, static_cast<std::size_t>(++mesh.meshPartCount)).name = name;
            const std::size_t number = removedNumber(name, removedParts);
            removing = number > 0;
            if (removing) partOf(mesh, number).found = true;
        }
    }
    return whole;
}
