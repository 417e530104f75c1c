// Times of a .dat file as messages show them.
#pragma once

#include <string>

/// "2.5" for 2.5 hours; "9000." seconds with -sec. Markers stay as they are.
std::string DAT_TIME_TEXT(float hours);
