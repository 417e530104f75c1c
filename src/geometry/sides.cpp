#include "geometry/sides.h"

namespace {

template <typename Real>
float sameSide(Real x1, Real y1, Real x2, Real y2, Real xa, Real ya, Real xb, Real yb) {
    const Real a = (x2 - x1) * (ya - y1) - (y2 - y1) * (xa - x1);
    const Real b = (x2 - x1) * (yb - y1) - (y2 - y1) * (xb - x1);
    return static_cast<float>(a * b);
}

}  // namespace

float SAME_SIDE(float x1, float y1, float x2, float y2, float xa, float ya, float xb, float yb) {
    return sameSide(x1, y1, x2, y2, xa, ya, xb, yb);
}
float SAME_SIDE_8(double x1, double y1, double x2, double y2, double xa, double ya, double xb, double yb) {
    return sameSide(x1, y1, x2, y2, xa, ya, xb, yb);
}

bool INTERSECT_POINT(float x1, float y1, float x2, float y2, float xp, float yp) {
    return SAME_SIDE(x1, y1, x2, y2, xp, yp, xp, yp) == 0.0F;
}
