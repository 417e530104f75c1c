#include "inputs/mesh.h"

#include "inputs/mesh_reader.h"
#include "platform/platform.h"
#include "services/exits.h"

#include <cstddef>
#include <new>

namespace {
Mesh mesh;
}

const Mesh& MESH() { return mesh; }
Mesh& MESH_TO_FILL() { return mesh; }

void SIZE_MESH_TABLES(Mesh& to) {
    const auto nodes = static_cast<std::size_t>(to.nodeCount) + 1;
    const auto elements = static_cast<std::size_t>(to.elementCount) + 1;
    const std::uint64_t needed = nodes * (sizeof(MeshNode) + 1) + elements * sizeof(MeshElement);
    const std::uint64_t available = AVAILABLE_MEMORY();
    try {
        if (available != 0 && needed > available) throw std::bad_alloc{};
        to.nodes.assign(nodes, MeshNode{});
        to.elements.assign(elements, MeshElement{});
        to.nodeExcluded.assign(nodes, 0);
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR - Not enough memory for a mesh of " + std::to_string(to.nodeCount) + " nodes and " +
                 std::to_string(to.elementCount) + " elements (" + std::to_string(needed / 1000000 + 1) + " MB).");
    }
}
