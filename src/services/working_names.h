// Names of files on their way, beside their final places: "x.<host>-<pid>.part.shp" for "x.shp", and with ".old" for
// ".part" what "x.shp" replaces while its set is moved.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

constexpr std::string_view PART = ".part";
constexpr std::string_view OLD = ".old";

/// The name with this process's mark and `kind` behind its first `stem` bytes. A stem too long for the file system
/// gives way, between characters, to a number that tells it from its like.
std::string MARKED_NAME(std::string_view name, std::size_t stem, std::string_view kind);
/// Removes what ended processes of this machine left of the same file, never what a running one or another machine
/// writes, nor an earlier file whose place is free. A folder is searched once in a run.
void REMOVE_LEFTOVERS(std::string_view name, std::size_t stem);

struct AsideFile {
    std::string aside, place;
};
/// What ended processes of this machine had moved away to make room for a set of this main file, the main file last.
std::vector<AsideFile> LEFT_ASIDE(std::string_view name, std::size_t stem);
/// What stands in the folder of a marked name under its mark, the name itself included: a library puts files beside its
/// output ("x.tif.aux.xml"). Each as what follows the mark: ".tif.aux.xml".
std::vector<std::string> ENDINGS_OF_MARKED(std::string_view markedStem);
