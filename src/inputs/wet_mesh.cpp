#include "inputs/wet_mesh.h"

#include <cstddef>

std::vector<std::uint8_t> WET_CELLS(const Mesh& mesh, std::span<const std::uint8_t> wet) {
    std::vector<std::uint8_t> cells(mesh.elements.size(), 0);
    for (std::size_t id = 1; id < cells.size(); ++id)
        cells[id] =
            TAKES_PART(mesh.elements[id]) && (wet.empty() || wet[id] != 0) && (mesh.oneD.empty() || mesh.oneD[id] == 0)
                ? 1
                : 0;
    return cells;
}

std::vector<std::uint8_t> WET_NODES(const Mesh& mesh, std::span<const std::uint8_t> wet) {
    std::vector<std::uint8_t> nodes(mesh.nodes.size(), 0);
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (!TAKES_PART(element) || (!wet.empty() && wet[id] == 0)) continue;
        for (std::size_t slot = 0; slot < static_cast<std::size_t>(element.shape); ++slot)
            nodes[static_cast<std::size_t>(element.nodes[slot])] = 1;
    }
    return nodes;
}
