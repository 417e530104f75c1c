#include "inputs/difference_report.h"

#include "geometry/polygon_area.h"
#include "geometry/vector_magnitude.h"
#include "inputs/wet_mesh.h"
#include "services/console.h"
#include "text_utils/numbers.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace {

double areaOf(const Mesh& mesh, const MeshElement& element) {
    const std::size_t corners = element.shape == 3 ? 3 : 4;
    const MeshNode& first = mesh.nodes[static_cast<std::size_t>(element.nodes[0])];
    std::array<double, 4> x{}, y{};
    for (std::size_t i = 1; i < corners; ++i) {
        const MeshNode& node = mesh.nodes[static_cast<std::size_t>(element.nodes[i])];
        x[i] = node.x - first.x;
        y[i] = node.y - first.y;
    }
    return std::abs(POLYGON_AREA_8(std::span(x).first(corners), std::span(y).first(corners))) / 2.0;
}

/// Six decimals; one that rounds to zero has no sign.
std::string text(double value) {
    constexpr int DECIMALS = 6;
    std::string shown = AREALD8(value, DECIMALS);
    return shown.find_first_of("123456789") == std::string::npos ? AREALD8(0.0, DECIMALS) : shown;
}

/// A tenth of a square metre, but of a flume or in degrees as far as the digits go.
std::string areaText(double area, bool degrees) {
    if (degrees) return AREALD8(area, 10) + " square degrees";
    return AREALD8(area, area < 100.0 ? 4 : 1) + " m2";
}

}  // namespace

ChangedAreas CHANGED_AREAS(const Mesh& mesh, const DifferenceParts& parts) {
    ChangedAreas areas;
    areas.degrees = parts.degrees;
    const auto isWet = [](const Results& side, std::size_t id) { return side.cells == 0 || side.wet[id] != 0; };
    const std::vector<std::uint8_t> cells = WET_CELLS(mesh, {});
    for (std::size_t id = 1; id < cells.size(); ++id) {
        const bool now = isWet(parts.now, id);
        if (cells[id] == 0 || now == isWet(parts.was, id)) continue;
        (now ? areas.nowWet : areas.nowDry) += areaOf(mesh, mesh.elements[id]);
    }
    return areas;
}

void REPORT_DIFFERENCE(const Statistics& found, const ChangedAreas& areas) {
    std::string line = "Difference: count " + AINTEGER8(found.count);
    if (found.count > 0)
        line += ", min " + text(found.least) + ", max " + text(found.most) + ", mean " + text(found.mean) +
                ", mean absolute difference " + text(found.meanAbsolute) + ", 5 percentile " + text(found.percentile5) +
                ", 95 percentile " + text(found.percentile95);
    REPORT(line);
    REPORT("   was dry, now wet: " + areaText(areas.nowWet, areas.degrees));
    REPORT("   was wet, now dry: " + areaText(areas.nowDry, areas.degrees));
}

void REPORT_RESULTS_DIFFERENCE(const Mesh& mesh, const Results& difference) {
    std::vector<float> values = difference.x;
    for (std::size_t i = 1; difference.vector && i < values.size(); ++i)
        if (!IS_MISSING(values[i])) values[i] = VECTOR_MAGNITUDE(values[i], difference.y[i]);
    REPORT_DIFFERENCE(std::span<const float>(values).subspan(1), CHANGED_AREAS(mesh, *difference.parts));
}
