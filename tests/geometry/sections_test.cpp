#include "geometry/hydraulics.h"

#include "geometry/shift.h"
#include "testing.h"

TEST_CASE("CIRCLE_WIDTH is the chord, 0 when full or dry") {
    const std::tuple<float, float, float> rows[] = {{2, 2, 4},     {2, 4, 0},         {5, 2, 8}, {5, 8, 8},
                                                    {2, 5e-6F, 0}, {2, 3.999995F, 0}, {2, -1, 0}};
    for (const auto& [r, d, expected] : rows) CHECK(CIRCLE_WIDTH(r, d) == expected);
}

TEST_CASE("HYD_PARAM: segment under water, dry, and dry at either end") {
    const std::tuple<float, float, float, float, float, float, float, float, float> rows[] = {
        {0, 0, 4, 3, 5, 1, 14, 4, 5}, {0, 0, 4, 3, 3, 1, 6, 4, 5},  // at the higher end: still under water
        {0, 4, 8, 4, 3, 1, 0, 0, 0},  {0, 6, 8, 0, 3, 1, 6, 4, 5},  // left end dry
        {0, 0, 8, 6, 3, 1, 6, 4, 5},                                // right end dry
        {0, 0, 8, 6, 3, 0, 0, 0, 0},                                // not wet
    };
    for (const auto& [x1, z1, x2, z2, h, wet, area, width, perimeter] : rows) {
        const SegmentHydraulics s = HYD_PARAM(x1, z1, x2, z2, h, wet);
        CHECK((std::array{s.area, s.width, s.perimeter}) == std::array{area, width, perimeter});
    }
    const auto [left, right] = HYD_PARAM2(0, 6, 8, 0, 1.5F, 0.2F);  // halves meet at (4, 3)
    CHECK((std::array{left.area, left.width, right.area, right.width, right.perimeter}) ==
          std::array{0.0F, 0.0F, 1.5F, 2.0F, 2.5F});
}

TEST_CASE("GEO_SHIFT moves to the origin, then turns by degrees") {
    const std::array<double, 2> xs = {500003, 500000};
    const std::array<double, 2> ys = {6250000, 6250004};
    const std::tuple<double, std::array<float, 2>, std::array<float, 2>> rows[] = {
        {0, {3, 0}, {0, 4}},
        {90, {0, 4}, {-3, 0}},  // taken as radians: -1.34
        {30, {2.5980762F, 2.0F}, {-1.5F, 3.4641016F}},
    };
    for (const auto& [angle, east, north] : rows) {
        std::array<float, 2> u{}, v{};
        GEO_SHIFT(xs, ys, 500000, 6250000, angle, u, v);
        for (std::size_t i = 0; i < 2; ++i) {
            CHECK(std::abs(u[i] - east[i]) < 1e-6F);
            CHECK(std::abs(v[i] - north[i]) < 1e-6F);
        }
    }
}
