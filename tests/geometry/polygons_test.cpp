#include "geometry/inside_polygon.h"

#include "geometry/interpolate.h"
#include "geometry/no_value.h"
#include "geometry/polygon_area.h"
#include "geometry/sub_grid_area.h"
#include "testing.h"

#include <stdexcept>

namespace {

using Ends = std::vector<std::int32_t>;

/// Both widths, which have to agree.
bool inside(double xp, double yp, const std::vector<double>& xs, const std::vector<double>& ys, const Ends& ends) {
    const std::vector<float> narrowX(xs.begin(), xs.end());
    const std::vector<float> narrowY(ys.begin(), ys.end());
    const bool wide = INSIDE_POLYGON_8(xp, yp, xs, ys, 0, ends);
    CHECK(INSIDE_POLYGON(float(xp), float(yp), narrowX, narrowY, 0, ends) == wide);
    return wide;
}

}  // namespace

TEST_CASE("INSIDE_POLYGON: a ray through corners counts where the boundary passes") {
    // A ring with a notch down to (4, 4) and a step at y = 6: corners first, then the first two again.
    const std::vector<double> xs = {0, 8, 8, 4, 2, 2, 0, 0, 8};
    const std::vector<double> ys = {0, 0, 8, 4, 8, 6, 6, 0, 0};
    const std::tuple<double, double, bool> rows[] = {
        {4, 2, true},   {9, 2, false}, {-1, 2, false},
        {7.5, 6, true}, {7, 4, true},   // the ray touches the notch: no crossing
        {2.5, 6, true},                 // along the step, which the boundary passes: one crossing
        {4, 6, false},  {9, 8, false},  // through both peaks
    };
    for (const auto& [x, y, expected] : rows) CHECK(inside(x, y, xs, ys, {8}) == expected);
    // A square without its first two corners repeated misses the edge from vertex 1, here its west side.
    CHECK_FALSE(inside(2, 1, {0, 0, 4, 4, 0}, {4, 0, 0, 4, 4}, {5}));
    CHECK(inside(2, 1, {0, 0, 4, 4, 0, 0}, {4, 0, 0, 4, 4, 0}, {5}));
}

TEST_CASE("INSIDE_POLYGON: a second part is a hole, and too few declared parts stop the run") {
    const std::vector<double> xs = {0, 9, 9, 0, 0, 9, 3, 6, 6, 3, 3, 6};
    const std::vector<double> ys = {0, 0, 9, 9, 0, 0, 3, 3, 6, 6, 3, 3};
    CHECK(inside(2, 5, xs, ys, {5, 11}));
    CHECK_FALSE(inside(4, 5, xs, ys, {5, 11}));
    // two vertices left make no edge
    CHECK(inside(2, 5, {xs.begin(), xs.begin() + 8}, {ys.begin(), ys.begin() + 8}, {5}));
    CHECK_THROWS_WITH_AS(INSIDE_POLYGON_8(2, 5, xs, ys, 0, Ends{5}),
                         "Invalid number of polygons in region sent to inside_polygon routine [1] - contact ",
                         std::invalid_argument);
}

TEST_CASE("INSIDE_POLYGON keeps the height before the last vertex on a ray from call to call") {
    const std::vector<double> xs = {2, 0, 2, 2, 0};  // vertex 2 at (0, 2), between y 0 and 4
    const std::vector<double> ys = {0, 2, 4, 0, 2};
    inside(1, 4, {0, 0, 1, 0, 0}, {9, 4, 0, 9, 4}, {4});  // leaves 9: above, as vertex 3 is
    CHECK_FALSE(inside(1, 2, xs, ys, {4}));
    CHECK(inside(1, 2, xs, ys, {4}));  // now left by its own last edge: below
}

TEST_CASE("INTERPOLATE_TRIANGLE is linear from C through the point") {
    const std::tuple<std::array<float, 3>, std::array<float, 3>, std::array<float, 3>, float, float, bool, float>
        rows[] = {
            {{0, 4, 0}, {0, 0, 4}, {1, 5, 41}, 1, 1, true, 12},            // the plane 1 + x + 10 y
            {{0, 4, 0}, {0, 0, 4}, {1, 5, 41}, 0, 4, true, 41},            // on C
            {{4, 4, 0}, {0, 4, 0}, {5, 45, 1}, 0, 0, false, NO_VALUE},     // on C under a vertical A-B
            {{0, 4, 0}, {0, 0, 4}, {1, 5, 41}, 1, 4, false, NO_VALUE},     // outside, parallel to A-B
            {{0, 0, 0}, {0, 5e-7F, 4}, {2, 6, 8}, 0, 2, false, NO_VALUE},  // no width: both lines vertical
            // A-B too short: its mean 4, then half way to 8
            {{0, 5e-7F, 0}, {0, 0, 4}, {2, 6, 8}, 0, 2, true, 6},
            // C too near A-B: half way between 8 and 4
            {{-4, 4, 0}, {0, 0, 5e-7F}, {2, 6, 8}, 0, 1e-7F, true, 6},
        };
    for (const auto& [x, y, f, xp, yp, found, expected] : rows) {
        const std::array<double, 3> x8 = {x[0], x[1], x[2]};
        const std::array<double, 3> y8 = {y[0], y[1], y[2]};
        float value = 0, value8 = 0;
        CHECK(INTERPOLATE_TRIANGLE(xp, yp, x, y, f, value) == found);
        CHECK(INTERPOLATE_TRIANGLE_8(xp, yp, x8, y8, f, value8) == found);
        CHECK(value == doctest::Approx(expected));
        CHECK(value8 == doctest::Approx(expected));
    }
    float value = 0;
    CHECK(INTERPOLATE_TRIANGLE_NO_CHECKS(0, 2, std::array{0.0F, 5e-7F, 0.0F}, std::array{0.0F, 0.0F, 4.0F},
                                         std::array{2.0F, 6.0F, 8.0F}, value));
    CHECK(std::isnan(value));  // 0 / 0, where the guarded form takes the mean
}

TEST_CASE("INTERPOLATE_ELEMENT_8 takes the mean over the triangles of its corners that hold the point") {
    const std::array<double, 4> x = {0, 4, 4, 0};
    const std::array<double, 4> y = {0, 0, 4, 4};
    const std::tuple<double, double, std::array<float, 4>, std::size_t, bool, float> rows[] = {
        {1, 2.5, {1, 5, 45, 41}, 4, true, 27},    // a plane stays a plane
        {2, 2.5, {0, 0, 0, 8}, 4, true, 2.5F},    // triangles (1,3,4) and (2,3,4) only: (1 and 4) / 2
        {1, 0.5, {0, 4, 8, 777}, 3, true, 1.5F},  // entry 3 ignored: x + y below the diagonal
        {1, 3, {0, 4, 8, 777}, 3, false, NO_VALUE},   {5, 2, {1, 5, 45, 41}, 4, false, NO_VALUE},
        {2, 2.5, {1, 5, 45, 41}, 5, false, NO_VALUE},
    };
    for (const auto& [xp, yp, f, corners, found, expected] : rows) {
        float value = 0;
        CHECK(INTERPOLATE_ELEMENT_8(xp, yp, x, y, f, corners, 0, value) == found);
        CHECK(value == doctest::Approx(expected));
    }
}

TEST_CASE("SET_SUB_GRID_AREA truncates towards zero and cuts at the grid") {
    const std::tuple<std::vector<float>, std::vector<float>, std::array<std::int32_t, 4>> rows[] = {
        {{12, 31, 25}, {7, 4, 22}, {2, 1, 4, 3}},  // columns 10-20 to 30-40, rows 0-10 to 20-30
        {{10, 20}, {0, 10}, {2, 1, 3, 2}},         // on the lines: the cell east and north
        {{-5, 5}, {-25, 5}, {1, 0, 1, 1}},         // -0.5 truncates to cell 1; -2.5 gives -1, cut to 0
        {{60, 990}, {-1, 1e30F}, {7, 1, 5, 4}},    // 5 columns, 4 rows
        {{}, {}, {1, 1, 0, 0}},
    };
    for (const auto& [x, y, expected] : rows) {
        const SubGridArea area = SET_SUB_GRID_AREA(x, y, 10, 5, 4);
        CHECK((std::array{area.firstColumn, area.firstRow, area.lastColumn, area.lastRow}) == expected);
        if (area.firstColumn == 2 && area.lastColumn == 4)
            CHECK((std::array{area.xmin, area.ymin, area.xmax, area.ymax}) == std::array{12.0F, 4.0F, 31.0F, 22.0F});
    }
}

TEST_CASE("POLYGON_AREA_8 is twice the area, clockwise positive, the last side included") {
    CHECK(POLYGON_AREA_8(std::array{0.0, 0.0, 3.0, 3.0}, std::array{0.0, 2.0, 2.0, 0.0}) == 12.0);
    CHECK(POLYGON_AREA_8(std::array{500000.0, 500003.0, 500000.0}, std::array{6250000.0, 6250000.0, 6250002.0}) ==
          -6.0);
    CHECK(POLYGON_AREA_8({}, {}) == 0.0);
}
