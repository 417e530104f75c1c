// Vector results as one scalar per node (or cell), for rasters.
#pragma once

#include "inputs/results.h"
#include "raster/grid.h"
#include "services/options.h"

#include <cstdint>
#include <vector>

enum class VectorScalar : std::uint8_t { Magnitude, XComponent, YComponent, Direction };

/// What a raster shows of vector results.
struct VectorChoice {
    VectorScalar scalar = VectorScalar::Magnitude;
    /// degrees the axes of the components are turned counter-clockwise; magnitude and direction stay
    float slantAngle = 0.0F;
    bool compass = false;  ///< directions as bearings, degrees clockwise from north in [0, 360)
};

/// The choice of the command line: -vx, else -vy, else -va or -vdir, else the magnitude.
VectorChoice VECTOR_CHOICE(const RunOptions& options);

/// One scalar per value of vector results, numbered as they are; NO_VALUE where a component is missing. Directions are
/// degrees counter-clockwise from east of where the flow goes, in (-180, 180]; 0 where nothing flows. Says which scalar
/// is used. A direction of high-resolution results stops the run.
void NODE_SCALARS(const Results& results, const VectorChoice& choice, bool highResolution, std::vector<float>& scalars);

/// Brings interpolated directions, which may have passed 180 inside an element, back into (-180, 180]. Cells without a
/// value stay.
void FILTER_DIRECTIONS(Grid& grid);
/// Turns directions in (-180, 180] into bearings in [0, 360). Cells without a value stay.
void DIRECTIONS_TO_BEARINGS(Grid& grid);
