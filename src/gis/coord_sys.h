// CoordSys lines of MIF headers: the default, and the bounds that a NonEarth line needs.
#pragma once

#include <string>
#include <string_view>

/// Used whenever no projection is known.
constexpr std::string_view DEFAULT_COORD_SYS =
    "CoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (9999999, 9999999)";

/// Map units; empty while xmax is below xmin.
struct MapExtent {
    double xmin = 0.0, ymin = 0.0, xmax = -1.0, ymax = -1.0;
};

/// The line as a layer's header holds it: a NonEarth line without Bounds gets `bounds`, or when that is blank the
/// default bounds, widened to whole numbers that hold `extent` and its own size again on every side where `extent` lies
/// outside them. Any other line as it is.
std::string WITH_BOUNDS(std::string_view line, std::string_view bounds, const MapExtent& extent);
/// The "Bounds(...) (...)" of a line, blank when it has none.
std::string BOUNDS_OF(std::string_view line);
