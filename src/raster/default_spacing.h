// A cell size for a raster that was asked for without one.
#pragma once

#include "inputs/mesh.h"

#include <optional>

/// The median side of the mesh's quads (corner to corner), halved in a high-resolution mesh, rounded to 0.001 map
/// units, in degrees to three significant digits. Nothing for a QL mesh, for a mesh without quads, or when rounding
/// leaves zero: then the user is asked.
std::optional<double> DEFAULT_SPACING(const Mesh& mesh, bool degrees);
