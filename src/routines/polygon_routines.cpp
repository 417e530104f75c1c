// Polygons, triangles and elements, for the C interface.
#include "geometry/inside_polygon.h"
#include "geometry/interpolate.h"
#include "geometry/no_value.h"
#include "geometry/shift.h"
#include "geometry/sub_grid_area.h"
#include "routines/references.h"
#include "text_utils/support_contact.h"

#include "vorant_routines.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>

using Real4 = const float*;
using Real8 = const double*;
using Int = const std::int32_t*;

namespace {

bool inside(float xp, float yp, std::span<const float> xs, std::span<const float> ys, float xmin,
            std::span<const std::int32_t> partEnds) {
    return INSIDE_POLYGON(xp, yp, xs, ys, xmin, partEnds);
}
bool inside(double xp, double yp, std::span<const double> xs, std::span<const double> ys, double xmin,
            std::span<const std::int32_t> partEnds) {
    return INSIDE_POLYGON_8(xp, yp, xs, ys, xmin, partEnds);
}

template <typename Real>
std::int32_t insidePolygon(const Real* xp, const Real* yp, const Real* xs, const Real* ys, Int n, const Real* xmin,
                           Int partEnds, Int partCount) {
    try {
        if (xs == nullptr || ys == nullptr) return truth(false);
        return truth(inside(at(xp), at(yp), array(xs, n), array(ys, n), at(xmin), array(partEnds, partCount)));
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s%s\n", fault.what(), SUPPORT_CONTACT.data());
        return truth(false);
    }
}

template <typename Real>
using Corners = std::span<const Real, 3>;

/// Calls one of the triangle routines; without corners there is no value.
template <typename Real>
using Triangle = bool (*)(Real xp, Real yp, Corners<Real> xs, Corners<Real> ys, Corners<float> values, float& value);
template <typename Real>
std::int32_t inTriangle(Triangle<Real> interpolate, const Real* xp, const Real* yp, const Real* xs, const Real* ys,
                        Real4 values, float* value) {
    float found = NO_VALUE;
    const bool corners = xs != nullptr && ys != nullptr && values != nullptr;
    const bool good = corners && interpolate(at(xp), at(yp), Corners<Real>(xs, 3), Corners<Real>(ys, 3),
                                             Corners<float>(values, 3), found);
    put(value, found);
    return truth(good);
}

/// The corners that are there, in four slots: a triangle's caller may hold three only.
template <typename Value>
std::array<Value, 4> fourSlots(std::span<const Value> corners) {
    std::array<Value, 4> slots{};
    std::copy(corners.begin(), corners.end(), slots.begin());
    return slots;
}

}  // namespace

std::int32_t INSIDE_POLYGON(Real4 xp, Real4 yp, Real4 xs, Real4 ys, Int n, Real4 xmin, Int partEnds, Int partCount) {
    return insidePolygon(xp, yp, xs, ys, n, xmin, partEnds, partCount);
}
std::int32_t INSIDE_POLYGON_8(Real8 xp, Real8 yp, Real8 xs, Real8 ys, Int n, Real8 xmin, Int partEnds, Int partCount) {
    return insidePolygon(xp, yp, xs, ys, n, xmin, partEnds, partCount);
}

std::int32_t INTERPOLATE_TRIANGLE(Real4 xp, Real4 yp, Real4 xs, Real4 ys, Real4 values, float* value) {
    return inTriangle<float>(INTERPOLATE_TRIANGLE, xp, yp, xs, ys, values, value);
}
std::int32_t INTERPOLATE_TRIANGLE_8(Real8 xp, Real8 yp, Real8 xs, Real8 ys, Real4 values, float* value) {
    return inTriangle<double>(INTERPOLATE_TRIANGLE_8, xp, yp, xs, ys, values, value);
}
std::int32_t INTERPOLATE_TRIANGLE_NO_CHECKS(Real4 xp, Real4 yp, Real4 xs, Real4 ys, Real4 values, float* value) {
    return inTriangle<float>(INTERPOLATE_TRIANGLE_NO_CHECKS, xp, yp, xs, ys, values, value);
}

std::int32_t INTERPOLATE_ELEMENT_8(Real8 xp, Real8 yp, Real8 xs, Real8 ys, Real4 values, Int corners, Real8 xmin,
                                   float* value) {
    float found = NO_VALUE;
    const std::int32_t count = at(corners);
    const bool element = (count == 3 || count == 4) && xs != nullptr && ys != nullptr && values != nullptr;
    const bool good = element && INTERPOLATE_ELEMENT_8(at(xp), at(yp), fourSlots(array(xs, corners)),
                                                       fourSlots(array(ys, corners)), fourSlots(array(values, corners)),
                                                       static_cast<std::size_t>(count), at(xmin), found);
    put(value, found);
    return truth(good);
}

void GEO_SHIFT(Real8 xs, Real8 ys, Int n, Real8 x0, Real8 y0, Real8 angle, float* us, float* vs) {
    if (xs == nullptr || ys == nullptr || us == nullptr || vs == nullptr) return;
    GEO_SHIFT(array(xs, n), array(ys, n), at(x0), at(y0), at(angle), array(us, n), array(vs, n));
}

void SET_SUB_GRID_AREA(Real4 xs, Real4 ys, Int n, Real4 cellSize, Int columns, Int rows, std::int32_t* firstColumn,
                       std::int32_t* firstRow, std::int32_t* lastColumn, std::int32_t* lastRow, float* xmin,
                       float* ymin, float* xmax, float* ymax) {
    const bool vertices = xs != nullptr && ys != nullptr;
    const SubGridArea area =
        vertices ? SET_SUB_GRID_AREA(array(xs, n), array(ys, n), at(cellSize), at(columns), at(rows)) : SubGridArea{};
    put(firstColumn, area.firstColumn);
    put(firstRow, area.firstRow);
    put(lastColumn, area.lastColumn);
    put(lastRow, area.lastRow);
    put(xmin, area.xmin);
    put(ymin, area.ymin);
    put(xmax, area.xmax);
    put(ymax, area.ymax);
}
