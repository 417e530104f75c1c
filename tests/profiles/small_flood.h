// Two quads side by side and what flows over them, for the tests of the stages.
#pragma once

#include "raster/lattice_mesh.h"

#include <vector>

/// Nodes 1 2 3 at y = 0 and 4 5 6 at y = 10, x = 0, 10, 20; element 1 to the west, 2 to the east. Bed x / 10.
inline Mesh smallMesh() {
    Mesh mesh = meshOf({{0, 0}, {10, 0}, {20, 0}, {0, 10}, {10, 10}, {20, 10}}, {{1, 2, 5, 4}, {2, 3, 6, 5}});
    for (MeshNode& node : mesh.nodes) node.z = static_cast<float>(node.x / 10.0);
    mesh.xmin = mesh.ymin = 0.0;
    mesh.xmax = 20.0;
    mesh.ymax = 10.0;
    return mesh;
}

inline Results scalarResults(const std::vector<float>& values, bool cells = false) {
    Results results;
    results.cells = 2;
    results.cellCentred = cells;
    results.x = {NO_VALUE};
    results.x.insert(results.x.end(), values.begin(), values.end());
    results.wet = {0, 1, 1};
    return results;
}
