// Linear interpolation inside a triangle, and inside an element of three or four corners.
#pragma once

#include <cstddef>
#include <span>

/// Value at (xp, yp), linear along the line from corner C through the point to side A-B.
/// xs, ys: corners A, B, C in map units, either winding. values: results there, in the result's own unit.
/// True: `value` is set. False: the lines A-B and C-P do not meet, and `value` is NO_VALUE (-99999). That includes P =
/// C under a vertical A-B. The caller has found the point inside: distances carry no sign, so outside the value means
/// nothing. A side or a line from C shorter than 1e-6 takes the mean of its ends.
bool INTERPOLATE_TRIANGLE(float xp, float yp, std::span<const float, 3> xs, std::span<const float, 3> ys,
                          std::span<const float, 3> values, float& value);
bool INTERPOLATE_TRIANGLE_8(double xp, double yp, std::span<const double, 3> xs, std::span<const double, 3> ys,
                            std::span<const float, 3> values, float& value);
/// INTERPOLATE_TRIANGLE for corners known to be apart: a length of zero is divided by, and gives a value that is no
/// number.
bool INTERPOLATE_TRIANGLE_NO_CHECKS(float xp, float yp, std::span<const float, 3> xs, std::span<const float, 3> ys,
                                    std::span<const float, 3> values, float& value);

/// Value at (xp, yp) in an element of `corners` 3 or 4, corner 1 in entry 0, entry 3 ignored for a triangle; xmin: its
/// smallest x. A triangle takes INTERPOLATE_TRIANGLE_8; a quad the mean over those triangles of three of its corners
/// that hold the point. True: `value` is set. False: outside by INSIDE_POLYGON_8, not interpolable, or another corner
/// count, and `value` is NO_VALUE.
bool INTERPOLATE_ELEMENT_8(double xp, double yp, std::span<const double, 4> xs, std::span<const double, 4> ys,
                           std::span<const float, 4> values, std::size_t corners, double xmin, float& value);
