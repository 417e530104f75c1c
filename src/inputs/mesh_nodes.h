// What the elements say about their nodes, once the whole mesh has been read.
#pragma once

#include "inputs/mesh.h"

/// Gives every node its kind; of several elements that share a node the last in numbering order decides.
void SET_NODE_KINDS(Mesh& mesh);
/// Marks the nodes used by removed elements only. A node that no element uses is not marked.
void EXCLUDE_REMOVED_NODES(Mesh& mesh);
