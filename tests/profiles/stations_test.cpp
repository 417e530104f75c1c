#include "profiles/stations.h"

#include "profiles/edge_crossings.h"
#include "profiles/foot_points.h"
#include "profiles/sampled_points.h"
#include "raster/lattice_mesh.h"
#include "testing.h"
#include "text_utils/numbers.h"

namespace {

ProfileLine lineOf(const std::vector<double>& xy, double x0 = 0.0, double y0 = 0.0) {
    std::vector<double> x, y;
    for (std::size_t i = 0; i + 1 < xy.size(); i += 2) {
        x.push_back(x0 + xy[i]);
        y.push_back(y0 + xy[i + 1]);
    }
    return MAKE_PROFILE_LINE("line", x, y);
}

/// "V0. E5. M12.5": kinds and chainages to the millimetre.
std::string textOf(const std::vector<Station>& stations) {
    std::string text;
    for (const Station& s : stations)
        text += std::string(text.empty() ? "" : " ") + static_cast<char>(s.kind) +
                AREAL8(std::round(s.chainage * 1000.0) / 1000.0);
    return text;
}

}  // namespace

TEST_CASE("LAY_STATIONS finds every edge once, and merges vertices over markers over edges") {
    const double x0 = 5e5, y0 = 6e6;
    Mesh mesh = latticeMesh({.cells = 3, .x0 = x0, .y0 = y0, .triangleEvery = 0});
    addNode(mesh, x0 + 4, y0 + 25);  // an edge that no other element has, of a removed element
    addElement(mesh, 3, {mesh.nodeCount, 9, 13});
    mesh.elements.back().removed = true;
    // 8 m wide and 4 m high, its southern side bent at the mid-side node
    const Mesh nine = meshOf({{0, 0}, {8, 0}, {8, 4}, {0, 4}, {4, -1}, {8, 2}, {4, 4}, {0, 2}, {4, 2}},
                             {{1, 2, 3, 4, 5, 6, 7, 8, 9}});
    constexpr PlanKind NODES = PlanKind::Nodes, CELLS = PlanKind::Cells, CORNERS = PlanKind::Corners;
    const std::tuple<const Mesh&, std::vector<double>, PlanKind, double, const char*> rows[] = {
        {mesh, {-5, 4, 35, 4}, NODES, 1e3, "V0. E5. E15. E25. E35. V40."},
        {mesh, {-5, 4, 35, 4}, NODES, 5.0, "V0. M5. M10. M15. M20. M25. M30. M35. V40."},  // one station a place
        {mesh, {-5, 4, 35, 4}, NODES, 20.0008, "V0. E5. E15. M20.001 E25. E35. V40."},
        {mesh, {5, 4, 5, 4, 5, 4.0005, 25, 4}, NODES, 1e3, "V0. E5.001 E15.001 V20.001"},  // vertices that merge
        {mesh, {0, 0, 30, 30}, NODES, 1e3, "V0. E14.142 E28.284 V42.426"},                 // through nodes
        {mesh, {10, -5, 10, 35}, NODES, 1e3, "V0. E5. E15. E25. E35. V40."},               // along edges
        {mesh, {5, 5, 15, 5, 5, 5}, NODES, 1e3, "V0. E5. V10. E15. V20."},                 // back on itself
        {mesh, {5, 25, 1, 25}, NODES, 1e3, "V0. V4."},                                     // past a removed element
        {mesh, {2, 2, 8, 2}, NODES, 1e3, "V0. V6."},                                       // within one cell
        {mesh, {50, 2, 80, 2}, NODES, 1e3, "V0. V30."},                                    // outside
        {mesh, {2, 4, 26, 4}, CELLS, 1e3, "V0. E4. E13. E21. V24."},
        {mesh, {2, 4, 26, 4}, CELLS, 13.0, "V0. E4. M13. E21. V24."},
        {nine, {3, -3, 3, 5}, NODES, 1e3, "V0. E2.25 E5. E7. V8."},  // 2.25: on the bent side, 5: on the inner edge
        {nine, {3, -3, 3, 5}, CORNERS, 1e3, "V0. E3. E7. V8."},
        {nine, {3, -3, 3, 5}, CELLS, 1e3, "V0. E1.125 E4.625 E7.5 V8."},
    };
    for (const auto& [on, xy, kind, markers, stations] : rows) {
        const bool utm = &on == &mesh;
        const ProfileLine line = lineOf(xy, utm ? x0 : 0.0, utm ? y0 : 0.0);
        const std::vector<double> crossings = EDGE_CROSSINGS(line, BUCKET_ELEMENTS(on), on, kind);
        CHECK(textOf(LAY_STATIONS(line, crossings, kind == CELLS, {markers, 0.001})) == stations);
    }
}

TEST_CASE("Between stations the surface of a mesh of triangles is a straight line") {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> along(-0.2, 1.2), level(0.0, 9.0);
    const double x0 = 5e5, y0 = 6e6;
    const Mesh mesh = latticeMesh({.cells = 12, .angle = 0.3, .x0 = x0, .y0 = y0, .jitter = 0.4, .triangleEvery = 1});
    const Results results = nodeResults(mesh, [&](double, double) { return level(random); });
    const PointIndex index = INDEX_ELEMENTS(mesh, PlanKind::Nodes);
    int compared = 0;
    double worst = 0.0;
    for (int i = 0; i < 40; ++i) {
        std::vector<double> xy;
        for (int k = 0; k < 8; ++k) xy.push_back(120.0 * along(random));
        const ProfileLine line = lineOf(xy, x0, y0);
        const auto crossings = EDGE_CROSSINGS(line, *index.buckets, mesh, PlanKind::Nodes);
        const std::vector<Station> stations = LAY_STATIONS(line, crossings, false, {});
        for (std::size_t s = 0; s + 1 < stations.size(); ++s) {
            const auto valueAt = [&](double share) {
                const Station &a = stations[s], &b = stations[s + 1];
                return SAMPLE_POINT(index, mesh, results.x, {}, a.x + share * (b.x - a.x), a.y + share * (b.y - a.y));
            };
            if (valueAt(0.3).element == 0) continue;
            const auto from = static_cast<double>(valueAt(0.0).value), to = static_cast<double>(valueAt(1.0).value);
            worst = std::max(worst, std::abs(from + 0.3 * (to - from) - static_cast<double>(valueAt(0.3).value)));
            ++compared;
        }
    }
    CHECK(worst < 1e-5);
    CHECK(compared > 1000);
}

TEST_CASE("A station looks along the segment that begins there, at the end along the last") {
    const ProfileLine line = lineOf({0, 0, 10, 0, 10, 5});
    for (const auto& [chainage, east, north] :
         {std::array{0.0, 1.0, 0.0}, {9.9985, 1.0, 0.0}, {9.9995, 0.0, 1.0}, {10.0, 0.0, 1.0}, {15.0, 0.0, 1.0}}) {
        const Station station = STATION_AT(line, chainage, 0.001);
        CHECK(station.east == east);
        CHECK(station.north == north);
    }
}

TEST_CASE("FOOT_POINTS takes points up to the distance, at the first of the nearest segments") {
    // chainage -1: too far
    const std::tuple<std::vector<double>, double, double, double, double> rows[] = {
        {{0, 0, 10, 0}, 4, 3, 4, 3},          // left of an eastward line
        {{0, 0, 10, 0}, 4, -5, 4, -5},        // inclusive
        {{0, 0, 10, 0}, 4, 5.0001, -1, 0},    //
        {{0, 0, 10, 0}, 13, 4, 10, 5},        // clamped to the end
        {{0, 0, 10, 0}, -3, -4, 0, -5},       //
        {{0, 0, 10, 0}, 14, 3.1, -1, 0},      // in the box, but too far from the end
        {{0, 0, 10, 0, 10, 10}, 8, 2, 8, 2},  // both segments equally near: the first
        {{0, 0, 10, 0, 10, 10}, 12, -1, 10, -std::sqrt(5.0)},
        {{0, 0, 10, 0, 0, 0}, 3, 1, 3, 1},              // there and back: the way there
        {{0, 0, 10, 0, 10, 2, 0, 2}, 3, 1.5, 19, 0.5},  // the nearer of two, westward, on its left
    };
    for (const auto& [line, x, y, chainage, offset] : rows) {
        const double x0 = 5e5, y0 = 6e6;
        const OrderedPoints points = ORDER_POINTS({x0 + 1e4, x0 + x, std::nan("")}, {y0, y0 + y, y0});
        const std::vector<Station> feet = FOOT_POINTS(lineOf(line, x0, y0), points, 5.0, 0.001);
        REQUIRE(feet.size() == (chainage < 0.0 ? 0U : 1U));
        if (feet.empty()) continue;
        CHECK(feet[0].point == 1);
        CHECK((feet[0].chainage == doctest::Approx(chainage) && feet[0].offset == doctest::Approx(offset)));
    }
}

TEST_CASE("More than ten million markers along all lines stop the run with their number") {
    const std::vector<ProfileLine> lines = {lineOf({0, 0, 6000.5, 0}), lineOf({0, 0, 6000.5, 0})};
    CHECK(consoleOf([&] { CHECK_MARKERS(lines, 0.0015); }).empty());  // 4,000,333 on each
    CHECK(holds(consoleOf([&] { CHECK_MARKERS(lines, 0.001); }), "would be 12000998 in number; at most 10000000 "));
    CHECK(consoleOf([&] { CHECK_MARKERS(lines, 1e-30); }).ends_with("<stopped>"));
}
