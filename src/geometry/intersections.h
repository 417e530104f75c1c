// Where lines and segments meet. Coordinates in map units; the _8 forms take 64-bit ones.
#pragma once

/// True when segments A (x1, y1)-(x2, y2) and B (x3, y3)-(x4, y4) meet: the ends of each lie on opposite sides of the
/// other or on it. Touching counts. Two segments of one line count as well, even when they do not overlap.
bool INTERSECT_LINE(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4);
bool INTERSECT_LINE_8(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4);

/// What INTERSECT_LINE_V2 finds. The start of a segment is not on it, its end is, so that a chain of segments owns each
/// corner once.
enum LineMeeting : int {
    LINES_COLLINEAR = -1,  ///< all bits set
    LINES_PARALLEL = 0,
    LINES_MEET_ON_A = 1,  ///< the crossing lies within segment A only
    LINES_MEET_ON_B = 2,  ///< within segment B only
    LINES_MEET_ON_BOTH = 3,
    LINES_MEET_OUTSIDE = 4,  ///< within neither
};

/// Where the line of segment A crosses the line of segment B, from the parametric form of both lines (a LineMeeting).
int INTERSECT_LINE_V2(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4);
int INTERSECT_LINE_V2_8(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4);

/// Intersection of the infinite lines through (x1, y1), (x2, y2) and through (x3, y3), (x4, y4), by their slopes.
/// False, and x and y as they were, when both are vertical or their slopes are equal. Nothing checks that the point
/// lies within either segment.
bool INTERSECTION_POINT(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4, float& x,
                        float& y);
bool INTERSECTION_POINT_8(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4,
                          double& x, double& y);
