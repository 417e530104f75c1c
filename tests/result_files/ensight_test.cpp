#include "result_files/ensight_files.h"

#include "geometry/no_value.h"
#include "profiles/small_flood.h"
#include "services/files.h"
#include "testing.h"
#include "text_utils/bytes.h"

namespace {

/// A quad of nine nodes at 512000, 6250000, a quad to its east that is removed, and a triangle on its own.
Mesh oddMesh() {
    Mesh mesh;
    for (const double y : {0.0, 1.0, 2.0})
        for (const double x : {0.0, 1.0, 2.0, 3.0}) addNode(mesh, 512000.25 + x, 6250000.5 + y);
    addElement(mesh, 9, {1, 3, 11, 9, 2, 7, 10, 5, 6});  // 4 8 12 to the east
    addElement(mesh, 4, {3, 4, 12, 11});
    mesh.elements[2].removed = true;
    for (const double x : {10.0, 11.0, 12.0}) addNode(mesh, 512000.0 + x, 6250000.0 + x * x);
    addElement(mesh, 3, {13, 15, 14});  // clockwise
    mesh.oneD = {0, 0, 0, 1};
    mesh.nodeExcluded.assign(16, 0);
    for (const std::size_t node : {4U, 12U}) mesh.nodeExcluded[node] = 1;
    mesh.xmin = 512000.25;
    mesh.ymin = 6250000.5;
    return mesh;
}

using Numbers = std::vector<std::int32_t>;

}  // namespace

TEST_CASE("Parts: four quarters of a 9-node quad under its number, lines apart, removed parts gone, all turned left") {
    const std::vector<EnsightPart> parts = ENSIGHT_PARTS(oddMesh());
    REQUIRE(parts.size() == 2);
    CHECK((parts[0].name == "2D" && parts[0].nodes == Numbers{1, 2, 3, 5, 6, 7, 8, 9, 10, 11}));  // 8: nobody's
    REQUIRE(parts[0].blocks.size() == 1);
    CHECK(parts[0].blocks[0].type == "quad4");
    CHECK(parts[0].blocks[0].ids == Numbers{1, 1, 1, 1});
    // node 5 is the fourth of the part, 6 the fifth, 9 to 11 the eighth to tenth
    CHECK(parts[0].blocks[0].corners == Numbers{1, 2, 5, 4, 3, 6, 5, 2, 10, 9, 5, 6, 8, 4, 5, 9});
    CHECK((parts[1].name == "1D triangles" && parts[1].nodes == Numbers{13, 14, 15}));
    CHECK(parts[1].blocks[0].corners == Numbers{1, 2, 3});
}

TEST_CASE("Geometry is relative to whole map units, variables declare what is dry or missing undefined") {
    INITIALISE_FILES();
    const TemporaryFolder folder;
    Mesh mesh = smallMesh();
    mesh.nodes[1].x = mesh.xmin = -0.5;  // whole units below, not towards zero
    const std::vector<EnsightPart> parts = ENSIGHT_PARTS(mesh);
    const std::size_t head = 5 * 80, part = 80 + 4 + 80;
    WRITE_ENSIGHT_GEOMETRY(folder.name("m.geo"), "m", mesh, parts);
    const std::string geometry = folder.read("m.geo");
    CHECK(std::string(geometry.c_str() + 80) == "Coordinates less x -1. y 0.");
    CHECK(littleFloat(geometry.data() + head + part + 80 + 4 + 6 * 4) == 0.5F);
    CHECK(geometry.size() == head + part + 80 + 4 + 6 * 16 + 80 + 4 + 2 * 20);

    // node values over a dry eastern cell, the first missing; then cell values of vectors, the western one missing
    const std::tuple<std::vector<float>, std::vector<float>, const char*, std::vector<float>> rows[] = {
        {{NO_VALUE, 2, 3, 4, 5, 6}, {}, "coordinates undef", {NO_VALUE, 2, NO_VALUE, 4, 5, NO_VALUE}},
        {{7, 8}, {9, 1}, "quad4 undef", {7, NO_VALUE, 9, NO_VALUE, 0, NO_VALUE}},
        {{7, 8}, {NO_VALUE, 1}, "quad4 undef", std::vector<float>(6, NO_VALUE)},
    };
    for (const auto& [x, y, heading, expected] : rows) {
        Results results = scalarResults(x, !y.empty());
        results.wet = {0, 1, 0};
        results.vector = !y.empty();
        if (results.vector) results.y = {NO_VALUE, y[0], y[1]};
        WRITE_ENSIGHT_VARIABLE(folder.name("v.scl"), results, mesh, parts);
        const std::string bytes = folder.read("v.scl");
        const char* at = bytes.data() + 80 + 80 + 4;
        CHECK(std::string(at) == heading);
        CHECK(bytes.size() == 80 + part + 4 * (1 + expected.size()));
        CHECK(littleFloat(at += 80) == NO_VALUE);
        for (const float value : expected) CHECK(littleFloat(at += 4) == value);
    }
}

TEST_CASE("A case lists steps from 0, and extremes without a time") {
    INITIALISE_FILES();
    const TemporaryFolder folder;
    WRITE_ENSIGHT_CASE(folder.name("m.case"),
                       {"m.geo",
                        {{"Depth", false, false, 1, "m_Depth_******.scl"}, {"V_Max", true, true, 0, "m_V_Max.vec"}},
                        {{0, 1.0 / 3.0}}});
    CHECK(folder.read("m.case") ==
          "FORMAT\ntype: ensight gold\n\nGEOMETRY\nmodel: m.geo\n\nVARIABLE\nscalar per node: 1 Depth "
          "m_Depth_******.scl\nvector per element: V_Max m_V_Max.vec\n\nTIME\ntime set: 1\nnumber of steps: 2\n"
          "filename start number: 0\nfilename increment: 1\ntime values:\n0\n0.3333333333333333\n");
}
