// Quads whose outline a user did not mean, told once a run.
#pragma once

#include "inputs/mesh.h"

/// One "Check - " line that counts the concave and the crossed quads of the mesh, removed ones aside, and names the
/// first of each; nothing when there is none. Of a 9-node quad the corners count.
void REPORT_ODD_QUADS(const Mesh& mesh);
