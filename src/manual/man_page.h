// The page of the manual, in the macros of man(7).
#pragma once

#include <string>

/// Holds every line of the usage text, each word as it stands there, and the switches that the text leaves out.
std::string MAN_PAGE();
