// How exactly text outputs write where something is.
#pragma once

#include "inputs/mesh.h"
#include "services/projection_text.h"

/// Decimals of the coordinates in a .txt or .csv file: as many as a thousandth of the shortest side of a cell needs, at
/// least 3 (8 in degrees), at most 12, below which the coordinates themselves have none. Removed cells and sides
/// without a length do not count. kind: of the run's projection; where that is Unknown the coordinates are degrees when
/// the mesh lies within the longitudes and latitudes.
int COORDINATE_DECIMALS(const Mesh& mesh, CoordinateKind kind);
