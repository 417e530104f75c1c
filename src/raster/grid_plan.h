// Which cells of a grid each element covers. Made once and reused for every output time while memory allows.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// What the values belong to, which decides the parts that elements are taken apart into.
enum class PlanKind : std::uint8_t {
    Nodes,    ///< values at all nodes: a 9-node quad is four quads around its centre node, or its corners where nodes are missing
    Corners,  ///< values at corner nodes only (bed elevations): a 9-node quad is the quad of its corners
    Cells     ///< one value per element
};

/// A run of cells of one row that lie in the same triangles of a piece.
struct PlanSpan {
    std::int32_t column = 0;   ///< first column, from 1
    std::uint32_t packed = 0;  ///< from the lowest bit: 27 bits number of cells, 4 bits triangles, 1 bit set on the first span of a row
};

/// A 3- or 4-cornered piece of an element and its spans, row by row. A row that holds no cell point still has one span, of no cells.
struct PlanPiece {
    std::int32_t element = 0;
    std::int32_t firstRow = 0;    ///< from 1
    std::uint32_t spanCount = 0;
    std::uint32_t piece = 0;      ///< 0-3: which quad of a 9-node quad; else 0
};

/// The pieces of a range of elements, in the order of the elements.
struct PlanChunk {
    std::int32_t firstElement = 1;
    std::int32_t endElement = 1;  ///< one behind the last
    std::vector<PlanPiece> pieces;
    std::vector<PlanSpan> spans;
};

struct GridPlan {
    PlanKind kind = PlanKind::Nodes;
    std::uint64_t memoryLimit = 0;  ///< bytes the chunks may take; what does not fit is worked out anew at every time
    std::uint64_t memoryUsed = 0;
    std::vector<PlanChunk> chunks;  ///< from element 1 on, without a gap
};
