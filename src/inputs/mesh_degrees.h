// Whether a mesh lies in longitudes and latitudes.
#pragma once

#include "inputs/mesh.h"
#include "services/projection_text.h"

/// True for coordinates in degrees. kind: of the run's projection; where that is Unknown, a mesh within the longitudes
/// and latitudes is taken to be in degrees, unless its cells are too large for that, as those of a flume in metres.
bool IS_IN_DEGREES(const Mesh& mesh, CoordinateKind kind);
