#include "geometry/interpolate.h"

#include "geometry/distance.h"
#include "geometry/inside_polygon.h"
#include "geometry/intersections.h"
#include "geometry/no_value.h"

#include <array>
#include <cstdint>

namespace {

constexpr float NO_LENGTH = 1e-6F;

bool meet(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4, float& x, float& y) {
    return INTERSECTION_POINT(x1, y1, x2, y2, x3, y3, x4, y4, x, y);
}
bool meet(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4, double& x,
          double& y) {
    return INTERSECTION_POINT_8(x1, y1, x2, y2, x3, y3, x4, y4, x, y);
}
float length(float x1, float y1, float x2, float y2) { return DISTANCE(x1, y1, x2, y2); }
float length(double x1, double y1, double x2, double y2) { return DISTANCE_8(x1, y1, x2, y2); }

/// The value `part` of the way along a line of length `whole`; halfway along a line without length.
template <bool Guarded>
float along(float from, float to, float part, float whole) {
    if (Guarded && whole < NO_LENGTH) return from + (to - from) * 0.5F;
    return from + (to - from) * part / whole;
}

template <bool Guarded, typename Real>
bool interpolate(Real xp, Real yp, std::span<const Real, 3> xs, std::span<const Real, 3> ys,
                 std::span<const float, 3> values, float& value) {
    Real xq{};
    Real yq{};
    value = NO_VALUE;
    if (!meet(xs[0], ys[0], xs[1], ys[1], xs[2], ys[2], xp, yp, xq, yq)) return false;
    const float atQ =
        along<Guarded>(values[0], values[1], length(xs[0], ys[0], xq, yq), length(xs[0], ys[0], xs[1], ys[1]));
    value = along<Guarded>(values[2], atQ, length(xs[2], ys[2], xp, yp), length(xs[2], ys[2], xq, yq));
    return true;
}

/// The three corners, and inside them the value at the point.
bool insideTriangle(double xp, double yp, std::span<const double, 3> xs, std::span<const double, 3> ys,
                    std::span<const float, 3> values, double xmin, float& value) {
    constexpr std::array<std::int32_t, 1> END = {4};
    const std::array<double, 5> ringX = {xs[0], xs[1], xs[2], xs[0], xs[1]};
    const std::array<double, 5> ringY = {ys[0], ys[1], ys[2], ys[0], ys[1]};
    return INSIDE_POLYGON_8(xp, yp, ringX, ringY, xmin, END) && INTERPOLATE_TRIANGLE_8(xp, yp, xs, ys, values, value);
}

}  // namespace

bool INTERPOLATE_TRIANGLE(float xp, float yp, std::span<const float, 3> xs, std::span<const float, 3> ys,
                          std::span<const float, 3> values, float& value) {
    return interpolate<true>(xp, yp, xs, ys, values, value);
}
bool INTERPOLATE_TRIANGLE_8(double xp, double yp, std::span<const double, 3> xs, std::span<const double, 3> ys,
                            std::span<const float, 3> values, float& value) {
    return interpolate<true>(xp, yp, xs, ys, values, value);
}
bool INTERPOLATE_TRIANGLE_NO_CHECKS(float xp, float yp, std::span<const float, 3> xs, std::span<const float, 3> ys,
                                    std::span<const float, 3> values, float& value) {
    return interpolate<false>(xp, yp, xs, ys, values, value);
}

bool INTERPOLATE_ELEMENT_8(double xp, double yp, std::span<const double, 4> xs, std::span<const double, 4> ys,
                           std::span<const float, 4> values, std::size_t corners, double xmin, float& value) {
    value = NO_VALUE;
    if (corners == 3) return insideTriangle(xp, yp, xs.first<3>(), ys.first<3>(), values.first<3>(), xmin, value);
    if (corners != 4) return false;
    float sum = 0.0F;
    int count = 0;
    for (std::size_t left = 0; left < 4; ++left) {  // the corner left out
        std::array<double, 3> x{};
        std::array<double, 3> y{};
        std::array<float, 3> corner{};
        for (std::size_t from = 0, to = 0; from < 4; ++from) {
            if (from == left) continue;
            x[to] = xs[from];
            y[to] = ys[from];
            corner[to++] = values[from];
        }
        float part = NO_VALUE;
        if (!insideTriangle(xp, yp, x, y, corner, xmin, part)) continue;
        sum += part;
        ++count;
    }
    if (count == 0) return false;
    value = sum / static_cast<float>(count);
    return true;
}
