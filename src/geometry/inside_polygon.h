// Point in a polygon of one or more parts, by counting the crossings of a ray.
#pragma once

#include <cstdint>
#include <span>

/// True when (xp, yp) lies inside: the ray from (xmin - 10, yp) to the point crosses the boundary an odd number of
/// times. Map units. xs, ys: the vertices, vertex 1 in entry 0. Vertex 1 only leads: the edges tested are 2-3, 3-4, ...
/// to the last vertex. A ring of k corners is passed as its corners followed by the first two again, k + 2 vertices;
/// passed without them it misses an edge. xmin: no vertex lies west of it.
/// partEnds: for each part the vertex (from 1) that starts its last edge, k + 1 for such a ring. The two edges behind
/// it join the next part and are skipped. A list whose last part ends too early is a fault of the caller:
/// std::invalid_argument, whose text ends where the support contact belongs.
/// A point on the boundary may fall either way. A ray that meets vertex 2 first weighs it by the last vertex that any
/// earlier call met, since that height is kept from call to call: callers that need a closed test of their own bring
/// it.
bool INSIDE_POLYGON(float xp, float yp, std::span<const float> xs, std::span<const float> ys, float xmin,
                    std::span<const std::int32_t> partEnds);
bool INSIDE_POLYGON_8(double xp, double yp, std::span<const double> xs, std::span<const double> ys, double xmin,
                      std::span<const std::int32_t> partEnds);
