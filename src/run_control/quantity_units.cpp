#include "run_control/quantity_units.h"

#include "text_utils/text.h"

#include <algorithm>
#include <iterator>

namespace {

struct Unit {
    std::string_view quantity;
    std::string_view metres, feet;
};
constexpr Unit UNITS[] = {
    {"Water Level", "m", "ft"},     {"Depth", "m", "ft"},
    {"Bathymetry", "m", "ft"},      {"Energy", "m", "ft"},
    {"Velocity", "m/s", "ft/s"},    {"Vector Velocity", "m/s", "ft/s"},
    {"Unit Flow", "m2/s", "ft2/s"}, {"Vector Unit Flow", "m2/s", "ft2/s"},
};

bool isTimes(TimeKind kind) {
    return kind == TimeKind::TimeOfMaximum || kind == TimeKind::PeakLevel || kind == TimeKind::PeakVelocity ||
           kind == TimeKind::Exceedance || kind == TimeKind::Duration;
}

}  // namespace

std::string UNIT_OF(std::string_view quantity, TimeKind kind, bool feet, bool seconds) {
    if (isTimes(kind)) return seconds ? "s" : "h";
    const auto row = std::find_if(std::begin(UNITS), std::end(UNITS),
                                  [&](const Unit& unit) { return ASAME(unit.quantity, quantity); });
    if (row == std::end(UNITS)) return {};
    return std::string(feet ? row->feet : row->metres);
}

bool IS_IN_FEET(std::string_view wellKnownText) {
    const std::string text = UPPERCASE(wellKnownText);
    const bool projected = text.find("PROJCS[") != std::string::npos || text.find("PROJCRS[") != std::string::npos;
    // the last unit is that of the projected coordinates, those before belong to angles and parameters
    const std::size_t unit = std::max(text.rfind("UNIT[\"") + 1, text.rfind("LENGTHUNIT[\"") + 1);
    if (!projected || unit == 0) return false;
    const std::string_view name = std::string_view(text).substr(unit, 40);
    return name.find("FOOT") != std::string_view::npos || name.find("FEET") != std::string_view::npos;
}
