#include "raster/grid_extent.h"

#include "raster/default_spacing.h"
#include "raster/lattice_mesh.h"
#include "testing.h"

namespace {

/// A mesh of two triangles on a box of the given size, with one node far away that only removed elements use.
Mesh boxMesh(double width, double height) {
    Mesh mesh = latticeMesh({.cells = 1, .triangleEvery = 1});
    const double xs[] = {0, 0, width, 0, width}, ys[] = {0, 0, 0, height, height};
    for (std::size_t id = 1; id <= 4; ++id) {
        mesh.nodes[id].x = 100.0 + xs[id];
        mesh.nodes[id].y = -50.0 + ys[id];
    }
    addNode(mesh, 1e6, 1e6);
    mesh.nodeExcluded = {0, 0, 0, 0, 0, 1};
    return mesh;
}

}  // namespace

TEST_CASE("LAYOUT_GRID counts whole cells, one more in the node layout, from the extent's corner") {
    const std::tuple<double, double, double, bool, std::int32_t, std::int32_t> rows[] = {
        {50, 30, 10, false, 6, 4},    {50, 30, 10, true, 5, 3},
        {59.9, 30, 10, false, 6, 4},  {0.3, 0.7, 0.1, true, 3, 7},  // 0.3 / 0.1 falls short of 3, 0.7 / 0.1 of 7
        {0.3, 0.7, 0.1, false, 4, 8}, {4, 500, 10, false, 1, 51},   // narrower than a cell
    };
    for (const auto& [width, height, spacing, cellCentred, ncols, nrows] : rows) {
        const Grid grid = LAYOUT_GRID(boxMesh(width, height), spacing, cellCentred);
        CHECK((std::tuple(grid.ncols, grid.nrows, grid.cellSize) == std::tuple(ncols, nrows, spacing)));
        CHECK((grid.xll == 100.0 && grid.yll == -50.0));
        CHECK(grid.values.empty());
    }
}

TEST_CASE("LAYOUT_GRID refuses spacings that make no grid") {
    const std::tuple<double, double, double, bool, std::string> rows[] = {
        {9, 9, 10, false, "ERROR - Grid spacing is larger than the mesh."},
        {4, 500, 10, true, "ERROR - Grid spacing is larger than the mesh."},
        {50, 30, 1e-12, false, "ERROR - Could not allocate enough memory (RAM)."},
        {50, 30, 0, false, "ERROR - Grid spacing must be a number above zero."},
    };
    for (const auto& [width, height, spacing, cellCentred, message] : rows) {
        const std::string said = consoleOf([&] { LAYOUT_GRID(boxMesh(width, height), spacing, cellCentred); });
        CHECK(said.find(message) == 0);
        CHECK(said.ends_with("<stopped>"));
    }
}

TEST_CASE("DEFAULT_SPACING is the median side of the quads") {
    Mesh mesh = meshOf({{0, 0}, {3.33333, 0}, {3.33333, 5}, {0, 5}, {900, 0}}, {{1, 2, 5}});
    CHECK_FALSE(DEFAULT_SPACING(mesh, false));  // no quads
    addElement(mesh, 4, {1, 2, 3, 4});
    CHECK(DEFAULT_SPACING(mesh, false) == 4.167);  // between the two middle sides, rounded
    mesh.highResolution = true;
    CHECK(DEFAULT_SPACING(mesh, false) == 2.083);
    addElement(mesh, 4, {1, 2, 5, 4});
    mesh.elements.back().removed = true;
    CHECK(DEFAULT_SPACING(mesh, false) == 2.083);  // removed quads have no say
    mesh.qlMesh = true;
    CHECK_FALSE(DEFAULT_SPACING(mesh, false));
    const Mesh fine = latticeMesh({.side = 1.2367e-5, .x0 = 147.1, .y0 = -42.9, .triangleEvery = 0});
    CHECK_FALSE(DEFAULT_SPACING(fine, false));  // millimetres round to nothing
    CHECK(DEFAULT_SPACING(fine, true) == 1.24e-5);
}
