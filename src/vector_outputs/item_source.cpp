#include "vector_outputs/item_source.h"

#include "geometry/no_value.h"
#include "inputs/wet_mesh.h"
#include "vector_outputs/cell_shape.h"

#include <cstddef>

namespace {

constexpr std::size_t CENTRE_SLOT = 8;

std::size_t place(std::int32_t id) { return static_cast<std::size_t>(id); }

/// Value of a cell: its own, or that of its nodes.
float cellValue(const ItemSource& source, std::span<const float> values, const MeshElement& element, std::size_t id) {
    return source.cellValues ? values[id] : CELL_VALUE(values, element);
}

double cellElevation(const Mesh& mesh, const MeshElement& element) {
    if (element.shape == 9) return static_cast<double>(mesh.nodes[place(element.nodes[CENTRE_SLOT])].z);
    const std::size_t corners = element.shape == 3 ? 3 : 4;
    double sum = 0.0;
    for (std::size_t i = 0; i < corners; ++i) sum += static_cast<double>(mesh.nodes[place(element.nodes[i])].z);
    return sum / static_cast<double>(corners);
}

bool tooShallow(const Cutoff& cutoff, const MapItem& item, bool exempt) {
    switch (cutoff.of) {
        case Cutoff::Of::Nothing: return false;
        case Cutoff::Of::WaterLevel: return !exempt && item[Column::Depth] < cutoff.depth;
        case Cutoff::Of::Depth: return !exempt && item[Column::Value] < cutoff.depth;
    }
    return false;
}

/// Sets the columns of the results from their values here. False: missing, or too shallow.
bool setResults(const ItemSource& source, MapItem& item, float x, float y, bool exempt) {
    if (source.kind.content == LayerContent::Bed) return true;
    if (IS_MISSING(x)) return false;
    item[Column::Time] = source.time;
    if (source.kind.content == LayerContent::Scalar) {
        item[Column::Value] = static_cast<double>(x);
        item[Column::Depth] = static_cast<double>(x) - item[Column::Elevation];
        return !tooShallow(source.cutoff, item, exempt);
    }
    if (IS_MISSING(y)) return false;
    item.vx = x;
    item.vy = y;
    SET_FLOW(item, source.axes);
    return !IS_MISSING(static_cast<float>(item[Column::Magnitude]));  // of components too large to square
}

bool takeNode(const ItemSource& source, std::size_t id, MapItem& item) {
    if (source.chosen[id] == 0) return false;
    const MeshNode& node = source.mesh->nodes[id];
    item.id = static_cast<std::int32_t>(id);
    item.x = node.x;
    item.y = node.y;
    item.kind = node.kind;
    item[Column::Elevation] = static_cast<double>(node.z);
    if (!source.nodeMaterials.empty()) item.material = source.nodeMaterials[id];
    const bool exempt = !source.cutoff.exemptNodes.empty() && source.cutoff.exemptNodes[id] != 0;
    return setResults(source, item, source.x.empty() ? NO_VALUE : source.x[id],
                      source.y.empty() ? NO_VALUE : source.y[id], exempt);
}

void placeCell(const ItemSource& source, const MeshElement& element, MapItem& item) {
    if (element.shape == 9) {
        const MeshNode& centre = source.mesh->nodes[place(element.nodes[CENTRE_SLOT])];
        item.x = centre.x;
        item.y = centre.y;
        return;
    }
    const MapPoint centroid = CELL_CENTROID(CELL_SHAPE(*source.mesh, element));
    item.x = centroid.x;
    item.y = centroid.y;
}

bool takeCell(const ItemSource& source, std::size_t id, MapItem& item) {
    if (source.chosen[id] == 0) return false;
    const MeshElement& element = source.mesh->elements[id];
    item.id = static_cast<std::int32_t>(id);
    item.material = element.material;
    item[Column::Elevation] = cellElevation(*source.mesh, element);
    if (source.kind.drawnAs != DrawnAs::Region) placeCell(source, element, item);
    return setResults(source, item, source.x.empty() ? NO_VALUE : cellValue(source, source.x, element, id),
                      source.y.empty() ? NO_VALUE : cellValue(source, source.y, element, id), false);
}

bool takeGridCell(const ItemSource& source, std::size_t index, MapItem& item) {
    if (IS_MISSING(source.x[index])) return false;
    const Grid& grid = *source.grid;
    item.row = static_cast<std::int32_t>(index / static_cast<std::size_t>(grid.ncols)) + 1;
    item.column = static_cast<std::int32_t>(index % static_cast<std::size_t>(grid.ncols)) + 1;
    item.x = CELL_X(grid, item.column);
    item.y = CELL_Y(grid, item.row);
    if (!source.bed.empty()) {
        if (IS_MISSING(source.bed[index])) return false;  // a level over no bed has no depth
        item[Column::Elevation] = static_cast<double>(source.bed[index]);
    }
    if (!source.materials.empty())
        item.material = IS_MISSING(source.materials[index]) ? 0 : static_cast<std::int32_t>(source.materials[index]);
    return setResults(source, item, source.x[index], source.y.empty() ? NO_VALUE : source.y[index], false);
}

bool takes(const ItemSource& source, std::size_t candidate, MapItem& item) {
    switch (source.kind.items) {
        case ItemKind::Node: return takeNode(source, candidate, item);
        case ItemKind::Cell: return takeCell(source, candidate, item);
        case ItemKind::GridCell: return takeGridCell(source, candidate, item);
    }
    return false;
}

template <typename Visit>
void forEachNode(const MeshElement& element, Visit visit) {
    for (std::size_t slot = 0; slot < static_cast<std::size_t>(element.shape); ++slot)
        visit(place(element.nodes[slot]));
}

}  // namespace

float CELL_VALUE(std::span<const float> nodeValues, const MeshElement& element) {
    if (element.shape == 9) return nodeValues[place(element.nodes[CENTRE_SLOT])];
    const std::size_t corners = element.shape == 3 ? 3 : 4;
    double sum = 0.0;
    for (std::size_t i = 0; i < corners; ++i) {
        const float value = nodeValues[place(element.nodes[i])];
        if (IS_MISSING(value)) return NO_VALUE;
        sum += static_cast<double>(value);
    }
    return static_cast<float>(sum / static_cast<double>(corners));
}

std::size_t CANDIDATES(const ItemSource& source) {
    return source.kind.items == ItemKind::GridCell ? source.x.size() : source.chosen.size();
}

bool NEXT_ITEM(const ItemSource& source, std::size_t& next, std::size_t end, MapItem& item) {
    while (next < end)
        if (takes(source, next++, item)) return true;
    return false;
}

std::vector<std::int32_t> NODE_MATERIALS(const Mesh& mesh) {
    std::vector<std::int32_t> materials(mesh.nodes.size(), 0);
    for (const MeshElement& element : mesh.elements)
        if (TAKES_PART(element)) forEachNode(element, [&](std::size_t node) { materials[node] = element.material; });
    return materials;
}
