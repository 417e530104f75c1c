#include "result_files/ensight_parts.h"

#include "geometry/polygon_area.h"
#include "inputs/one_d_triangles.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace {

std::size_t place(std::int32_t id) { return static_cast<std::size_t>(id); }

bool clockwise(const Mesh& mesh, std::span<const std::int32_t> corners) {
    std::array<double, 4> x{}, y{};
    const MeshNode& origin = mesh.nodes[place(corners[0])];  // nothing is lost at coordinates of millions of metres
    for (std::size_t i = 0; i < corners.size(); ++i) {
        x[i] = mesh.nodes[place(corners[i])].x - origin.x;
        y[i] = mesh.nodes[place(corners[i])].y - origin.y;
    }
    return POLYGON_AREA_8(std::span(x).first(corners.size()), std::span(y).first(corners.size())) > 0.0;
}

class PartMaker {
public:
    PartMaker(const Mesh& mesh, std::string name, std::vector<std::uint8_t> nodes)
        : mesh_(mesh), numbers_(mesh.nodes.size(), 0) {
        part_.name = std::move(name);
        for (std::size_t id = 1; id < nodes.size(); ++id) {
            if (nodes[id] == 0) continue;
            part_.nodes.push_back(static_cast<std::int32_t>(id));
            numbers_[id] = static_cast<std::int32_t>(part_.nodes.size());
        }
    }

    void add(std::int32_t id) {
        const MeshElement& element = mesh_.elements[place(id)];
        const auto& n = element.nodes;
        if (element.shape == 3) addCorners(triangles_, id, {n[0], n[1], n[2]});
        else if (element.shape == 4) addCorners(quads_, id, {n[0], n[1], n[2], n[3]});
        else if (element.shape == 9)
            for (std::size_t k = 0; k < 4; ++k) addCorners(quads_, id, {n[k], n[4 + k], n[8], n[4 + (k + 3) % 4]});
    }

    EnsightPart take() {
        for (EnsightBlock* block : {&triangles_, &quads_})
            if (!block->ids.empty()) part_.blocks.push_back(std::move(*block));
        return std::move(part_);
    }

private:
    void addCorners(EnsightBlock& block, std::int32_t id, std::vector<std::int32_t> corners) {
        if (clockwise(mesh_, corners)) std::reverse(corners.begin() + 1, corners.end());
        block.ids.push_back(id);
        for (const std::int32_t corner : corners) block.corners.push_back(numbers_[place(corner)]);
    }

    const Mesh& mesh_;
    std::vector<std::int32_t> numbers_;  ///< by node of the mesh: its place in the part
    EnsightPart part_;
    EnsightBlock triangles_{"tria3", {}, {}}, quads_{"quad4", {}, {}};
};

}  // namespace

std::vector<EnsightPart> ENSIGHT_PARTS(const Mesh& mesh) {
    const auto oneD = [&](std::size_t id) { return !mesh.oneD.empty() && mesh.oneD[id] != 0; };
    std::vector<std::uint8_t> ofLines = ONE_D_NODES(mesh);
    std::vector<std::uint8_t> ofCells(mesh.nodes.size(), 1);
    for (std::size_t id = 1; id < ofCells.size(); ++id)
        if ((!mesh.nodeExcluded.empty() && mesh.nodeExcluded[id] != 0) || (!ofLines.empty() && ofLines[id] != 0))
            ofCells[id] = 0;
    ofLines.assign(mesh.nodes.size(), 0);  // those at the ends are nodes of quads as well
    for (std::size_t id = 1; id < mesh.elements.size(); ++id)
        for (std::size_t i = 0; oneD(id) && !mesh.elements[id].removed && i < 3; ++i)
            ofLines[place(mesh.elements[id].nodes[i])] = 1;
    PartMaker cells(mesh, "2D", std::move(ofCells)), lines(mesh, "1D triangles", std::move(ofLines));
    for (std::size_t id = 1; id < mesh.elements.size(); ++id)
        if (!mesh.elements[id].removed) (oneD(id) ? lines : cells).add(static_cast<std::int32_t>(id));
    std::vector<EnsightPart> parts;
    for (EnsightPart part : {cells.take(), lines.take()})
        if (!part.blocks.empty()) parts.push_back(std::move(part));
    return parts;
}
