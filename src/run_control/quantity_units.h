// The units of what outputs hold, which results files seldom tell.
#pragma once

#include "services/output_time.h"

#include <string>
#include <string_view>

/// "m", "m/s", "m2/s" by the quantity's name, in feet ("ft", "ft/s") where map units are; of a time of maximum, a
/// threshold's time or a duration "h", with -sec "s". Blank for what has no unit or a unit that nobody told.
std::string UNIT_OF(std::string_view quantity, TimeKind kind, bool feet, bool seconds);

/// True for well-known text of a projected system whose coordinates are feet.
bool IS_IN_FEET(std::string_view wellKnownText);
