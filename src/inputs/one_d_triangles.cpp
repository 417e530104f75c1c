#include "inputs/one_d_triangles.h"

#include "services/console.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace {

constexpr std::int32_t TRIANGLE = 3;

/// A side by its nodes, the smaller number first.
using Side = std::pair<std::int32_t, std::int32_t>;
Side sideOf(std::int32_t a, std::int32_t b) { return std::minmax(a, b); }

bool isQuad(const MeshElement& element) { return element.shape == 4 || element.shape == 9; }

/// Per node, numbered from 1: 1 for a node of a quad.
std::vector<std::uint8_t> quadNodes(const Mesh& mesh) {
    std::vector<std::uint8_t> nodes(mesh.nodes.size(), 0);
    for (const MeshElement& element : mesh.elements)
        if (isQuad(element))
            for (std::size_t slot = 0; slot < static_cast<std::size_t>(element.shape); ++slot)
                nodes[static_cast<std::size_t>(element.nodes[slot])] = 1;
    return nodes;
}

/// The sides of triangles that could be sides of quads too, sorted.
std::vector<Side> sidesBetween(const Mesh& mesh, const std::vector<std::uint8_t>& ofQuad) {
    std::vector<Side> sides;
    for (const MeshElement& element : mesh.elements) {
        if (element.shape != TRIANGLE) continue;
        for (std::size_t i = 0; i < 3; ++i) {
            const Side side = sideOf(element.nodes[i], element.nodes[(i + 1) % 3]);
            if (ofQuad[static_cast<std::size_t>(side.first)] != 0 && ofQuad[static_cast<std::size_t>(side.second)] != 0)
                sides.push_back(side);
        }
    }
    std::sort(sides.begin(), sides.end());
    return sides;
}

/// A triangle lies along a whole side of a 9-node quad or along one half of it.
bool hasOneOf(const MeshElement& quad, const std::vector<Side>& sides) {
    const auto isOne = [&](std::int32_t a, std::int32_t b) {
        return std::binary_search(sides.begin(), sides.end(), sideOf(a, b));
    };
    for (std::size_t i = 0; i < 4; ++i) {
        const std::int32_t from = quad.nodes[i], to = quad.nodes[(i + 1) % 4], middle = quad.nodes[4 + i];
        if (isOne(from, to) || (quad.shape == 9 && (isOne(from, middle) || isOne(middle, to)))) return true;
    }
    return false;
}

}  // namespace

std::vector<std::uint8_t> ONE_D_TRIANGLES(const Mesh& mesh) {
    if (mesh.qlMesh || std::none_of(mesh.elements.begin(), mesh.elements.end(), isQuad)) return {};
    std::vector<std::uint8_t> oneD(mesh.elements.size(), 0);
    for (std::size_t id = 1; id < oneD.size(); ++id) oneD[id] = mesh.elements[id].shape == TRIANGLE ? 1 : 0;
    if (std::find(oneD.begin(), oneD.end(), 1) == oneD.end()) return {};
    const std::vector<Side> sides = sidesBetween(mesh, quadNodes(mesh));
    for (const MeshElement& element : mesh.elements)
        if (!sides.empty() && isQuad(element) && hasOneOf(element, sides)) return {};
    return oneD;
}

void SETTLE_ONE_D_TRIANGLES(Mesh& mesh, bool allTwoD) {
    mesh.oneD.clear();
    if (allTwoD) return;
    mesh.oneD = ONE_D_TRIANGLES(mesh);
    std::int64_t count = 0;
    for (std::size_t id = 1; id < mesh.oneD.size(); ++id)
        count += mesh.oneD[id] != 0 && !mesh.elements[id].removed ? 1 : 0;
    if (count == 0) return;
    DMESSAGE("WARNING - " + AINTEGER8(count) +
             " triangles share no edge with a quad and are taken as 1D water level lines; -no1d takes them as 2D "
             "cells.");
}

std::vector<std::uint8_t> ONE_D_NODES(const Mesh& mesh) {
    if (mesh.oneD.empty()) return {};
    std::vector<std::uint8_t> nodes(mesh.nodes.size(), 0);
    for (std::size_t id = 1; id < mesh.oneD.size(); ++id)
        if (mesh.oneD[id] != 0)
            for (std::size_t corner = 0; corner < 3; ++corner)
                nodes[static_cast<std::size_t>(mesh.elements[id].nodes[corner])] = 1;
    const std::vector<std::uint8_t> ofQuad = quadNodes(mesh);
    for (std::size_t node = 1; node < nodes.size(); ++node)
        if (ofQuad[node] != 0) nodes[node] = 0;
    return nodes;
}
