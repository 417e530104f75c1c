// The outline of a cell: the ring of its corners.
#pragma once

#include "gis/object.h"
#include "inputs/mesh.h"
#include "raster/element_pieces.h"

#include <span>

/// The places and areas of the corners, not the triangles of the interpolation. element: of shape 3, 4 or 9; of a
/// 9-node quad the four corners count.
PieceShape CELL_SHAPE(const Mesh& mesh, const MeshElement& element);

/// Square map units, positive when the corners run clockwise.
double TWICE_CLOCKWISE_AREA(const PieceShape& shape);

/// True when a ring (not closed, no vertex repeated) makes a valid polygon: its sides touch at their common ends only.
/// False for one that crosses or touches itself, is flat or has two vertices in one place. Vertices should be close to
/// the origin.
bool VALID_RING(std::span<const double> x, std::span<const double> y);

/// VALID_RING of the cell as it stands in a file that keeps coordinates to `step` map units (0: as they are).
bool VALID_CELL(const PieceShape& shape, double step);

struct MapPoint {
    double x = 0.0, y = 0.0;  ///< map units
};
/// The centroid of the cell's area; the mean of the corners of a cell that is no valid ring.
MapPoint CELL_CENTROID(const PieceShape& shape);

/// The cell as a region of one closed clockwise ring, its corners exactly where the mesh has them.
void CELL_REGION(const Mesh& mesh, const MeshElement& element, const PieceShape& shape, GisObject& o);
