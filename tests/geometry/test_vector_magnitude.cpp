#include "geometry/vector_magnitude.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

TEST_CASE("VECTOR_MAGNITUDE takes both components up to 1e-6 as rest") {
    struct { float vx, vy, expected; } const rows[] = {
        {3, 4, 5},        {-3, -4, 5},
        {1e-6F, -1e-6F, 0},         // at the guard: still at rest
        {-5e-7F, 0, 0},
        {2e-6F, 0, 2e-6F},          // one component above it is enough
        {0, -2e-6F, 2e-6F},
        {-1, 0, 1},                 // abs() forgotten: the guard gives 0
    };
    for (const auto& r : rows) CHECK(VECTOR_MAGNITUDE(r.vx, r.vy) == r.expected);
    CHECK(std::isnan(VECTOR_MAGNITUDE(std::numeric_limits<float>::quiet_NaN(), 0)));
}
