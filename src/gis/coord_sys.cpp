#include "gis/coord_sys.h"

#include "gis/fixed_text.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double DEFAULT_BOUND = 9999999.0;

std::size_t boundsAt(std::string_view line) { return UPPERCASE(line).find("BOUNDS"); }

void addWhole(std::string& text, double value) {
    std::array<char, LONGEST_FIXED> digits;
    text.append(digits.data(), PUT_FIXED(digits.data(), value, 0));
}

std::string boundsText(const MapExtent& b) {
    std::string text = "Bounds(";
    addWhole(text, b.xmin);
    text += ", ";
    addWhole(text, b.ymin);
    text += ") (";
    addWhole(text, b.xmax);
    text += ", ";
    addWhole(text, b.ymax);
    return text + ")";
}

MapExtent boundsFor(const MapExtent& extent) {
    MapExtent b{-DEFAULT_BOUND, -DEFAULT_BOUND, DEFAULT_BOUND, DEFAULT_BOUND};
    const bool empty = extent.xmax < extent.xmin || extent.ymax < extent.ymin;
    if (empty || (extent.xmin >= b.xmin && extent.ymin >= b.ymin && extent.xmax <= b.xmax && extent.ymax <= b.ymax))
        return b;
    const double width = extent.xmax - extent.xmin;
    const double height = extent.ymax - extent.ymin;
    b.xmin = std::min(b.xmin, std::floor(extent.xmin - width));
    b.ymin = std::min(b.ymin, std::floor(extent.ymin - height));
    b.xmax = std::max(b.xmax, std::ceil(extent.xmax + width));
    b.ymax = std::max(b.ymax, std::ceil(extent.ymax + height));
    return b;
}

}  // namespace

std::string WITH_BOUNDS(std::string_view line, std::string_view bounds, const MapExtent& extent) {
    std::string whole(TRIMMED(line));
    if (!FLAGEXISTS(whole, "NonEarth") || boundsAt(whole) != std::string::npos) return whole;
    bounds = TRIMMED(bounds);
    return whole + " " + (bounds.empty() ? boundsText(boundsFor(extent)) : std::string(bounds));
}

std::string BOUNDS_OF(std::string_view line) {
    const std::size_t at = boundsAt(line);
    return at == std::string_view::npos ? std::string{} : std::string(TRIMMED(line.substr(at)));
}
