#include "raster/odd_quads.h"

#include "raster/element_pieces.h"
#include "services/console.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

struct OddQuads {
    std::string_view word;
    std::int64_t count = 0;
    std::int32_t first = 0;  ///< element number

    void add(std::int32_t id) {
        if (count++ == 0) first = id;
    }
    /// "2 concave (the first is element 7)", after what stands before
    void say(std::string& line) const {
        if (count == 0) return;
        line += (line.empty() ? "" : ", ") + AINTEGER8(count) + ' ' + std::string(word) + " (the first is element " +
                AINTEGER(first) + ')';
    }
};

/// True for nearly every quad, with no need of a closer look.
bool turnsOneWay(const PieceShape& shape) {
    const auto [least, most] = std::minmax_element(shape.twiceArea.begin(), shape.twiceArea.end());
    return *least > 0.0 || *most < 0.0;
}

}  // namespace

void REPORT_ODD_QUADS(const Mesh& mesh) {
    const double coordinateSize = std::max(std::max(std::abs(mesh.xmin), std::abs(mesh.xmax)),
                                           std::max(std::abs(mesh.ymin), std::abs(mesh.ymax)));
    OddQuads concave{"concave"}, crossed{"crossed"};
    PieceShape shape;
    for (std::int32_t id = 1; id <= mesh.elementCount; ++id) {
        const MeshElement& element = mesh.elements[static_cast<std::size_t>(id)];
        if (element.shape < 4 || element.removed) continue;
        PLACE_PIECE(mesh, 4, {element.nodes[0], element.nodes[1], element.nodes[2], element.nodes[3]}, shape);
        if (turnsOneWay(shape) || !FIND_TRIANGLES(shape, coordinateSize)) continue;
        if (shape.form == QuadForm::Concave) concave.add(id);
        if (shape.form == QuadForm::Crossed) crossed.add(id);
    }
    std::string line;
    concave.say(line);
    crossed.say(line);
    if (!line.empty()) DMESSAGE("Check - Quads of the mesh that are not convex: " + line + ".");
}
