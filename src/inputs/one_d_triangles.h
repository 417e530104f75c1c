// Which triangles of a mesh stand for 1D water-level lines.
#pragma once

#include "inputs/mesh.h"

#include <cstdint>
#include <vector>

/// Per element, numbered from 1: 1 for a triangle of a 1D water-level line, 0 for every 2D element. Empty when the mesh
/// has none. Such triangles are laid along 1D channels beside a grid of quads, and the model writes them behind all 2D
/// elements. So in a mesh that is not QL and has quads, a group of triangles connected by shared nodes is 1D when each
/// of them has a higher id than the last quad and none touches a quad's node. Every other triangle is a 2D element like
/// the quads.
std::vector<std::uint8_t> ONE_D_TRIANGLES(const Mesh& mesh);

/// Per node, numbered from 1: 1 for a node of such a triangle. oneD: of ONE_D_TRIANGLES; empty gives an empty table.
std::vector<std::uint8_t> ONE_D_NODES(const Mesh& mesh, const std::vector<std::uint8_t>& oneD);
