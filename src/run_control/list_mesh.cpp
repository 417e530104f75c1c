#include "geometry/polygon_area.h"
#include "run_control/file_listing.h"
#include "text_utils/numbers.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <map>

namespace {

struct Cells {
    std::int64_t count = 0;
    double area = 0.0;  ///< square map units
};

double areaOf(const Mesh& mesh, const MeshElement& element) {
    std::array<double, 4> x{}, y{};
    const std::size_t corners = element.shape == 3 ? 3 : 4;
    const MeshNode& origin = mesh.nodes[static_cast<std::size_t>(element.nodes[0])];
    for (std::size_t i = 0; i < corners; ++i) {
        const MeshNode& node = mesh.nodes[static_cast<std::size_t>(element.nodes[i])];
        x[i] = node.x - origin.x;
        y[i] = node.y - origin.y;
    }
    return std::abs(POLYGON_AREA_8(std::span(x).first(corners), std::span(y).first(corners))) / 2.0;
}

std::string fromTo(double least, double most) { return AREAL8(least) + " to " + AREAL8(most); }

}  // namespace

void LIST_MESH(const std::string& name, Listing& listing) {
    Mesh mesh;
    READ_MESH(name, mesh);
    std::map<std::int32_t, Cells> materials;
    Cells all;
    for (const MeshElement& element : mesh.elements) {
        if (element.shape == 0) continue;
        for (Cells* cells : {&materials[element.material], &all}) {
            ++cells->count;
            cells->area += areaOf(mesh, element);
        }
    }
    listing.line("File: " + name);
    listing.line("   Nodes: " + AINTEGER(mesh.nodeCount));
    listing.line("   Cells: " + AINTEGER(mesh.elementCount) + " (" + AINTEGER(mesh.triangleCount) + " triangles, " +
                 AINTEGER(mesh.quad4Count) + " quads of 4 and " + AINTEGER(mesh.quad9Count) + " of 9 nodes)");
    listing.line("   x: " + fromTo(mesh.xmin, mesh.xmax));
    listing.line("   y: " + fromTo(mesh.ymin, mesh.ymax));
    listing.line("   Bed: " + AREAL(mesh.zmin) + " to " + AREAL(mesh.zmax));
    listing.line("   Area: " + AREALD8(all.area, 2) + " (square map units)");
    listing.line("   Mesh parts: " + AINTEGER(mesh.meshPartCount));
    for (std::size_t i = 1; i <= static_cast<std::size_t>(mesh.meshPartCount); ++i)
        listing.line("      " + mesh.meshParts[i].name);
    listing.line("   Materials: " + std::to_string(materials.size()));
    for (const auto& [material, cells] : materials)
        listing.line("      " + AINTEGER(material) + ": " + AINTEGER8(cells.count) + " cells, area " +
                     AREALD8(cells.area, 2));
}
