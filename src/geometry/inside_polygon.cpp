#include "geometry/inside_polygon.h"

#include "geometry/intersections.h"

#include <cstddef>
#include <stdexcept>

namespace {

/// Height of the vertex before the last one met on a ray. It outlives the call on purpose: results for a ray through
/// vertex 2 depend on it.
template <typename Real>
thread_local Real previousY = Real{0};

bool meet(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4) {
    return INTERSECT_LINE(x1, y1, x2, y2, x3, y3, x4, y4);
}
bool meet(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    return INTERSECT_LINE_8(x1, y1, x2, y2, x3, y3, x4, y4);
}

/// True when the edge from (x1, y1) to (x2, y2) counts as a crossing of the ray from (rayStart, yp) to (xp, yp).
template <typename Real>
bool crosses(Real xp, Real yp, Real rayStart, Real x1, Real y1, Real x2, Real y2) {
    if (y1 == y2) return false;
    if (y2 == yp) {  // the edge that leaves this vertex decides
        previousY<Real> = y1;
        return false;
    }
    if (y1 == yp && x1 <= xp) return (previousY<Real> - yp) * (y2 - yp) < Real{0};  // passing through, not touching
    return meet(rayStart, yp, xp, yp, x1, y1, x2, y2);
}

template <typename Real>
bool insidePolygon(Real xp, Real yp, std::span<const Real> xs, std::span<const Real> ys, Real xmin,
                   std::span<const std::int32_t> partEnds) {
    const Real rayStart = xmin - Real{10};
    const std::size_t n = xs.size();
    std::size_t part = 0;
    int crossings = 0;
    for (std::size_t i = 2; i < n; ++i) {  // vertices count from 1
        if (crosses(xp, yp, rayStart, xs[i - 1], ys[i - 1], xs[i], ys[i])) ++crossings;
        if (part >= partEnds.size() || static_cast<std::int64_t>(i) != partEnds[part]) continue;
        i += 2;
        ++part;
        if (part == partEnds.size() && i + 1 < n)
            throw std::invalid_argument(
                "Invalid number of polygons in region sent to inside_polygon routine [1] - contact ");
    }
    return crossings % 2 == 1;
}

}  // namespace

bool INSIDE_POLYGON(float xp, float yp, std::span<const float> xs, std::span<const float> ys, float xmin,
                    std::span<const std::int32_t> partEnds) {
    return insidePolygon(xp, yp, xs, ys, xmin, partEnds);
}
bool INSIDE_POLYGON_8(double xp, double yp, std::span<const double> xs, std::span<const double> ys, double xmin,
                      std::span<const std::int32_t> partEnds) {
    return insidePolygon(xp, yp, xs, ys, xmin, partEnds);
}
