// Which cells of a grid each element covers. Made once and reused for every output time while memory allows.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// What the values belong to, which decides the parts that elements are taken apart into.
enum class PlanKind : std::uint8_t {
    Nodes,    ///< values at all nodes: a 9-node quad is four quads around its centre node
    Corners,  ///< values at corner nodes only (the bed of a mesh alone): a 9-node quad is the quad of its corners
    Cells     ///< one value per element
};

/// The kind of results, by what their record says.
inline PlanKind PLAN_KIND(bool cellCentred, bool cornersOnly) {
    if (cellCentred) return PlanKind::Cells;
    return cornersOnly ? PlanKind::Corners : PlanKind::Nodes;
}

/// The cells of one row that a piece may cover. None: a row that passes between cell points.
struct PlanRow {
    std::int32_t column = 1;  ///< first column, from 1
    std::uint32_t cells = 0;
};

/// A 3- or 4-cornered piece of an element on the grid: its rows stand together, from south to north.
struct PlanPiece {
    std::int32_t element = 0;
    std::array<std::int32_t, 4> nodes{};  ///< corners; the fourth is 0 in a triangle
    std::int32_t firstRow = 0;            ///< from 1
    std::uint32_t rows = 0;
    /// bit s: s occurs among the sets of triangles of its cells; 0: every cell lies in the whole piece
    std::uint16_t sets = 0;
    std::uint16_t corners = 0;  ///< 3 or 4
};

/// Elements of a mesh, from 1: first to before end. Of a plan with an order of its own: their places in that.
struct ElementRange {
    std::int32_t first = 1, end = 1;
};

/// The pieces of a range of elements, in the order of the elements. Neighbours are made by different threads, and share
/// no line of the cache.
struct alignas(128) PlanChunk {
    ElementRange elements;
    RowRange covered;  ///< rows that the pieces have; none when there are no pieces
    std::vector<PlanPiece> pieces;
    std::vector<PlanRow> rows;  ///< of all pieces, in their order
    /// per cell of the pieces that have sets: the triangles it lies in (raster/element_pieces.h)
    std::vector<std::uint8_t> sets;
};

/// The same where it lies, in a chunk or among those that are kept.
struct PlanStretch {
    ElementRange elements;
    RowRange covered;
    std::span<const PlanPiece> pieces;
    std::span<const PlanRow> rows;
    std::span<const std::uint8_t> sets;
};
inline PlanStretch STRETCH_OF(const PlanChunk& chunk) {
    return {chunk.elements, chunk.covered, chunk.pieces, chunk.rows, chunk.sets};
}

struct GridPlan {
    PlanKind kind = PlanKind::Nodes;
    std::uint64_t memoryLimit = 0;  ///< bytes the chunks may take; what does not fit is worked out anew at every time
    std::uint64_t memoryUsed = 0;
    bool begun = false;               ///< from the first output time on, chunks and rest are all elements
    std::vector<std::int32_t> order;  ///< ELEMENT_ORDER's; empty: that of the mesh
    std::vector<PlanStretch> chunks;  ///< in the blocks
    std::vector<ElementRange> rest;   ///< what stands in no chunk
    /// What the chunks hold: few and large, since the system hands out small pages one by one.
    std::vector<std::unique_ptr<std::byte[]>> blocks;
    std::size_t blockUsed = 0, blockSize = 0;  ///< bytes of the last one
};
