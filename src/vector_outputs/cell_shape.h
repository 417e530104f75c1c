// The outline of a cell: the ring of its corners.
#pragma once

#include "gis/object.h"
#include "inputs/mesh.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// Corner coordinates are relative to the first corner, so that nothing is lost at coordinates of millions of metres.
struct CellShape {
    std::size_t corners = 0;    ///< 3 or 4
    double x0 = 0.0, y0 = 0.0;  ///< first corner, map units
    std::array<double, 4> x{}, y{};
    double twiceArea = 0.0;  ///< square map units, positive when the corners run clockwise
};

/// element: of shape 3, 4 or 9; of a 9-node quad the four corners count.
CellShape CELL_SHAPE(const Mesh& mesh, const MeshElement& element);

/// True when a ring (not closed, no vertex repeated) makes a valid polygon: its sides touch at their common ends only.
/// False for one that crosses or touches itself, is flat or has two vertices in one place. Vertices should be close to
/// the origin.
bool VALID_RING(std::span<const double> x, std::span<const double> y);

/// VALID_RING of the cell as it stands in a file that keeps coordinates to `step` map units (0: as they are).
bool VALID_CELL(const CellShape& shape, double step);

struct MapPoint {
    double x = 0.0, y = 0.0;  ///< map units
};
/// The centroid of the cell's area; the mean of the corners of a cell that is no valid ring.
MapPoint CELL_CENTROID(const CellShape& shape);

/// The cell as a region of one closed clockwise ring, its corners exactly where the mesh has them.
void CELL_REGION(const Mesh& mesh, const MeshElement& element, const CellShape& shape, GisObject& o);
