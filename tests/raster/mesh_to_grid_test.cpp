#include "raster/mesh_to_grid.h"

#include "geometry/no_value.h"
#include "raster/element_order.h"
#include "raster/grid_extent.h"
#include "raster/lattice_mesh.h"
#include "raster/odd_quads.h"
#include "raster/point_sample.h"
#include "testing.h"

#include <cstring>

namespace {

Grid header(std::int32_t ncols, std::int32_t nrows, double xll, double yll, double cellSize) {
    return {ncols, nrows, xll, yll, cellSize, {}};
}

/// The grid of one output time, which must be the same however much of the plan is kept from an earlier time.
std::vector<float> gridded(const Mesh& mesh, const Results& results, const Grid& grid, PlanKind kind = PlanKind::Nodes,
                           const VectorChoice& choice = {}) {
    ConsoleCapture quiet;
    GridRun once = START_GRID(grid, kind, {});
    GRID_RESULTS(once, mesh, results, choice);
    CHECK(once.plan.chunks.empty());
    GridRun kept = START_GRID(grid, kind, {.severalTimes = true});
    Results dry = results;
    dry.wet.assign(mesh.elements.size(), 0);
    GRID_RESULTS(kept, mesh, dry, choice);  // elements that fall dry here must come back at the next time
    CHECK(kept.plan.chunks.size() >= 1);
    GRID_RESULTS(kept, mesh, results, choice);
    CHECK(kept.grid.values == once.grid.values);
    constexpr std::uint64_t ONE_ROW = 1;
    GridRun banded = START_GRID(grid, kind, {}, ONE_ROW);
    GRID_RESULTS(banded, mesh, results, choice);
    std::vector<float> rows;
    const GridBands bands = BANDS_OF(banded, mesh);
    FROM_SOUTH(bands, [&] { rows.insert(rows.end(), bands.grid.values.begin(), bands.grid.values.end()); });
    CHECK(rows == once.grid.values);
    return once.grid.values;
}

bool near(float value, double expected, double tolerance) {
    return std::abs(static_cast<double>(value) - expected) <= tolerance;
}

}  // namespace

TEST_CASE("a quad takes the mean of its triangles at each point, three on a diagonal and four where they cross") {
    constexpr float T = 1.0F / 3.0F;
    const float none = NO_VALUE, nan = std::numeric_limits<float>::quiet_NaN();
    const std::tuple<float, std::vector<float>> rows[] = {
        // 0 at the other corners
        {6.0F, {2 * T, 0.5F, T, 0.5F, 1.5F, 2.5F, T, 2.5F, 14 * T}},
        {nan, {0, 0, 0, 0, 0, none, 0, none, none}},  // the triangle without that corner is left
        {-99998.5F, {0, 0, 0, 0, 0, none, 0, none, none}},
    };
    // the last one rounded
    const Lattice places[] = {{1, 3.0}, {1, 3.0, 0.0, 6.0e5, 6.0e6}, {1, 0.03, 0.0, 6.0e5 + 0.7, 6.0e6 + 0.1}};
    for (Lattice place : places)
        for (const bool reversed : {false, true}) {
            place.triangleEvery = 0;
            Mesh mesh = latticeMesh(place);
            auto& nodes = mesh.elements[1].nodes;
            if (reversed) std::swap(nodes[0], nodes[2]);
            const Grid grid = header(3, 3, place.x0, place.y0, place.side / 3.0);
            Results results = nodeResults(mesh, [](double, double) { return 0.0; });
            for (const auto& [farCorner, expected] : rows) {
                results.x[4] = farCorner;
                const std::vector<float> values = gridded(mesh, results, grid);
                for (std::size_t i = 0; i < 9; ++i) CHECK(near(values[i], static_cast<double>(expected[i]), 1e-6));
            }
            results.x[1] = NO_VALUE;
            CHECK(gridded(mesh, results, grid) == std::vector<float>(9, none));
        }
}

TEST_CASE("grids agree with a plain loop over elements, also where quads are concave or crossed") {
    const Lattice rough{.cells = 8, .angle = 0.7, .x0 = 3e5, .y0 = 6e6, .jitter = 0.6, .triangleEvery = 4};
    const Lattice onEdge{.cells = 4, .angle = std::atan(1.0), .triangleEvery = 3};  // diagonals along the rows
    const double half = std::sqrt(50.0);                                            // of a diagonal
    const std::tuple<Lattice, Grid> rows[] = {
        {rough, header(80, 110, 3e5 - 50.0, 6e6, 1.1)},  // rows of more than eight cells
        {rough, header(20, 20, 3e5 - 50.0, 6e6, 6.1)},
        {onEdge, header(41, 33, -3.0 * half - 0.2, -half / 8.0, half / 4.0)},
    };
    std::mt19937 random(11);
    std::uniform_real_distribution<double> value(-50.0, 50.0);
    for (const auto& [lattice, grid] : rows) {
        const Mesh mesh = latticeMesh(lattice);
        Results results = nodeResults(mesh, [&](double, double) { return value(random); });
        for (std::size_t id = 5; id < results.x.size(); id += 17)
            results.x[id] = id % 2 == 0 ? NO_VALUE : std::numeric_limits<float>::infinity();
        for (std::size_t id = 3; id < results.wet.size(); id += 7) results.wet[id] = 0;
        const std::vector<float> values = gridded(mesh, results, grid);
        int wrong = 0, covered = 0;
        for (std::int32_t row = 1; row <= grid.nrows; ++row)
            for (std::int32_t column = 1; column <= grid.ncols; ++column) {
                const double expected = plainSample(mesh, results, CELL_X(grid, column), CELL_Y(grid, row)).value;
                wrong += near(values[CELL_INDEX(grid, column, row)], expected, 1e-4) ? 0 : 1;
                covered += expected > HIGHEST_MISSING ? 1 : 0;
            }
        CHECK(wrong == 0);
        CHECK(covered > 80);
    }
}

TEST_CASE("a plan that outgrows its memory goes on with what it has") {
    const Mesh mesh = latticeMesh({.cells = 100, .angle = 0.1, .jitter = 0.3});
    const Results results = nodeResults(mesh, [](double x, double y) { return std::sin(x) * y; });
    ConsoleCapture quiet;
    GridRun run = START_GRID(LAYOUT_GRID(mesh, 5.0, false), PlanKind::Nodes, {.severalTimes = true});
    run.plan.memoryLimit = 500000;
    GRID_RESULTS(run, mesh, results, {});
    CHECK(run.plan.chunks.size() == 1);
    CHECK(run.plan.chunks[0].elements.end < mesh.elementCount);
    const std::vector<float> first = run.grid.values;
    GRID_RESULTS(run, mesh, results, {});
    CHECK(run.grid.values == first);
    CHECK(first == gridded(mesh, results, run.grid));
}

TEST_CASE("values per element fill the element, the larger on a shared edge, and quads end at their outlines") {
    Mesh mesh = latticeMesh({.cells = 2, .side = 2.0, .triangleEvery = 0});
    Results results;
    results.cellCentred = true;
    results.nodes = 4;
    results.x = {0, 5, 7, 3, NO_VALUE};
    // Points at 0.4, 1.2, 2 (the shared edges), 2.8 and 3.6.
    const float o = NO_VALUE;
    const std::vector<float> expected = {5, 5, 7, 7, 7, 5, 5, 7, 7, 7, 5, 5, 7, 7, 7, 3, 3, 3, o, o, 3, 3, 3, o, o};
    CHECK(gridded(mesh, results, header(5, 5, 0, 0, 0.8), PlanKind::Cells) == expected);

    Mesh odd = meshOf({{0, 0}, {6, 0}, {3, 2}, {3, 6}, {6, 4}, {0, 4}, {6, 0}}, {{1, 2, 3, 4}});
    odd.xmin = odd.ymin = 0.0;
    odd.xmax = odd.ymax = 6.0;
    // of the values x + 10 y; NO_VALUE outside
    const std::tuple<std::array<std::int32_t, 9>, double, double, float, const char*> rows[] = {
        {{1, 2, 3, 4}, 3.0, 1.0, 13.0F, "1 concave (the first is element 1)"},  // points inwards at the third corner
        {{1, 2, 3, 4}, 1.5, 2.5, 26.5F, "1 concave"},
        {{2, 3, 4, 1}, 4.0, 2.5, NO_VALUE, "1 concave"},  // though the triangle of the other three corners covers it
        {{1, 5, 2, 6}, 5.0, 2.0, 25.0F, "1 crossed (the first is element 1)"},  // both lobes, of no net area
        {{5, 2, 6, 1}, 1.0, 2.0, 21.0F, "1 crossed"},
        {{1, 5, 2, 6}, 3.0, 3.5, NO_VALUE, "1 crossed"},
        {{5, 2, 6, 1}, 3.0, 0.5, NO_VALUE, "1 crossed"},
        {{1, 2, 7, 6}, 2.0, 1.0, 12.0F, ""},              // a corner twice: a triangle
        {{1, 2, 1, 6}, 2.0, 1.0, NO_VALUE, "1 crossed"},  // there and back
        {{1, 2, 5, 6}, 5.0, 3.0, 35.0F, ""},
    };
    for (const auto& [nodes, x, y, value, check] : rows) {
        CAPTURE(x + 10.0 * y);
        odd.elements[1].nodes = nodes;
        Results one;
        one.cellCentred = true;
        one.x = {0, 9};
        const Grid cell = header(1, 1, x - 0.5, y - 0.5, 1.0);
        const Results perNode = nodeResults(odd, [](double east, double north) { return east + 10.0 * north; });
        CHECK(gridded(odd, one, cell, PlanKind::Cells)[0] == (IS_MISSING(value) ? NO_VALUE : 9.0F));
        CHECK(gridded(odd, perNode, cell)[0] == doctest::Approx(value));
        CHECK(SAMPLE_POINT(INDEX_ELEMENTS(odd, PlanKind::Nodes), odd, perNode.x, {}, x, y).value ==
              doctest::Approx(value));
        const std::string said = consoleOf([&] { REPORT_ODD_QUADS(odd); });
        if (*check == 0) CHECK(said.empty());
        else CHECK(said.starts_with("Check - Quads of the mesh that are not convex: " + std::string(check)));
    }
}

TEST_CASE("9-node quads use the quads around their centre for results and their corners for the bed") {
    Mesh mesh =
        meshOf({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {2, 0}, {4, 2}, {2, 4}, {0, 2}, {2, 2}}, {{1, 2, 3, 4, 5, 6, 7, 8, 9}});
    mesh.highResolution = true;
    Results results = nodeResults(mesh, [](double x, double y) {
        return x == 2 && y == 2 ? 9.0 : x == 2 || y == 2 ? 1.0 : 0.0;
    });
    const auto at = [&](double x, double y) {
        const float value = gridded(mesh, results, header(1, 1, x - 0.5, y - 0.5, 1.0))[0];
        CHECK(SAMPLE_POINT(INDEX_ELEMENTS(mesh, PlanKind::Nodes), mesh, results.x, {}, x, y).value == value);
        return value;
    };
    CHECK(at(2, 2) == 9.0F);
    CHECK(at(2, 0) == 1.0F);
    CHECK(at(3, 2) == 5.0F);                                                  // half way from the centre to a mid-side
    CHECK(at(3, 3) == doctest::Approx((0.5 * (9 + 0) + 0.5 * (1 + 1)) / 2));  // the middle of a sub-quad
    results.x[7] = NO_VALUE;
    CHECK(at(2, 2) == 0.0F);  // a value is missing: the corners alone
    mesh.nodes[9].z = 9.0F;
    ConsoleCapture quiet;
    GridRun run = START_GRID(header(1, 1, 1.5, 1.5, 1.0), PlanKind::Corners, {});
    GRID_BATHYMETRY(run, mesh);
    CHECK(run.grid.values[0] == 0.0F);
}

TEST_CASE("elements that take no part leave the grid alone, and slivers do not overshoot") {
    Mesh mesh = latticeMesh({.cells = 3, .triangleEvery = 0});
    mesh.elements[1].removed = true;
    mesh.elements[2].shape = 0;
    mesh.elements[3].nodes = {1, 2, 3, 4};                        // on one line
    mesh.nodes[16].x = std::numeric_limits<double>::quiet_NaN();  // a corner of the last element
    const Results results = nodeResults(mesh, [](double, double) { return 0.1; });
    const float v = 0.1F, o = NO_VALUE;
    CHECK(gridded(mesh, results, header(3, 3, 0, 0, 10.0)) == std::vector<float>{o, o, o, v, v, v, v, v, o});

    // at heights near the tolerance of the closed test, a plane would pass its corners' values
    Mesh sliver = meshOf({{0, 0}, {100, 0}, {60, 3e-7}, {40, 3e-7}});
    for (const std::int32_t last : {0, 4}) {
        sliver.elementCount = 0;
        addElement(sliver, last == 0 ? 3 : 4, {1, 2, 3, last});
        const Results steep = nodeResults(sliver, [](double, double y) { return y > 0 ? 1000.0 : 0.0; });
        for (const double below : {5e-8, -3.5e-7})
            for (const float value : gridded(sliver, steep, header(100, 1, 0, -0.5 - below, 1.0)))
                CHECK((value == NO_VALUE || (value >= 0.0F && value <= 1000.0F)));
    }
}

TEST_CASE("directions turn through 180 inside an element without passing east") {
    const std::tuple<std::vector<float>, bool> rows[] = {
        {{-170, 170, 170}, false},  {{170, -170, -170}, false}, {{-170, 160, 175}, false}, {{100, -170, 150}, false},
        {{-100, -100, 120}, false}, {{180, -90, 135}, false},   {{-170, 170, 170}, true},  {{80, 120, 95}, true},
    };
    Mesh mesh = latticeMesh({.cells = 1, .triangleEvery = 1});
    for (const auto& [corners, compass] : rows) {
        Results results = nodeResults(mesh, [](double, double) { return 0.0; });
        results.vector = true;
        results.y = results.x;
        results.wet[2] = 0;
        const std::size_t nodes[] = {1, 2, 4};  // of the first triangle, (0, 0) (10, 0) (10, 10)
        for (std::size_t i = 0; i < 3; ++i) {
            results.x[nodes[i]] = std::cos(corners[i] * std::atan(1.0F) / 45.0F);
            results.y[nodes[i]] = std::sin(corners[i] * std::atan(1.0F) / 45.0F);
        }
        const std::vector<float> values =
            gridded(mesh, results, header(5, 5, 0, 0, 2.0), PlanKind::Nodes, {VectorScalar::Direction, 0.0F, compass});
        for (std::int32_t row = 1; row <= 5; ++row)
            for (std::int32_t column = row; column <= 5; ++column) {
                const double x = 2.0 * column - 1.0, y = 2.0 * row - 1.0;
                const auto fromFirst = [&](std::size_t i) {
                    return std::remainder(static_cast<double>(corners[i] - corners[0]), 360.0);
                };
                const double angle = corners[0] + fromFirst(1) * (x - y) / 10.0 + fromFirst(2) * y / 10.0;
                const double expected = compass ? 90.0 - angle : angle;
                const float value = values[static_cast<std::size_t>(5 * (row - 1) + column - 1)];
                CHECK(std::abs(std::remainder(static_cast<double>(value) - expected, 360.0)) < 1e-3);
                CHECK((compass ? value >= 0.0F && value < 360.0F : value > -180.0F && value <= 180.0F));
            }
    }
}

TEST_CASE("directions of a quad whose first corner has none turn about the others") {
    const Mesh mesh = latticeMesh({.cells = 1, .triangleEvery = 0});
    Results results = nodeResults(mesh, [](double, double) { return 0.0; });
    results.vector = true;
    results.x = {0, NO_VALUE, -1, -1, -1};
    results.y = {0, NO_VALUE, 0.1F, -0.1F, 0.1F};
    for (const double at : {6.0, 7.0, 9.0})
        CHECK(std::abs(gridded(mesh, results, header(1, 1, at - 0.5, at - 0.5, 1.0), PlanKind::Nodes,
                               {VectorScalar::Direction, 0.0F, false})[0]) > 174.0F);
}

TEST_CASE("elements in any order give the same bits, laid along a line where their own is bad") {
    Mesh mesh = latticeMesh({.cells = 110, .angle = 0.3, .jitter = 0.2});
    const Grid grid = LAYOUT_GRID(mesh, 3.0, false);
    Results results = nodeResults(mesh, [](double x, double y) { return std::floor(std::sin(x) + y / 400.0); });
    for (std::size_t id = 1; id < results.x.size(); id += 2)
        if (results.x[id] == 0.0F) results.x[id] = -0.0F;  // where both meet neither element may decide
    const std::vector<float> expected = gridded(mesh, results, grid);
    CHECK(ELEMENT_ORDER(mesh, grid).empty());
    std::shuffle(mesh.elements.begin() + 1, mesh.elements.end(), std::mt19937(5));
    std::vector<std::int32_t> order = ELEMENT_ORDER(mesh, grid);
    double way = 0.0;  // from each first node to the next: a line over the mesh would be 1100 long
    for (std::size_t i = 1; i < order.size(); ++i) {
        const auto at = [&](std::size_t place) {
            return mesh.nodes[static_cast<std::size_t>(mesh.elements[static_cast<std::size_t>(order[place])].nodes[0])];
        };
        way += std::hypot(at(i).x - at(i - 1).x, at(i).y - at(i - 1).y);
    }
    CHECK(way < 15.0 * static_cast<double>(order.size()));
    const std::vector<float> values = gridded(mesh, results, grid);
    CHECK(std::memcmp(values.data(), expected.data(), sizeof(float) * values.size()) == 0);
    std::sort(order.begin(), order.end());
    CHECK(order.size() == static_cast<std::size_t>(mesh.elementCount));
    CHECK((order.front() == 1 && std::adjacent_find(order.begin(), order.end()) == order.end()));
}
