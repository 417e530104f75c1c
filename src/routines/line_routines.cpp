// Points and lines, for the C interface. Each routine calls its namesake of geometry.
#include "geometry/angle.h"
#include "geometry/distance.h"
#include "geometry/intersections.h"
#include "geometry/sides.h"
#include "geometry/vector_magnitude.h"
#include "routines/references.h"

#include "vorant_routines.h"

using Real4 = const float*;
using Real8 = const double*;

float DISTANCE(Real4 x1, Real4 y1, Real4 x2, Real4 y2) { return DISTANCE(at(x1), at(y1), at(x2), at(y2)); }
float DISTANCE_8(Real8 x1, Real8 y1, Real8 x2, Real8 y2) { return DISTANCE_8(at(x1), at(y1), at(x2), at(y2)); }

std::int32_t SAME_POINT(Real4 x1, Real4 y1, Real4 x2, Real4 y2, Real4 tolerance) {
    return truth(SAME_POINT(at(x1), at(y1), at(x2), at(y2), at(tolerance)));
}
std::int32_t SAME_POINT_8(Real8 x1, Real8 y1, Real8 x2, Real8 y2, Real8 tolerance) {
    return truth(SAME_POINT_8(at(x1), at(y1), at(x2), at(y2), at(tolerance)));
}

float SAME_SIDE(Real4 x1, Real4 y1, Real4 x2, Real4 y2, Real4 xa, Real4 ya, Real4 xb, Real4 yb) {
    return SAME_SIDE(at(x1), at(y1), at(x2), at(y2), at(xa), at(ya), at(xb), at(yb));
}
float SAME_SIDE_8(Real8 x1, Real8 y1, Real8 x2, Real8 y2, Real8 xa, Real8 ya, Real8 xb, Real8 yb) {
    return SAME_SIDE_8(at(x1), at(y1), at(x2), at(y2), at(xa), at(ya), at(xb), at(yb));
}

std::int32_t INTERSECT_POINT(Real4 x1, Real4 y1, Real4 x2, Real4 y2, Real4 xp, Real4 yp) {
    return truth(INTERSECT_POINT(at(x1), at(y1), at(x2), at(y2), at(xp), at(yp)));
}

std::int32_t INTERSECT_LINE(Real4 x1, Real4 y1, Real4 x2, Real4 y2, Real4 x3, Real4 y3, Real4 x4, Real4 y4) {
    return truth(INTERSECT_LINE(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4)));
}
std::int32_t INTERSECT_LINE_8(Real8 x1, Real8 y1, Real8 x2, Real8 y2, Real8 x3, Real8 y3, Real8 x4, Real8 y4) {
    return truth(INTERSECT_LINE_8(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4)));
}

std::int32_t INTERSECT_LINE_V2(Real4 x1, Real4 y1, Real4 x2, Real4 y2, Real4 x3, Real4 y3, Real4 x4, Real4 y4) {
    return INTERSECT_LINE_V2(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4));
}
std::int32_t INTERSECT_LINE_V2_8(Real8 x1, Real8 y1, Real8 x2, Real8 y2, Real8 x3, Real8 y3, Real8 x4, Real8 y4) {
    return INTERSECT_LINE_V2_8(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4));
}

std::int32_t INTERSECTION_POINT(Real4 x1, Real4 y1, Real4 x2, Real4 y2, Real4 x3, Real4 y3, Real4 x4, Real4 y4,
                                float* x, float* y) {
    float foundX = 0.0F;
    float foundY = 0.0F;
    if (!INTERSECTION_POINT(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4), foundX, foundY))
        return truth(false);
    put(x, foundX);
    put(y, foundY);
    return truth(true);
}
std::int32_t INTERSECTION_POINT_8(Real8 x1, Real8 y1, Real8 x2, Real8 y2, Real8 x3, Real8 y3, Real8 x4, Real8 y4,
                                  double* x, double* y) {
    double foundX = 0.0;
    double foundY = 0.0;
    if (!INTERSECTION_POINT_8(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4), foundX, foundY))
        return truth(false);
    put(x, foundX);
    put(y, foundY);
    return truth(true);
}

float ANGLE2D(Real8 x1, Real8 y1, Real8 x2, Real8 y2, Real8 x3, Real8 y3, Real8 x4, Real8 y4) {
    return ANGLE2D(at(x1), at(y1), at(x2), at(y2), at(x3), at(y3), at(x4), at(y4));
}
float VECTOR_MAGNITUDE(Real4 vx, Real4 vy) { return VECTOR_MAGNITUDE(at(vx), at(vy)); }
