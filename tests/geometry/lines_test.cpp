#include "geometry/angle.h"
#include "geometry/distance.h"
#include "geometry/intersections.h"
#include "geometry/sides.h"
#include "geometry/vector_magnitude.h"

#include <doctest/doctest.h>

#include <limits>

TEST_CASE(
    "DISTANCE takes 1e-6 as the same place, SAME_POINT is a square without its edge, VECTOR_MAGNITUDE rests up to "
    "1e-6") {
    CHECK(DISTANCE_8(0, 0, 5e-7, 0) == 0.0F);
    CHECK(DISTANCE(0, 0, 0, -5e-7F) == 0.0F);
    CHECK(DISTANCE_8(0, 0, 2e-6, 0) == 2e-6F);
    CHECK(DISTANCE_8(5, 5, 2, 1) == 5.0F);  // abs() forgotten: the guard gives 0
    // an axis below it still counts
    CHECK(DISTANCE(0, 0, -5e-7F, 2e-6F) == doctest::Approx(2.0615528e-6).epsilon(1e-6));
    CHECK(DISTANCE_8(512000, 6250000, 512000, 6250000.25) == 0.25F);  // narrowed too early: 0
    CHECK_FALSE(SAME_POINT_8(1, 1, 1.5, 1, 0.5));
    CHECK(SAME_POINT(1, 1, 1.4375F, 0.5625F, 0.5F));  // 0.62 away along the diagonal: no circle
    CHECK_FALSE(SAME_POINT_8(std::numeric_limits<double>::quiet_NaN(), 1, 1, 1, 0.5));
    CHECK(VECTOR_MAGNITUDE(-3, 4) == 5.0F);
    CHECK(VECTOR_MAGNITUDE(1e-6F, -1e-6F) == 0.0F);
    CHECK(VECTOR_MAGNITUDE(0, -2e-6F) == 2e-6F);
}

TEST_CASE("SAME_SIDE multiplies both cross products with the line") {
    CHECK(SAME_SIDE_8(0, 0, 2, 0, 5, 3, -1, 4) == 48.0F);
    CHECK(SAME_SIDE(0, 0, 2, 0, 5, 3, -1, -4) == -48.0F);
    // beyond 32 bits the sign survives
    CHECK(SAME_SIDE_8(0, 0, 1e30, 0, 0, 1e30, 0, 1e30) == std::numeric_limits<float>::infinity());
    CHECK(INTERSECT_POINT(0, 0, 2, 2, 7, 7));  // beyond the ends of the segment
    CHECK_FALSE(INTERSECT_POINT(0, 0, 2, 2, 7, 7.5F));
}

TEST_CASE("Meeting segments: touching counts for INTERSECT_LINE, a start does not for INTERSECT_LINE_V2") {
    struct {
        float x1, y1, x2, y2, x3, y3, x4, y4;
        bool meet;
        int code;
    } const rows[] = {
        {0, 0, 4, 0, 2, -1, 2, 1, true, 3},  {0, 0, 4, 0, 4, -1, 4, 1, true, 3},  // at the end of A
        {0, 0, 4, 0, 0, -1, 0, 1, true, 2},                                       // at the start of A: on B only
        {0, 0, 4, 0, 2, 0, 2, 1, true, 1},                                        // at the start of B: on A only
        {0, 0, 4, 0, 0, 0, 0, 1, true, 4},                                        // both starts
        {0, 0, 4, 0, 2, 1, 2, 3, false, 1},                                       // B falls short of A
        {0, 0, 4, 0, 6, -1, 6, 1, false, 2},  // A falls short of B: ua and ub swapped gives 1
        {0, 0, 1, 1, 5, 5, 6, 6, true, -1},   // one line, far apart
        {0, 0, 1, 1, 0, 1, 1, 2, false, 0},   // parallel
    };
    for (const auto& r : rows) {
        CAPTURE(r.code);
        CHECK(INTERSECT_LINE(r.x1, r.y1, r.x2, r.y2, r.x3, r.y3, r.x4, r.y4) == r.meet);
        CHECK(INTERSECT_LINE_8(r.x1, r.y1, r.x2, r.y2, r.x3, r.y3, r.x4, r.y4) == r.meet);
        CHECK(INTERSECT_LINE_V2(r.x1, r.y1, r.x2, r.y2, r.x3, r.y3, r.x4, r.y4) == r.code);
        CHECK(INTERSECT_LINE_V2_8(r.x1, r.y1, r.x2, r.y2, r.x3, r.y3, r.x4, r.y4) == r.code);
    }
}

TEST_CASE("INTERSECTION_POINT by slopes, either line vertical") {
    struct {
        float x1, y1, x2, y2, x3, y3, x4, y4;
        bool found;
        float x, y;
    } const rows[] = {
        {0, 0, 1, 1, 0, 4, 1, 3, true, 2, 2},     // beyond both segments
        {3, 0, 3, 1, 0, 1, 1, 3, true, 3, 7},     // line 1 vertical
        {0, 1, 1, 3, 3, 0, 3, 1, true, 3, 7},     // line 2 vertical
        {3, 0, 3, 1, 5, 0, 5, 1, false, -9, -9},  // both
        {0, 0, 2, 1, 0, 1, 4, 3, false, -9, -9},  // same slope
    };
    for (const auto& r : rows) {
        float x = -9, y = -9;
        double x8 = -9, y8 = -9;
        CHECK(INTERSECTION_POINT(r.x1, r.y1, r.x2, r.y2, r.x3, r.y3, r.x4, r.y4, x, y) == r.found);
        CHECK(INTERSECTION_POINT_8(r.x1, r.y1, r.x2, r.y2, r.x3, r.y3, r.x4, r.y4, x8, y8) == r.found);
        CHECK((x == r.x && y == r.y && x8 == double(r.x) && y8 == double(r.y)));
    }
}

TEST_CASE("ANGLE2D is 0 to 180 degrees, and 0 against a vertical line") {
    struct {
        double dx1, dy1, dx2, dy2, expected;
    } const rows[] = {
        // vertical first, vertical second
        {1, 0, 1, 1, 45},
        {1, 1, -1, -1, 180},
        {0, 1, 1, 0, 0},
        {1, 0, 0, 1, 0},
        // 170 and -170: not 340
        {-0.98480775301220802, 0.17364817766693033, -0.98480775301220802, -0.17364817766693033, 20},
        // the guard is the single-precision 1e-6
        {9e-7, 1, 1, 0, 0},
        {9.99999998e-7, 1, 1, 0, 89.9999427},
    };
    for (const auto& r : rows)
        CHECK(ANGLE2D(0, 0, r.dx1, r.dy1, 5, 6, 5 + r.dx2, 6 + r.dy2) == doctest::Approx(r.expected).epsilon(1e-6));
}
