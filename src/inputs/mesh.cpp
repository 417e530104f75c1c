#include "inputs/mesh.h"

#include "inputs/mesh_reader.h"
#include "inputs/mesh_to_fill.h"
#include "platform/platform.h"
#include "services/exits.h"

#include <cstddef>
#include <new>

namespace {
Mesh mesh;
}

const Mesh& MESH() { return mesh; }
Mesh& MESH_TO_FILL() { return mesh; }
void INITIALISE_MESH() { mesh = Mesh{}; }

void SIZE_MESH_TABLES() {
    const auto nodes = static_cast<std::size_t>(mesh.nodeCount) + 1;
    const auto elements = static_cast<std::size_t>(mesh.elementCount) + 1;
    const std::uint64_t needed = nodes * (sizeof(MeshNode) + 1) + elements * sizeof(MeshElement);
    const std::uint64_t available = AVAILABLE_MEMORY();
    try {
        if (available != 0 && needed > available) throw std::bad_alloc{};
        mesh.nodes.assign(nodes, MeshNode{});
        mesh.elements.assign(elements, MeshElement{});
        mesh.nodeExcluded.assign(nodes, 0);
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR - Not enough memory for a mesh of " + std::to_string(mesh.nodeCount) + " nodes and " +
                 std::to_string(mesh.elementCount) + " elements (" + std::to_string(needed / 1000000 + 1) + " MB).");
    }
}
