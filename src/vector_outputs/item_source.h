// Where the objects of a layer come from: the nodes or cells of the mesh, or the cells of a grid, in rising order, dry
// and missing ones left out.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"
#include "vector_outputs/flow.h"
#include "vector_outputs/layer_kinds.h"
#include "vector_outputs/map_item.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Which objects are too shallow to be written.
struct Cutoff {
    enum class Of : std::uint8_t { Nothing, WaterLevel, Depth };
    Of of = Of::Nothing;  ///< what the values are; of a water level the depth is the level less the bed
    double depth = 0.0;   ///< shallower ones are left out
    /// per node, numbered from 1: 1 for a node it does not apply to; may be empty
    std::span<const std::uint8_t> exemptNodes;
};

/// Everything a walk reads. The spans stay the caller's.
struct ItemSource {
    const Mesh* mesh = nullptr;
    LayerKind kind;
    bool cellValues = false;  ///< x and y hold a value per cell, else per node; a grid has its own
    /// results, numbered from 1 (of a grid: in the grid's order, from 0); y empty for scalars, both for the bed
    std::span<const float> x, y;
    std::span<const std::uint8_t> chosen;         ///< per node or cell, numbered from 1: 1 where it may be written
    std::span<const std::int32_t> nodeMaterials;  ///< per node, numbered from 1; empty when nobody asks
    const Grid* grid = nullptr;                   ///< corner, cell size and counts, of a grid layer
    std::span<const float> bed, materials;        ///< of a grid layer, in the grid's order; empty when nobody asks
    Cutoff cutoff;
    TurnedAxes axes;
    double time = 0.0;  ///< for the column
};

/// The number of nodes, cells or grid cells that are looked at.
std::size_t CANDIDATES(const ItemSource& source);
/// The next object that is to be written, with all its columns set. False behind the last below `end`, at most
/// CANDIDATES. next: the candidate to begin with, from 0; then the one behind the object. Its centroid is where a
/// cell's point stands, its centre node where it has one.
bool NEXT_ITEM(const ItemSource& source, std::size_t& next, std::size_t end, MapItem& item);

/// The candidates in pieces for several threads.
struct ItemPieces {
    static constexpr std::size_t EACH = 4096;
    std::size_t candidates;

    std::size_t count() const { return (candidates + EACH - 1) / EACH; }
    std::size_t first(std::size_t piece) const { return piece * EACH; }
    std::size_t end(std::size_t piece) const { return std::min(candidates, (piece + 1) * EACH); }
};

/// The scalar of an item, or the magnitude of its vector.
inline float SHOWN_VALUE(const ItemSource& source, const MapItem& item) {
    return static_cast<float>(item[source.kind.content == LayerContent::Vector ? Column::Magnitude : Column::Value]);
}

/// What a cell shows of values at nodes, numbered from 1: its centre node's, else the mean of its corners; NO_VALUE
/// when one of them is missing.
float CELL_VALUE(std::span<const float> nodeValues, const MeshElement& element);
/// Per node, numbered from 1: the material of the last element in numbering order that uses it and is not removed; 0
/// for none.
std::vector<std::int32_t> NODE_MATERIALS(const Mesh& mesh);
