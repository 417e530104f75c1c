#include "inputs/one_d_triangles.h"

#include "raster/lattice_mesh.h"
#include "testing.h"

namespace {

using Element = std::array<std::int32_t, 9>;

std::string oneDOf(const std::vector<Element>& elements, bool qlMesh = false) {
    Mesh mesh = meshOf(std::vector<std::pair<double, double>>(29), elements);
    for (MeshElement& element : mesh.elements)
        if (element.nodes[0] == 0) element.shape = 0;
    mesh.qlMesh = qlMesh;
    std::string flags;
    for (const std::uint8_t flag : ONE_D_TRIANGLES(mesh)) flags += flag != 0 ? '1' : '0';
    return flags.empty() ? flags : flags.substr(1);
}

}  // namespace

TEST_CASE("Triangles are 1D in a mesh of quads none of which shares a side with any of them") {
    const Element quad{1, 2, 3, 4}, nineQuad{1, 2, 3, 4, 5, 6, 7, 8, 9};
    const Element apart{10, 11, 12}, joined{12, 13, 14}, touching{14, 4, 17}, beside{20, 1, 4};
    CHECK(oneDOf({quad, apart, joined, touching}) == "0111");  // one corner snapped onto a quad's
    CHECK(oneDOf({apart, quad, joined}) == "101");             // in whatever order they are written
    CHECK(oneDOf({quad, apart, beside}) == "");                // the closing side of the quad: all are 2D
    CHECK(oneDOf({quad, Element{20, 3, 1}}) == "01");          // a diagonal is no side
    CHECK(oneDOf({nineQuad, Element{20, 9, 5}}) == "01");
    CHECK(oneDOf({nineQuad, Element{1, 20, 8}}) == "");  // half a side
    CHECK(oneDOf({nineQuad, Element{20, 3, 2}}) == "");  // a whole one
    CHECK(oneDOf({apart, joined}) == "");                // no quads: a mesh of triangles
    CHECK(oneDOf({quad, apart}, true) == "");            // QL
    CHECK(oneDOf({quad, Element{}, apart}) == "001");    // a refused card takes part in nothing
}
