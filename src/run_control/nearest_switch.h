// What an unknown switch was meant to be.
#pragma once

#include <string>
#include <string_view>

/// "grid5" -> "grid", "slant1e39" -> "slant": a number at the end is cut, but for one that is all of the text.
std::string_view WITHOUT_GLUED_NUMBER(std::string_view text);

/// The switch that a text (without its dash) is nearest to, letter case and a number at its end ignored: "grid" of
/// "gird5". An edit is a letter more, less or other, or two that changed places; beyond two, or as many as there are
/// letters, nothing is near. Blank then, and for a text with fewer than two letters. Of equally near ones one
/// that begins with the text, else the first.
std::string NEAREST_SWITCH(std::string_view text);
