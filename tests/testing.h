// What nearly every test uses: doctest, the standard library's usual headers, and the pieces that the tests share.
#pragma once

#include "console_of.h"
#include "rows.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>
#undef GIVEN  // a word of doctest's, and a function of the program

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

inline bool holds(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }
/// What is said holds the part, and the run has ended.
inline bool stops(std::string_view said, std::string_view part) {
    return holds(said, part) && said.ends_with("<stopped>");
}
inline int countOf(std::string_view text, std::string_view part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) ++count;
    return count;
}
