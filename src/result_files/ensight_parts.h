// A mesh as the parts of an EnSight Gold model: the 2D elements, and the triangles of 1D water level lines.
#pragma once

#include "inputs/mesh.h"

#include <cstdint>
#include <string>
#include <vector>

/// The elements of one shape in one part.
struct EnsightBlock {
    std::string type;               ///< "tria3" or "quad4"
    std::vector<std::int32_t> ids;  ///< of the elements in the mesh; a 9-node quad stands four times, once a quarter
    std::vector<std::int32_t> corners;  ///< three or four each, counter-clockwise: places in the part's nodes, from 1
};

struct EnsightPart {
    std::string name;
    std::vector<std::int32_t> nodes;   ///< their numbers in the mesh
    std::vector<EnsightBlock> blocks;  ///< without empty ones
};

/// The parts, the 2D one first, without empty ones. Removed elements are in none; a node that no element uses is in the
/// 2D part.
std::vector<EnsightPart> ENSIGHT_PARTS(const Mesh& mesh);
