// Cells and arrows as map objects.
#include "vector_outputs/arrow.h"

#include "raster/lattice_mesh.h"
#include "run_control/layer_stage.h"
#include "testing.h"
#include "vector_outputs/cell_shape.h"

namespace {

using Points = std::vector<std::pair<double, double>>;

Mesh cellMesh(Points corners, double x0 = 0.0, double y0 = 0.0) {
    for (auto& [x, y] : corners) x += x0, y += y0;
    return meshOf(corners, {{1, 2, 3, corners.size() > 3 ? 4 : 0}});
}

double ringArea(const GisObject& o) {
    double sum = 0.0;
    for (std::size_t i = 1; i < o.vertexCount(); ++i)
        sum += (o.x[i] - o.x[1]) * (o.y[i + 1] - o.y[1]) - (o.x[i + 1] - o.x[1]) * (o.y[i] - o.y[1]);
    return -sum / 2.0;  // positive clockwise
}

MapItem vectorItem(float vx, float vy, const TurnedAxes& axes = {}) {
    MapItem item;
    item.x = 100.0;
    item.y = 200.0;
    item.vx = vx;
    item.vy = vy;
    SET_FLOW(item, axes);
    return item;
}

/// As a .mif keeps them, but with coordinates as they are. cap: where no -vmax is given.
ArrowRules rulesOf(const RunOptions& options, double cellSize, double cap, const char* format = "mif") {
    ArrowChoice choice = LAYER_CHOICE(*FORMAT_OF(format), options).arrow;
    if (options.vmaxNotGiven) choice.cap = cap;
    choice.step = 0.0;
    return ARROW_RULES(choice, cellSize);
}

}  // namespace

TEST_CASE("Cells that make no valid polygon are told from those that do") {
    const std::tuple<Points, bool> rows[] = {
        {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true},
        {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}, true},   // either winding
        {{{0, 0}, {10, 10}, {10, 0}, {0, 10}}, false},  // crossed
        {{{0, 0}, {10, 0}, {0, 10}, {10, 10}}, false},  // crossed on the other pair of sides
        {{{0, 0}, {10, 0}, {3, 3}, {0, 10}}, true},     // not convex
        {{{0, 0}, {10, 0}, {5, 0}, {0, 10}}, false},    // a corner folded back onto a side
        {{{0, 0}, {5, 0}, {10, 0}, {0, 10}}, true},     // three corners in a line, going on
        {{{0, 0}, {10, 0}, {10, 0}, {0, 10}}, false},   // a node twice
        {{{0, 0}, {10, 0}, {5, 5}, {10, 0}}, false},    // opposite corners in one place
        {{{0, 0}, {4, 1}, {8, 2}, {12, 3}}, false},     // flat
        {{{0, 0}, {10, 0}, {0, 10}}, true},
        {{{0, 0}, {0.1, 0.3}, {0.2, 0.6}}, false},  // flat, and the products round
        {{{0, 0}, {10, 0}, {5, 1e-9}}, true},       // a sliver is no line
    };
    for (const auto& [corners, valid] : rows) {
        const Mesh near = cellMesh(corners);
        const Mesh far = cellMesh(corners, 512000.0, 6250000.0);
        CHECK(VALID_CELL(CELL_SHAPE(near, near.elements[1]), 0.0) == valid);
        if (corners.back().second != 1e-9 && corners[1].first != 0.1)
            CHECK(VALID_CELL(CELL_SHAPE(far, far.elements[1]), 1e-6) == valid);
    }
    const Mesh sliver = cellMesh({{0, 0}, {10, 0}, {5, 1e-9}});
    CHECK(!VALID_CELL(CELL_SHAPE(sliver, sliver.elements[1]), 1e-6));  // a line once six decimals have rounded it
}

TEST_CASE("Regions are closed and clockwise, and keep the coordinates of the mesh to the bit") {
    for (const Points& corners : {Points{{0, 0}, {4, 0}, {4, 3}, {0, 3}}, Points{{0, 0}, {0, 3}, {4, 3}, {4, 0}},
                                  Points{{0, 0}, {4, 0}, {4, 6}}}) {
        const Mesh mesh = cellMesh(corners, 512000.1, 6250000.3);
        GisObject o;
        CELL_REGION(mesh, mesh.elements[1], CELL_SHAPE(mesh, mesh.elements[1]), o);
        CHECK(o.vertexCount() == corners.size() + 1);
        CHECK((o.x[1] == o.x.back() && o.y[1] == o.y.back() && o.x[1] == mesh.nodes[1].x));
        CHECK(ringArea(o) == doctest::Approx(12.0));
    }
}

TEST_CASE("Centroids are those of the area, at any distance from the origin") {
    const std::tuple<Points, double, double> rows[] = {
        {{{0, 0}, {9, 0}, {0, 9}}, 3, 3},
        {{{0, 0}, {0, 4}, {6, 4}, {6, 0}}, 3, 2},
        {{{0, 0}, {12, 0}, {6, 6}, {0, 6}}, 14.0 / 3.0, 8.0 / 3.0},  // the mean of the corners gives 4.5, 3
        {{{0, 0}, {10, 10}, {10, 0}, {0, 10}}, 5, 5},                // crossed: no area to speak of, so the mean
    };
    for (const auto& [corners, x, y] : rows) {
        const Mesh mesh = cellMesh(corners, 512000.0, 6250000.0);
        const MapPoint point = CELL_CENTROID(CELL_SHAPE(mesh, mesh.elements[1]));
        CHECK(std::abs(point.x - 512000.0 - x) < 1e-9);
        CHECK(std::abs(point.y - 6250000.0 - y) < 1e-9);
    }
}

TEST_CASE("The cell size of arrows is the median square root of area of the 2D cells that count") {
    Mesh mesh = cellMesh({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, 300000.0, 6200000.0);
    const auto add = [&mesh](const Points& corners) {
        const Mesh other = cellMesh(corners, 300000.0, 6200000.0);
        MeshElement element = other.elements[1];
        for (std::int32_t& node : element.nodes) node += static_cast<std::int32_t>(mesh.nodes.size()) - 1;
        mesh.nodes.insert(mesh.nodes.end(), other.nodes.begin() + 1, other.nodes.end());
        mesh.elements.push_back(element);
    };
    add({{0, 0}, {0.1, 0.3}, {0.2, 0.6}});  // flat
    add({{0, 0}, {0, 4}, {2, 0}});
    CHECK(*MEDIAN_CELL_SIZE(mesh) == doctest::Approx(3.0));  // mean of 4 and 2
    add({{0, 0}, {9, 0}, {9, 9}, {0, 9}});
    CHECK(*MEDIAN_CELL_SIZE(mesh) == doctest::Approx(4.0));
    mesh.elements[4].removed = true;
    CHECK(*MEDIAN_CELL_SIZE(mesh) == doctest::Approx(3.0));
    mesh.oneD = {0, 0, 0, 1, 0};
    CHECK(*MEDIAN_CELL_SIZE(mesh) == doctest::Approx(4.0));  // the triangle is 1D
    CHECK(!MEDIAN_CELL_SIZE(Mesh{}).has_value());
}

TEST_CASE("An arrow is as long as its magnitude says, starts at its point and has the stated area") {
    RunOptions options;
    options.scaleFactor = 0.5F;
    const MapItem item = vectorItem(3.0F, 4.0F);  // magnitude 5: length 5 * 0.5 * 20 = 50
    GisObject o;
    REQUIRE(DRAW_ARROW(rulesOf(options, 20.0, 0.0), item, o) == Drawn::Object);
    CHECK(o.kind == GisKind::Pline);
    // 5 to the left of 35 along, then to the right
    const double line[][2] = {{100, 200}, {130, 240}, {117, 231}, {130, 240}, {125, 225}};
    REQUIRE(o.vertexCount() == 5);
    for (std::size_t i = 0; i < 5; ++i) {
        CHECK(o.x[i + 1] == doctest::Approx(line[i][0]));
        CHECK(o.y[i + 1] == doctest::Approx(line[i][1]));
    }

    // the last two: at most 0.2 L
    const std::tuple<float, bool, double> rows[] = {
        {0.01F, false, 0.5}, {0.1F, true, 2.0}, {0.9F, false, 10.0}, {5.0F, true, 10.0}};
    for (const bool shp : {false, true})
        for (const auto& [tail, perCell, thickness] : rows) {
            options.tailThicknessFactor = tail;
            options.tailThicknessPerCellSize = perCell;
            REQUIRE(DRAW_ARROW(rulesOf(options, 20.0, 0.0, shp ? "shp" : "mif"), item, o) == Drawn::Object);
            CHECK(o.kind == GisKind::Region);
            CHECK(o.vertexCount() == 8);
            CHECK(o.x[8] == o.x[1]);
            CHECK(ringArea(o) == doctest::Approx(0.7 * 50.0 * thickness + 0.03 * 50.0 * 50.0));
        }
}

// East and north component, the cap of a velocity file, switches, length and direction of what is drawn; no length:
// nothing is.
TEST_CASE("Caps, fixed lengths and components decide how long an arrow is; what is too short is not drawn") {
    for (const Row& row : rowsOf(R"(
3 4 | 0 | | 50 | 0.6 0.8
30 40 | 10 | | 100 | 0.6 0.8
30 40 | 10 | vmax 20 | 200 | 0.6 0.8
# given, but not positive: none
30 40 | 10 | vmax 0 | 500 | 0.6 0.8
3 4 | 0 | fixed 7 | 7 | 0.6 0.8
# at rest
0 0 | 0 | fixed 7
1e-6 0 | 0 | fixed 7
# below and above a ten-thousandth of a cell
0.9e-4 0
1.1e-4 0 | 0 | | 1.1e-3 | 1 0
3 4 | 0 | x | 30 | 1 0
# the component is capped
-3 4 | 2 | x | 20 | -1 0
3 -4 | 0 | y | 40 | 0 -1
0 4 | 0 | x
# along the turned axes
0 4 | 0 | x slant | 20 | 0.8660254 0.5
0 4 | 0 | y slant | 34.6410162 | -0.5 0.8660254
)")) {
        RunOptions o;
        const float given =
            holds(row[2], " ") && row[2].back() != 't' ? std::stof(row[2].substr(row[2].find(' '))) : 0.0F;
        if (row[2].starts_with("vmax")) o.vmax = given;
        o.vmaxNotGiven = !row[2].starts_with("vmax");
        o.fixedVectorLength = row[2].starts_with("fixed");
        if (o.fixedVectorLength) o.vectorLength = given;
        o.vx = row[2].starts_with("x");
        o.vy = row[2].starts_with("y");
        if (holds(row[2], "slant")) o.slantAngle = 30;
        CAPTURE(row[0] + row[2]);
        const std::vector<float> flow = listOf<float>(row[0]);
        GisObject arrow;
        const MapItem item = vectorItem(flow[0], flow[1], o.slantAngle > 0 ? TURNED_AXES(30.0F) : TurnedAxes{});
        const Drawn drawn = DRAW_ARROW(rulesOf(o, 10.0, numberOf(row[1])), item, arrow);
        CHECK((drawn == Drawn::Object) != row[3].empty());
        if (drawn != Drawn::Object) continue;
        const std::vector<double> direction = listOf(row[4]);
        CHECK(arrow.x[2] - arrow.x[1] == doctest::Approx(numberOf(row[3]) * direction[0]));
        CHECK(arrow.y[2] - arrow.y[1] == doctest::Approx(numberOf(row[3]) * direction[1]));
    }
}
