#include "inputs/one_d_triangles.h"

#include "testing.h"

namespace {

struct Element {
    std::int32_t shape;
    std::array<std::int32_t, 9> nodes;
};

std::string oneDOf(std::initializer_list<Element> elements, bool qlMesh = false) {
    Mesh mesh;
    mesh.qlMesh = qlMesh;
    mesh.nodes.resize(30);
    mesh.elements.resize(1);
    for (const Element& e : elements) {
        MeshElement element;
        element.shape = e.shape;
        element.nodes = e.nodes;
        mesh.elements.push_back(element);
    }
    std::string flags;
    for (const std::uint8_t flag : ONE_D_TRIANGLES(mesh)) flags += flag != 0 ? '1' : '0';
    return flags.empty() ? flags : flags.substr(1);
}

}  // namespace

TEST_CASE("Triangles are 1D in a mesh of quads none of which shares a side with any of them") {
    const Element quad{4, {1, 2, 3, 4}}, nineQuad{9, {1, 2, 3, 4, 5, 6, 7, 8, 9}};
    const Element apart{3, {10, 11, 12}}, joined{3, {12, 13, 14}}, touching{3, {14, 4, 17}}, beside{3, {20, 1, 4}};
    CHECK(oneDOf({quad, apart, joined, touching}) == "0111");  // one corner snapped onto a quad's
    CHECK(oneDOf({apart, quad, joined}) == "101");             // in whatever order they are written
    CHECK(oneDOf({quad, apart, beside}) == "");                // the closing side of the quad: all are 2D
    CHECK(oneDOf({quad, {3, {20, 3, 1}}}) == "01");            // a diagonal is no side
    CHECK(oneDOf({nineQuad, {3, {20, 9, 5}}}) == "01");
    CHECK(oneDOf({nineQuad, {3, {1, 20, 8}}}) == "");  // half a side
    CHECK(oneDOf({nineQuad, {3, {20, 3, 2}}}) == "");  // a whole one
    CHECK(oneDOf({apart, joined}) == "");              // no quads: a mesh of triangles
    CHECK(oneDOf({quad, apart}, true) == "");          // QL
    CHECK(oneDOf({quad, {0, {}}, apart}) == "001");    // a refused card takes part in nothing
}
