// Which program this is.
#pragma once

#include <string_view>

/// Of the project, from its CMakeLists.txt: "0.2.0". What -version, the manual, the packages and the outputs' metadata
/// name.
extern const std::string_view VERSION_TEXT;

/// Of the banner, which users' scripts look for.
constexpr std::string_view BUILD_TEXT = "2018-08-AA";
