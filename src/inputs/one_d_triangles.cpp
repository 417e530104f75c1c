#include "inputs/one_d_triangles.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::int32_t TRIANGLE = 3;

bool isQuad(const MeshElement& element) { return element.shape == 4 || element.shape == 9; }

std::size_t lastQuad(const Mesh& mesh) {
    for (std::size_t id = mesh.elements.size(); id-- > 1;)
        if (isQuad(mesh.elements[id])) return id;
    return 0;
}

/// Nodes that share a triangle, as sets: each node leads to the one that stands for its set.
class NodeSets {
public:
    explicit NodeSets(std::size_t nodes) : leader_(nodes) {
        for (std::size_t i = 0; i < nodes; ++i) leader_[i] = static_cast<std::int32_t>(i);
    }
    std::int32_t leaderOf(std::int32_t node) {
        while (at(node) != node) node = at(node) = at(at(node));
        return node;
    }
    void join(std::int32_t a, std::int32_t b) { at(leaderOf(a)) = leaderOf(b); }

private:
    std::int32_t& at(std::int32_t node) { return leader_[static_cast<std::size_t>(node)]; }
    std::vector<std::int32_t> leader_;
};

/// Per node that stands for a set: 1 when a node of the set belongs to a quad, or to a triangle written before the last
/// quad.
std::vector<std::uint8_t> setsOfTwoD(const Mesh& mesh, NodeSets& sets, std::size_t last) {
    std::vector<std::uint8_t> twoD(mesh.nodes.size(), 0);
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (!isQuad(element) && (element.shape != TRIANGLE || id > last)) continue;
        for (std::size_t slot = 0; slot < static_cast<std::size_t>(element.shape); ++slot)
            twoD[static_cast<std::size_t>(sets.leaderOf(element.nodes[slot]))] = 1;
    }
    return twoD;
}

}  // namespace

std::vector<std::uint8_t> ONE_D_TRIANGLES(const Mesh& mesh) {
    const std::size_t last = mesh.qlMesh ? 0 : lastQuad(mesh);
    if (last == 0 || last + 1 >= mesh.elements.size()) return {};
    NodeSets sets(mesh.nodes.size());
    for (const MeshElement& element : mesh.elements) {
        if (element.shape != TRIANGLE) continue;
        sets.join(element.nodes[0], element.nodes[1]);
        sets.join(element.nodes[0], element.nodes[2]);
    }
    const std::vector<std::uint8_t> twoD = setsOfTwoD(mesh, sets, last);
    std::vector<std::uint8_t> oneD(mesh.elements.size(), 0);
    for (std::size_t id = last + 1; id < oneD.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        oneD[id] =
            element.shape == TRIANGLE && twoD[static_cast<std::size_t>(sets.leaderOf(element.nodes[0]))] == 0 ? 1 : 0;
    }
    if (std::find(oneD.begin(), oneD.end(), 1) == oneD.end()) oneD.clear();
    return oneD;
}

std::vector<std::uint8_t> ONE_D_NODES(const Mesh& mesh, const std::vector<std::uint8_t>& oneD) {
    if (oneD.empty()) return {};
    std::vector<std::uint8_t> nodes(mesh.nodes.size(), 0);
    for (std::size_t id = 1; id < oneD.size(); ++id)
        if (oneD[id] != 0)
            for (std::size_t corner = 0; corner < 3; ++corner)
                nodes[static_cast<std::size_t>(mesh.elements[id].nodes[corner])] = 1;
    return nodes;
}
