// A square mesh of quads and triangles, and its .2dm file.
#pragma once

#include "basin_options.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

/// Squares of cells x cells; the eastern columns are split into two triangles each, with alternating diagonals.
struct SquareMesh {
    std::int32_t cells = 0;        ///< squares across
    std::int32_t quadColumns = 0;  ///< columns of quads, from the west
    /// per node, from 0: south to north, west to east; map units, rounded to the four decimals of the file
    std::vector<double> x, y;
    std::vector<float> z;  ///< bed elevation per node
    double centreX = 0.0, centreY = 0.0;
    BasinOptions options;

    std::size_t elementCount() const;
};

/// The nodes' places; z is left to the caller.
SquareMesh MAKE_SQUARE_MESH(const BasinOptions& options);

/// One element, its nodes counter-clockwise and numbered from 1; the fourth is 0 in a triangle.
using ElementNodes = std::array<std::int32_t, 4>;
/// Calls `visit` with every element in the order of the file: the quads, then the triangles.
template <typename Visit>
void FOR_EACH_ELEMENT(const SquareMesh& mesh, Visit&& visit) {
    const auto node = [&](std::int32_t column, std::int32_t row) { return row * (mesh.cells + 1) + column + 1; };
    for (std::int32_t j = 0; j < mesh.cells; ++j)
        for (std::int32_t i = 0; i < mesh.quadColumns; ++i)
            visit(ElementNodes{node(i, j), node(i + 1, j), node(i + 1, j + 1), node(i, j + 1)});
    for (std::int32_t j = 0; j < mesh.cells; ++j)
        for (std::int32_t i = mesh.quadColumns; i < mesh.cells; ++i) {
            const ElementNodes c = {node(i, j), node(i + 1, j), node(i + 1, j + 1), node(i, j + 1)};
            const bool rising = (i + j) % 2 == 0;  // the diagonal goes up to the north-east
            visit(rising ? ElementNodes{c[0], c[1], c[2], 0} : ElementNodes{c[0], c[1], c[3], 0});
            visit(rising ? ElementNodes{c[0], c[2], c[3], 0} : ElementNodes{c[1], c[2], c[3], 0});
        }
}

/// Writes the mesh with its two mesh parts, "West Bank" (quads) and "East Bank" (triangles); an empty part is left out.
void WRITE_2DM(const SquareMesh& mesh, const std::filesystem::path& name);
