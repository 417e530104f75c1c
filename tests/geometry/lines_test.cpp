#include "geometry/angle.h"

#include "geometry/distance.h"
#include "geometry/intersections.h"
#include "geometry/sides.h"
#include "geometry/vector_magnitude.h"
#include "testing.h"

TEST_CASE("Meeting segments: touching counts for INTERSECT_LINE, a start does not for INTERSECT_LINE_V2") {
    const std::tuple<float, float, float, float, float, float, float, float, bool, int> rows[] = {
        {0, 0, 4, 0, 2, -1, 2, 1, true, 3},  {0, 0, 4, 0, 4, -1, 4, 1, true, 3},  // at the end of A
        {0, 0, 4, 0, 0, -1, 0, 1, true, 2},                                       // at the start of A: on B only
        {0, 0, 4, 0, 2, 0, 2, 1, true, 1},                                        // at the start of B: on A only
        {0, 0, 4, 0, 0, 0, 0, 1, true, 4},                                        // both starts
        {0, 0, 4, 0, 2, 1, 2, 3, false, 1},                                       // B falls short of A
        {0, 0, 4, 0, 6, -1, 6, 1, false, 2},  // A falls short of B: ua and ub swapped gives 1
        {0, 0, 1, 1, 5, 5, 6, 6, true, -1},   // one line, far apart
        {0, 0, 1, 1, 0, 1, 1, 2, false, 0},   // parallel
    };
    for (const auto& [x1, y1, x2, y2, x3, y3, x4, y4, meet, code] : rows) {
        CAPTURE(code);
        CHECK(INTERSECT_LINE(x1, y1, x2, y2, x3, y3, x4, y4) == meet);
        CHECK(INTERSECT_LINE_8(x1, y1, x2, y2, x3, y3, x4, y4) == meet);
        CHECK(INTERSECT_LINE_V2(x1, y1, x2, y2, x3, y3, x4, y4) == code);
        CHECK(INTERSECT_LINE_V2_8(x1, y1, x2, y2, x3, y3, x4, y4) == code);
    }
}

TEST_CASE("ANGLE2D is 0 to 180 degrees, and 0 against a vertical line") {
    const std::tuple<double, double, double, double, double> rows[] = {
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
    for (const auto& [dx1, dy1, dx2, dy2, expected] : rows)
        CHECK(ANGLE2D(0, 0, dx1, dy1, 5, 6, 5 + dx2, 6 + dy2) == doctest::Approx(expected).epsilon(1e-6));
}
