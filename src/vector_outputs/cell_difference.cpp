#include "vector_outputs/cell_difference.h"

#include "inputs/wet_mesh.h"
#include "vector_outputs/item_source.h"

#include <cstddef>

namespace {

Results cellsOf(const Mesh& mesh, const Results& nodes) {
    Results cells = nodes;
    ALLOCATE_RESULTS(mesh.elementCount, nodes.cells, nodes.vector, cells);
    cells.wet = nodes.wet;
    cells.cellCentred = true;
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (!TAKES_PART(element)) continue;
        cells.x[id] = CELL_VALUE(nodes.x, element);
        if (nodes.vector) cells.y[id] = CELL_VALUE(nodes.y, element);
    }
    return cells;
}

}  // namespace

DifferenceParts CELL_PARTS(const Mesh& mesh, const DifferenceParts& parts) {
    if (parts.now.cellCentred) return parts;
    DifferenceParts cells;
    cells.now = cellsOf(mesh, parts.now);
    cells.was = cellsOf(mesh, parts.was);
    cells.dryIsZero = parts.dryIsZero;
    cells.degrees = parts.degrees;
    return cells;
}

Results CELL_DIFFERENCE(const Mesh& mesh, const DifferenceParts& cells) {
    Results difference = cells.now;
    difference.parts = &cells;
    SUBTRACT_RESULTS(mesh, cells, difference);
    return difference;
}
