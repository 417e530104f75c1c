// Taking file names apart. "/" and "\" both separate folders, on every system.
#pragma once

#include <string>
#include <string_view>

/// Extension with its dot in lower case: "X.2DM" -> ".2dm"; blank when there is none: "C:\run.v2\x" -> "".
std::string FILEEXT(std::string_view name);
/// Folder and name without the extension: "results/x_h.dat" -> "results/x_h". A name of an extension only stays whole.
std::string FILENAMEPATH(std::string_view name);
/// FILENAMEPATH, cut before the last underscore of the name part: "results\x_h.dat" -> "results\x", "a_b\x.dat" ->
/// "a_b\x".
std::string FILENAMEPATHNO_(std::string_view name);
/// The folder with its closing separator, blank for a bare name: "results/x_h.dat" -> "results/".
std::string FILEFOLDERPATH(std::string_view name);
/// The name without its folder: "results/x_h.dat" -> "x_h.dat".
std::string FILENAMEEXT(std::string_view name);
