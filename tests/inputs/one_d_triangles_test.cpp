#include "inputs/one_d_triangles.h"

#include <doctest/doctest.h>

#include <string>

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

TEST_CASE("A group of triangles behind the last quad that touches no quad is 1D") {
    const Element quad{4, {1, 2, 3, 4}}, otherQuad{4, {3, 4, 5, 6}}, nineQuad{9, {1, 2, 3, 4, 5, 6, 7, 8, 9}};
    const Element apart{3, {10, 11, 12}}, joined{3, {12, 13, 14}}, further{3, {14, 15, 16}}, touching{3, {4, 16, 17}},
        other{3, {20, 21, 22}};
    CHECK(oneDOf({quad, apart, joined}) == "011");
    CHECK(oneDOf({nineQuad, apart}) == "01");
    CHECK(oneDOf({nineQuad, {3, {9, 20, 21}}}) == "");              // the centre node counts as the quad's
    CHECK(oneDOf({quad, apart, otherQuad}) == "");                  // written before the last quad
    CHECK(oneDOf({apart, quad, joined}) == "");                     // its group was begun before it
    CHECK(oneDOf({quad, apart, joined, further, touching}) == "");  // one end touches: the whole chain is 2D
    CHECK(oneDOf({quad, further, joined, apart, other, touching}) == "000010");  // in whatever order the group is met
    CHECK(oneDOf({apart, joined}) == "");                                        // no quads: a mesh of triangles
    CHECK(oneDOf({quad, apart}, true) == "");                                    // QL
    CHECK(oneDOf({quad, {0, {}}, apart}) == "001");                              // a refused card takes part in nothing
}
