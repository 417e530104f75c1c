// Reads a .2dm mesh (SMS card format, text) into a record of the caller's: SCAN_2DM counts, SIZE_MESH_TABLES takes the
// memory, READ_2DM fills.
#pragma once

#include "inputs/mesh.h"

#include <span>
#include <string>

/// Reads the whole file once: the flavour and the geo-reference from the first line, the counts from the cards.
/// Whatever an earlier mesh left is forgotten. `file` stands at its start; where it is left is not said. Stops the run
/// on a first line without "MESH2D" and on a geo-reference that does not parse.
void SCAN_2DM(int file, Mesh& mesh);

/// Sizes the node and element tables to the counts. Stops the run when the memory is not there.
void SIZE_MESH_TABLES(Mesh& mesh);

/// Rewinds the file and fills nodes, elements, extents, mesh parts, node kinds, removed flags and nodeExcluded; final
/// afterwards. removedParts: names of mesh parts to leave out (-rmp). Stops the run, naming the line, on a card that
/// does not parse or runs out of values, on a node or element id outside 1 to its count or given twice, and on a
/// coordinate that is not finite; so no entry is left unread, but for an E9Q card refused in a QL or pre-2005 mesh,
/// which leaves one element of shape 0.
void READ_2DM(int file, std::span<const std::string> removedParts, Mesh& mesh);
