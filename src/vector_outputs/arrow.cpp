#include "vector_outputs/arrow.h"

#include "geometry/median.h"
#include "vector_outputs/cell_shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double SHORTEST = 1.0e-4;  ///< of a cell
constexpr double NECK = 0.7;         ///< where the head begins, of the length
constexpr double HEAD_HALF_WIDTH = 0.1;

/// The drawn vector: its length on the map and the direction of u.
struct Shaft {
    double length = 0.0, east = 0.0, north = 0.0;
};

Shaft shaftOf(const ArrowRules& rules, const MapItem& item) {
    const double magnitude = item[Column::Magnitude];
    if (magnitude == 0.0) return {};
    double drawn = magnitude;
    const auto vx = static_cast<double>(item.vx);
    const auto vy = static_cast<double>(item.vy);
    const double length = std::sqrt(vx * vx + vy * vy);
    Shaft shaft{0.0, vx / length, vy / length};
    if (rules.along != ArrowRules::Along::Flow) {
        const bool x = rules.along == ArrowRules::Along::XAxis;
        const double component = item[x ? Column::XComponent : Column::YComponent];
        const double sign = component < 0.0 ? -1.0 : 1.0;
        drawn = std::abs(component);
        shaft.east = sign * (x ? rules.axes.cosine : -rules.axes.sine);
        shaft.north = sign * (x ? rules.axes.sine : rules.axes.cosine);
    }
    if (drawn == 0.0) return {};
    if (rules.cap > 0.0) drawn = std::min(drawn, rules.cap);
    shaft.length = rules.fixedLength > 0.0 ? rules.fixedLength : drawn * rules.lengthOfUnit;
    return shaft;
}

/// Writes vertices given along the shaft.
struct Pen {
    const Shaft& shaft;
    const MapItem& item;
    GisObject& o;
    void add(double u, double w) const {
        o.add(item.x + u * shaft.east - w * shaft.north, item.y + u * shaft.north + w * shaft.east);
    }
};

void drawLine(const Pen& pen, double length) {
    pen.o.start(GisKind::Pline);
    pen.add(0.0, 0.0);
    pen.add(length, 0.0);
    pen.add(NECK * length, HEAD_HALF_WIDTH * length);
    pen.add(length, 0.0);
    pen.add(NECK * length, -HEAD_HALF_WIDTH * length);
    pen.o.endPart();
}

/// The ring as the file will hold it. Repeated vertices are passed over: they are where a tail is as wide as its head.
bool validAsWritten(const GisObject& o, double step) {
    std::array<double, 8> x{};
    std::array<double, 8> y{};
    std::size_t n = 0;
    const auto place = [step](double coordinate) {
        return step > 0.0 ? std::nearbyint(coordinate / step) : coordinate;
    };
    const double x0 = place(o.x[1]);
    const double y0 = place(o.y[1]);
    for (std::size_t i = 1; i < o.vertexCount(); ++i) {
        x[n] = place(o.x[i]) - x0;
        y[n] = place(o.y[i]) - y0;
        const bool neckRepeated = (i == 3 || i == 6) && x[n] == x[n - 1] && y[n] == y[n - 1];
        if (!neckRepeated) ++n;
    }
    return VALID_RING(std::span<const double>(x).first(n), std::span<const double>(y).first(n));
}

Drawn drawOutline(const ArrowRules& rules, const Pen& pen, double length) {
    const double halfHead = HEAD_HALF_WIDTH * length;
    const double thickness = rules.fixedThickness > 0.0 ? rules.fixedThickness : rules.thicknessOfLength * length;
    const double t = std::min(thickness / 2.0, halfHead);
    const double neck = NECK * length;
    pen.o.start(GisKind::Region);
    pen.add(0.0, t);
    pen.add(neck, t);
    pen.add(neck, halfHead);
    pen.add(length, 0.0);
    pen.add(neck, -halfHead);
    pen.add(neck, -t);
    pen.add(0.0, -t);
    pen.add(0.0, t);
    pen.o.endPart();
    // Far from what the coordinates can hold the shape cannot fail, and most arrows need no look.
    const double size = std::max(std::abs(pen.item.x), std::abs(pen.item.y)) + length;
    const double doubtful = 8.0 * std::max(rules.step, size * std::numeric_limits<double>::epsilon());
    const double narrowest = t < halfHead ? std::min(t, halfHead - t) : t;
    return narrowest > doubtful || validAsWritten(pen.o, rules.step) ? Drawn::Object : Drawn::Invalid;
}

/// Square root of the area; 0 for a cell that is flat as far as the rounding of its coordinates can tell.
double sizeOf(const Mesh& mesh, const MeshElement& element) {
    constexpr double ROUNDING = 4.0 * std::numeric_limits<double>::epsilon();
    const PieceShape shape = CELL_SHAPE(mesh, element);
    double extent = 0.0;
    for (std::size_t i = 1; i < shape.x.size(); ++i)  // the fourth of a triangle repeats the first
        extent = std::max(extent, std::max(std::abs(shape.x[i]), std::abs(shape.y[i])));
    const double coordinates = std::max(extent, std::max(std::abs(shape.x0), std::abs(shape.y0)));
    const double twiceArea = std::abs(TWICE_CLOCKWISE_AREA(shape));
    return twiceArea <= ROUNDING * extent * coordinates ? 0.0 : std::sqrt(twiceArea / 2.0);
}

}  // namespace

ArrowRules ARROW_RULES(const ArrowChoice& choice, double cellSize) {
    ArrowRules rules;
    rules.along = choice.along;
    rules.axes = TURNED_AXES(choice.slantAngle);
    rules.outlined = choice.outlined || choice.tailThickness > 0.0;
    rules.cellSize = cellSize;
    rules.lengthOfUnit = choice.scaleFactor * cellSize;
    rules.fixedLength = choice.fixedLength;
    rules.cap = choice.cap;
    (choice.thicknessPerCellSize ? rules.fixedThickness : rules.thicknessOfLength) =
        choice.tailThickness * (choice.thicknessPerCellSize ? cellSize : 1.0);
    rules.step = choice.step;
    return rules;
}

std::optional<double> MEDIAN_CELL_SIZE(const Mesh& mesh) {
    std::vector<double> sizes;
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        const MeshElement& element = mesh.elements[id];
        if (element.shape == 0 || element.removed || (!mesh.oneD.empty() && mesh.oneD[id] != 0)) continue;
        if (const double size = sizeOf(mesh, element); size > 0.0) sizes.push_back(size);
    }
    if (sizes.empty()) return {};
    return MEDIAN(sizes);
}

Drawn DRAW_ARROW(const ArrowRules& rules, const MapItem& item, GisObject& o) {
    const Shaft shaft = shaftOf(rules, item);
    if (shaft.length <= 0.0 || shaft.length < SHORTEST * rules.cellSize) return Drawn::Nothing;
    const Pen pen{shaft, item, o};
    if (rules.outlined) return drawOutline(rules, pen, shaft.length);
    if (HEAD_HALF_WIDTH * shaft.length < rules.step) return Drawn::Invalid;
    drawLine(pen, shaft.length);
    return Drawn::Object;
}
