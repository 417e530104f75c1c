#include "raster/node_scalars.h"

#include "geometry/no_value.h"
#include "testing.h"

TEST_CASE("NODE_SCALARS makes one scalar of each vector") {
    Results results;
    results.vector = true;
    results.x = {0, 3, -2, -1, 0, NO_VALUE, 1};
    results.y = {0, 4, -0.0F, -1e-9F, 0, 1, std::numeric_limits<float>::quiet_NaN()};
    const float o = NO_VALUE;
    using Scalar = VectorScalar;
    const std::tuple<VectorChoice, std::vector<float>, const char*> rows[] = {
        {{}, {o, 5, 2, 1, 0, o, o}, "converting vectors to scalar...\n   ... done converting vector to scalar.\n"},
        {{Scalar::XComponent, 0.0F, false}, {o, 3, -2, -1, 0, o, o}, "using X direction component.\n   ... done.\n"},
        {{Scalar::YComponent, 0.0F, false}, {o, 4, 0, -1e-9F, 0, o, o}, "using Y direction component.\n   ... done.\n"},
        {{Scalar::XComponent, 30, false}, {o, 4.5980762F, -1.7320508F, -0.8660254F, 0, o, o}, "using X"},
        {{Scalar::YComponent, 30, false}, {o, 1.9641016F, 1, 0.5F, 0, o, o}, "using Y"},
        {{Scalar::Direction, 30, false}, {o, 53.130102F, 180, 180, 0, o, o}, "using direction.\n   ... done.\n"},
    };
    for (const auto& [choice, expected, text] : rows) {
        std::vector<float> scalars(99, 1.0F);
        const std::string said = consoleOf([&, c = choice] { NODE_SCALARS(results, c, false, scalars); });
        CHECK(said.starts_with("Vector input and raster output, " + std::string(text)));
        REQUIRE(scalars.size() == expected.size());
        for (std::size_t i = 0; i < scalars.size(); ++i) CHECK(scalars[i] == doctest::Approx(expected[i]));
    }
    std::vector<float> scalars;
    const std::string refused = consoleOf([&] {
        NODE_SCALARS(results, {VectorScalar::Direction, 0.0F, false}, true, scalars);
    });
    CHECK(
        (refused.starts_with("ERROR - \"-va\" not supported for high res results.") && refused.ends_with("<stopped>")));
}

TEST_CASE("directions are filtered above 180 and turned into bearings") {
    Grid grid;
    grid.values = {180.0F, 180.5F, 540.0F, -90.0F, NO_VALUE};
    FILTER_DIRECTIONS(grid);
    CHECK(grid.values == std::vector<float>{180.0F, -179.5F, 180.0F, -90.0F, NO_VALUE});
    grid.values = {0, 90, 180, -90, -179.5F, 90.00001F, NO_VALUE};
    DIRECTIONS_TO_BEARINGS(grid);
    CHECK(grid.values == std::vector<float>{90, 0, 270, 180, 269.5F, 0, NO_VALUE});
}
