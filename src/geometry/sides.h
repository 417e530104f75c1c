// On which side of a line points lie. Coordinates in map units; the _8 form takes 64-bit ones.
#pragma once

/// The product of the cross products of points (xa, ya) and (xb, yb) with the line through (x1, y1) and (x2, y2),
/// narrowed to 32 bits: positive when both lie on one side, negative on opposite sides, 0 when at least one lies on the
/// line.
float SAME_SIDE(float x1, float y1, float x2, float y2, float xa, float ya, float xb, float yb);
float SAME_SIDE_8(double x1, double y1, double x2, double y2, double xa, double ya, double xb, double yb);

/// True when (xp, yp) lies exactly on the infinite line through (x1, y1) and (x2, y2).
bool INTERSECT_POINT(float x1, float y1, float x2, float y2, float xp, float yp);
