// Which triangles of a mesh stand for 1D water-level lines.
#pragma once

#include "inputs/mesh.h"

#include <cstdint>
#include <vector>

/// The rule: per element, numbered from 1, 1 for a triangle of a 1D water-level line, 0 for every 2D element; empty
/// when the mesh has none. Such triangles are laid along 1D channels in or beside a domain of quads and are no part of
/// it. So in a mesh that is not QL and has quads every triangle is 1D, unless a triangle shares a side (two nodes) with
/// a quad: then triangles are 2D elements like the quads.
std::vector<std::uint8_t> ONE_D_TRIANGLES(const Mesh& mesh);

/// Settles mesh.oneD by that rule, or as empty with allTwoD (-no1d), and says how many triangles are 1D. Called once
/// a run, after the mesh has been read, where the output tells them from cells or nodes; grids do not.
void SETTLE_ONE_D_TRIANGLES(Mesh& mesh, bool allTwoD);

/// Per node, numbered from 1: 1 for a node of a triangle of mesh.oneD that no quad uses; empty when there are no such
/// triangles.
std::vector<std::uint8_t> ONE_D_NODES(const Mesh& mesh);
