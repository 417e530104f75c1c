// Which kinds of nodes are written: the filter of -pts.
#pragma once

#include "inputs/mesh.h"

#include <string>
#include <string_view>

/// Filled by READ_POINT_TYPES.
struct PointTypes {
    bool all = true;  ///< every kind that a node can have, those of a QL mesh included
    bool corners = false, sides = false, centres = false, triangles = false;
    std::string unknown;  ///< the letters that stand for nothing, in their order
};

/// Reads the text behind -pts from left to right, letter case ignored: "UV" cell sides, "C" centres, "H" corners, "T"
/// 1D triangles, "ALL". Blanks and commas between them count for nothing. A text without any of them stands for all.
PointTypes READ_POINT_TYPES(std::string_view text);

/// True when a node of this kind is written. Never for the blank kind: no element uses such a node.
bool PASSES(const PointTypes& types, NodeKind kind);
