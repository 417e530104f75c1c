// The signed area of a ring.
#pragma once

#include <span>

/// The shoelace sum of a ring's vertices, closed or not: twice its area, in square map units, positive for a clockwise
/// ring and negative for a counter-clockwise one (y north). Summed in double precision; 0 for a line, a point or
/// nothing.
double POLYGON_AREA_8(std::span<const double> xs, std::span<const double> ys);
