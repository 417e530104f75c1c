// The mesh record for the routines that fill it.
#pragma once

#include "inputs/mesh.h"

/// For the mesh reader's own files only.
Mesh& MESH_TO_FILL();
