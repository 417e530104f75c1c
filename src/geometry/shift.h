// Moving coordinates to a local origin and into a rotated frame.
#pragma once

#include <span>

/// For each point u = (x - x0) c + (y - y0) s and v = (y - y0) c - (x - x0) s, with c and s the cosine and sine of the
/// angle. Map units. angle: degrees, counter-clockwise from east to the local u axis, as a mesh's orientation is given.
/// us and vs hold as many as xs and ys.
void GEO_SHIFT(std::span<const double> xs, std::span<const double> ys, double x0, double y0, double angle,
               std::span<float> us, std::span<float> vs);
