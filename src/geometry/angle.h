// The angle between two lines.
#pragma once

/// Angle between the directions (x1, y1) to (x2, y2) and (x3, y3) to (x4, y4), 0 to 180 degrees. A line whose ends
/// differ by less than 1e-6 in x has no angle to any other: the result is 0 when either line is vertical, and callers
/// rely on it.
float ANGLE2D(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4);
