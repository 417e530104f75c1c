#include "square_mesh.h"

#include "output_file.h"

#include <cmath>
#include <numbers>

namespace {

constexpr int COORDINATE_DECIMALS = 4;

double rounded(double value) { return std::round(value * 1.0e4) / 1.0e4; }

/// A number from -1 to 1 that looks random but is the same on every machine. which: 0 for x, 1 for y.
double scatter(std::size_t node, std::uint32_t which) {
    auto bits = static_cast<std::uint32_t>(node) * 2U + which;
    bits = (bits ^ 61U) ^ (bits >> 16U);
    bits *= 9U;
    bits ^= bits >> 4U;
    bits *= 0x27d4eb2dU;
    bits ^= bits >> 15U;
    return static_cast<double>(bits) / 2147483647.5 - 1.0;
}

void writeFirstLine(const SquareMesh& mesh, OutputFile& file) {
    const BasinOptions& o = mesh.options;
    file.text("MESH2D     ");  // the blanks here and below keep the line above the 83 characters that mark this flavour
    file.number(o.originX, 4);
    file.text("     ");
    file.number(o.originY, 4);
    file.text("     ");
    file.number(o.rotation, 4);
    for (const double size : {o.side, o.side, o.side / o.cells, o.side / o.cells, 0.0}) {
        file.text("     ");
        file.number(size, 4);
    }
    file.text("\n");
}

void writeElement(OutputFile& file, std::int64_t id, const ElementNodes& nodes, std::int64_t material) {
    const bool quad = nodes[3] > 0;
    file.text(quad ? "E4Q" : "E3T");
    file.number(id);
    for (std::size_t i = 0; i < (quad ? 4U : 3U); ++i) file.number(std::int64_t{nodes[i]});
    file.number(material);
    file.text(" 0 0 0\n");
}

}  // namespace

std::size_t SquareMesh::elementCount() const {
    return static_cast<std::size_t>(cells) * static_cast<std::size_t>(2 * cells - quadColumns);
}

SquareMesh MAKE_SQUARE_MESH(const BasinOptions& options) {
    SquareMesh mesh;
    mesh.options = options;
    mesh.cells = options.cells;
    mesh.quadColumns = options.cells - static_cast<std::int32_t>(std::lround(options.triangles * options.cells));
    mesh.centreX = options.originX + 0.5 * options.side;
    mesh.centreY = options.originY + 0.5 * options.side;

    const auto across = static_cast<std::size_t>(options.cells) + 1;
    const double step = options.side / options.cells;
    const double shift = options.distortion * step;
    const double turn = options.rotation * std::numbers::pi / 180.0;
    mesh.x.reserve(across * across);
    mesh.y.reserve(across * across);
    for (std::size_t row = 0; row < across; ++row)
        for (std::size_t column = 0; column < across; ++column) {
            const bool inner = row > 0 && column > 0 && row + 1 < across && column + 1 < across;
            const std::size_t node = mesh.x.size();
            const double u =
                static_cast<double>(column) * step - 0.5 * options.side + (inner ? shift * scatter(node, 0) : 0.0);
            const double v =
                static_cast<double>(row) * step - 0.5 * options.side + (inner ? shift * scatter(node, 1) : 0.0);
            mesh.x.push_back(rounded(mesh.centreX + u * std::cos(turn) - v * std::sin(turn)));
            mesh.y.push_back(rounded(mesh.centreY + u * std::sin(turn) + v * std::cos(turn)));
        }
    mesh.z.resize(mesh.x.size());
    return mesh;
}

void WRITE_2DM(const SquareMesh& mesh, const std::filesystem::path& name) {
    OutputFile file(name);
    writeFirstLine(mesh, file);
    const std::size_t quads = static_cast<std::size_t>(mesh.cells) * static_cast<std::size_t>(mesh.quadColumns);
    std::size_t id = 0;
    FOR_EACH_ELEMENT(mesh, [&](const ElementNodes& nodes) {
        if (id == 0 && quads > 0) file.text("MESHPART \"West Bank\"\n");
        if (id == quads) file.text("MESHPART \"East Bank\"\n");
        ++id;
        writeElement(file, static_cast<std::int64_t>(id), nodes, nodes[3] > 0 ? 1 : 2);
    });
    for (std::size_t node = 0; node < mesh.x.size(); ++node) {
        file.text("ND");
        file.number(static_cast<std::int64_t>(node) + 1);
        file.number(mesh.x[node], COORDINATE_DECIMALS);
        file.number(mesh.y[node], COORDINATE_DECIMALS);
        file.number(static_cast<double>(mesh.z[node]), COORDINATE_DECIMALS);
        file.text(" 0 0. 0. 0.\n");
    }
    file.close();
}
