#include "geometry/intersections.h"

#include "geometry/sides.h"

namespace {

template <typename Real>
int meeting(Real x1, Real y1, Real x2, Real y2, Real x3, Real y3, Real x4, Real y4) {
    const Real d = (y4 - y3) * (x2 - x1) - (x4 - x3) * (y2 - y1);
    const Real a = (x4 - x3) * (y1 - y3) - (y4 - y3) * (x1 - x3);
    const Real b = (x2 - x1) * (y1 - y3) - (y2 - y1) * (x1 - x3);
    if (d == Real{0}) return a == Real{0} && b == Real{0} ? LINES_COLLINEAR : LINES_PARALLEL;
    const Real ua = a / d;
    const Real ub = b / d;
    const bool onA = ua > Real{0} && ua <= Real{1};
    const bool onB = ub > Real{0} && ub <= Real{1};
    if (onA && onB) return LINES_MEET_ON_BOTH;
    if (onA) return LINES_MEET_ON_A;
    return onB ? LINES_MEET_ON_B : LINES_MEET_OUTSIDE;
}

template <typename Real>
bool intersection(Real x1, Real y1, Real x2, Real y2, Real x3, Real y3, Real x4, Real y4, Real& x, Real& y) {
    if (x1 == x2) {
        if (x3 == x4) return false;
        const Real m2 = (y4 - y3) / (x4 - x3);
        x = x1;
        y = y3 + m2 * (x - x3);
        return true;
    }
    const Real m1 = (y2 - y1) / (x2 - x1);
    if (x3 == x4) {
        x = x3;
        y = y1 + m1 * (x - x1);
        return true;
    }
    const Real m2 = (y4 - y3) / (x4 - x3);
    if (m1 == m2) return false;
    x = (m2 * x3 - y3 + y1 - m1 * x1) / (m2 - m1);
    y = y3 + m2 * (x - x3);
    return true;
}

}  // namespace

bool INTERSECT_LINE(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4) {
    return SAME_SIDE(x1, y1, x2, y2, x3, y3, x4, y4) <= 0.0F && SAME_SIDE(x3, y3, x4, y4, x1, y1, x2, y2) <= 0.0F;
}
bool INTERSECT_LINE_8(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    return SAME_SIDE_8(x1, y1, x2, y2, x3, y3, x4, y4) <= 0.0F && SAME_SIDE_8(x3, y3, x4, y4, x1, y1, x2, y2) <= 0.0F;
}

int INTERSECT_LINE_V2(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4) {
    return meeting(x1, y1, x2, y2, x3, y3, x4, y4);
}
int INTERSECT_LINE_V2_8(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    return meeting(x1, y1, x2, y2, x3, y3, x4, y4);
}

bool INTERSECTION_POINT(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4, float& x,
                        float& y) {
    return intersection(x1, y1, x2, y2, x3, y3, x4, y4, x, y);
}
bool INTERSECTION_POINT_8(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4,
                          double& x, double& y) {
    return intersection(x1, y1, x2, y2, x3, y3, x4, y4, x, y);
}
