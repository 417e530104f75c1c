#include "inputs/mesh_nodes.h"

#include "services/exits.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

constexpr NodeKind TRIANGLE_VERTEX = {'T', ' '}, QUAD_CORNER = {'H', ' '}, MID_SIDE = {'U', 'V'},
                   QUAD_CENTRE = {'C', ' '}, QL_NODE = {'Q', 'L'};

void setKinds(Mesh& mesh, const MeshElement& element, std::size_t first, std::size_t end, NodeKind kind) {
    for (std::size_t slot = first; slot < end; ++slot)
        mesh.nodes[static_cast<std::size_t>(element.nodes[slot])].kind = kind;
}

}  // namespace

void SET_NODE_KINDS(Mesh& mesh) {
    if (mesh.qlMesh) {
        for (std::size_t n = 1; n < mesh.nodes.size(); ++n) mesh.nodes[n].kind = QL_NODE;
        return;
    }
    for (std::size_t e = 1; e < mesh.elements.size(); ++e) {
        const MeshElement& element = mesh.elements[e];
        switch (element.shape) {
            case 0: break;  // a refused card
            case 3: setKinds(mesh, element, 0, 3, TRIANGLE_VERTEX); break;
            case 4: setKinds(mesh, element, 0, 4, QUAD_CORNER); break;
            case 9:
                setKinds(mesh, element, 0, 4, QUAD_CORNER);
                setKinds(mesh, element, 4, 8, MID_SIDE);
                setKinds(mesh, element, 8, 9, QUAD_CENTRE);
                break;
            default:
                STOP_RUN("ERROR - Should not be here, cell is not e3t, e4q or e9q.  Contact " +
                         std::string(SUPPORT_CONTACT));
        }
    }
}

void EXCLUDE_REMOVED_NODES(Mesh& mesh) {
    if (std::none_of(mesh.elements.begin(), mesh.elements.end(),
                     [](const MeshElement& element) { return element.removed; }))
        return;
    for (const bool removed : {true, false})  // kept elements last: they win
        for (const MeshElement& element : mesh.elements)
            if (element.removed == removed)
                for (const std::int32_t node : element.nodes)
                    mesh.nodeExcluded[static_cast<std::size_t>(node)] = removed ? 1 : 0;
    mesh.nodeExcluded[0] = 0;  // empty slots point there
}
