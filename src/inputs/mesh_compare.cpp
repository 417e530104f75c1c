#include "inputs/mesh_compare.h"

#include "text_utils/numbers.h"

#include <cmath>
#include <cstddef>

namespace {

std::string counts(const char* what, std::int32_t a, std::int32_t b) {
    return AINTEGER(a) + " and " + AINTEGER(b) + " " + what;
}

bool alike(const MeshElement& a, const MeshElement& b) {
    return a.shape == b.shape && a.nodes == b.nodes && a.removed == b.removed;
}

}  // namespace

std::string MESH_CONTRAST(const Mesh& a, const Mesh& b, double tolerance) {
    if (a.nodeCount != b.nodeCount) return counts("nodes", a.nodeCount, b.nodeCount);
    if (a.elementCount != b.elementCount) return counts("cells", a.elementCount, b.elementCount);
    const auto far = [tolerance](double p, double q) {
        return !(std::abs(p - q) <= tolerance * 1.0001);
    };  // as far as digits go
    for (std::size_t id = 1; id < a.nodes.size(); ++id)
        if (far(a.nodes[id].x, b.nodes[id].x) || far(a.nodes[id].y, b.nodes[id].y))
            return "node " + std::to_string(id) + " stands elsewhere";
    for (std::size_t id = 1; id < a.elements.size(); ++id)
        if (!alike(a.elements[id], b.elements[id])) return "cell " + std::to_string(id) + " is another";
    return {};
}
