// Distances between points and when two points are the same. Coordinates in map units; the _8 forms take 64-bit ones.
#pragma once

/// Distance from (x1, y1) to (x2, y2), in single precision. Exactly 0 when both axes differ by less than 1e-6. The
/// coordinates are subtracted at their own width and narrowed after, so that large coordinates lose nothing.
float DISTANCE(float x1, float y1, float x2, float y2);
float DISTANCE_8(double x1, double y1, double x2, double y2);

/// True when both axes differ by strictly less than `tolerance`: a square round the point, not a circle. Not-a-number
/// anywhere is false.
bool SAME_POINT(float x1, float y1, float x2, float y2, float tolerance);
bool SAME_POINT_8(double x1, double y1, double x2, double y2, double tolerance);
