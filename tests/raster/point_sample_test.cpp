#include "raster/point_sample.h"

#include "inputs/one_d_triangles.h"
#include "raster/lattice_mesh.h"
#include "testing.h"

TEST_CASE("SAMPLE_POINT agrees with a plain loop over elements") {
    std::mt19937 random(3);
    Mesh mesh = latticeMesh({.cells = 12, .angle = 0.3, .x0 = 5e5, .y0 = 6e6, .jitter = 0.4, .triangleEvery = 3});
    addElement(mesh, 3, {1, 13, 169});  // wider than its buckets, and above or below the others
    std::uniform_real_distribution<double> value(-50.0, 50.0), along(-0.3, 1.3);
    Results results = nodeResults(mesh, [&](double, double) { return value(random); });
    for (std::size_t id = 9; id < results.x.size(); id += 23) results.x[id] = NO_VALUE;
    for (std::size_t id = 4; id < results.wet.size(); id += 6) results.wet[id] = 0;
    const PointIndex index = INDEX_ELEMENTS(mesh, PlanKind::Nodes);
    CHECK(index.buckets->wideElements == std::vector<std::int32_t>{mesh.elementCount});

    std::vector<std::pair<double, double>> points;
    for (int i = 0; i < 500; ++i) points.emplace_back(5e5 - 40.0 + 160.0 * along(random), 6e6 + 160.0 * along(random));
    for (std::size_t id = 1; id < mesh.nodes.size(); ++id) points.emplace_back(mesh.nodes[id].x, mesh.nodes[id].y);
    int wrong = 0, inside = 0;
    for (const auto& [x, y] : points) {
        const PointSample sample = SAMPLE_POINT(index, mesh, results.x, results.wet, x, y);
        const PlainSample plain = plainSample(mesh, results, x, y);
        inside += plain.element > 0 ? 1 : 0;
        wrong +=
            std::abs(static_cast<double>(sample.value) - plain.value) > 1e-4 || sample.element != plain.element ? 1 : 0;
    }
    CHECK(wrong == 0);
    CHECK(inside > 200);
}

TEST_CASE("SAMPLE_POINT takes the last element that matches the largest value, and nothing outside") {
    const Mesh mesh = latticeMesh({.cells = 2, .triangleEvery = 0});
    const PointIndex nodes = INDEX_ELEMENTS(mesh, PlanKind::Nodes), cells = INDEX_ELEMENTS(mesh, PlanKind::Cells);
    const std::vector<float> level(10, 2.0F), perCell = {0, 5, 7, 7, 3};
    const std::vector<std::uint8_t> wet = {0, 1, 1, 0, 1};
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::tuple<const PointIndex&, const std::vector<float>&, bool, double, double, float, std::int32_t> rows[] = {
        {nodes, level, false, 10, 10, 2.0F, 4},         {nodes, level, false, 10, 5, 2.0F, 2},
        {nodes, level, true, 5, 15, NO_VALUE, 0},  // dry
        {nodes, level, false, 20.001, 10, NO_VALUE, 0}, {nodes, level, false, -1e9, 1e30, NO_VALUE, 0},
        {nodes, level, false, nan, 5, NO_VALUE, 0},     {cells, perCell, false, 10, 10, 7.0F, 3},
        {cells, perCell, true, 10, 10, 7.0F, 2},        {cells, perCell, true, 20, 20, 3.0F, 4},
    };
    for (const auto& [index, values, flags, x, y, value, element] : rows) {
        const PointSample sample = SAMPLE_POINT(index, mesh, values, flags ? wet : std::vector<std::uint8_t>{}, x, y);
        CHECK(sample.value == value);
        CHECK(sample.element == element);
    }
    CHECK(SAMPLE_POINT(INDEX_ELEMENTS(Mesh{}, PlanKind::Nodes), Mesh{}, {}, {}, 0, 0).element == 0);
}

TEST_CASE("SAMPLE_POINT takes triangles of 1D water-level lines whatever their flags say") {
    Mesh mesh = latticeMesh({.cells = 2, .triangleEvery = 0});
    const auto first = static_cast<std::int32_t>(mesh.nodes.size());
    for (const auto& [x, y] : {std::pair{30.0, 0.0}, {50.0, 0.0}, {30.0, 20.0}}) addNode(mesh, x, y);
    addElement(mesh, 3, {first, first + 1, first + 2});
    const std::vector<float> level(mesh.nodes.size(), 2.0F);
    const std::vector<std::uint8_t> dry(mesh.elements.size(), 0);
    CHECK(SAMPLE_POINT(INDEX_ELEMENTS(mesh, PlanKind::Nodes), mesh, level, dry, 31, 1).element == 0);  // with -no1d
    mesh.oneD = ONE_D_TRIANGLES(mesh);
    const PointIndex index = INDEX_ELEMENTS(mesh, PlanKind::Nodes);
    CHECK(SAMPLE_POINT(index, mesh, level, dry, 31, 1).element == mesh.elementCount);
    CHECK(SAMPLE_POINT(index, mesh, level, dry, 5, 5).element == 0);
    mesh.elements.back().removed = true;
    CHECK(SAMPLE_POINT(INDEX_ELEMENTS(mesh, PlanKind::Nodes), mesh, level, dry, 31, 1).element == 0);
}
