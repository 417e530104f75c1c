// Whether two meshes are one: results on the one have their values where those on the other have theirs.
#pragma once

#include "inputs/mesh.h"

#include <string>

constexpr double SAME_POSITION_METRES = 0.001, SAME_POSITION_DEGREES = 0.00000001;

/// Blank for one mesh: as many nodes and cells, positions within the tolerance (map units) in x and in y, the same
/// cells of the same nodes, the same ones removed. Beds may differ. Else the first thing that differs, for a message:
/// "node 7 stands elsewhere".
std::string MESH_CONTRAST(const Mesh& a, const Mesh& b, double tolerance);

/// The same of two open .2dm files, of which the first has been read into `mesh`, at the speed of looking through them:
/// true where each line of one is that of the other, or both are cards of one node that stands in the same place. False
/// says nothing: they may be one mesh in other lines. Both are looked at from where they stand.
bool ARE_ONE_MESH_BY_LINES(int file, int other, const Mesh& mesh, double tolerance);
