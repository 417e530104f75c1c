// Projection text: the CoordSys lines of MapInfo headers and the well-known text of .prj files. The one place where
// they are read, told apart, compared and written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What the coordinates of a text are. Unknown: it is neither a CoordSys line nor a text of a .prj file.
enum class CoordinateKind : std::uint8_t { Unknown, NonEarth, Projected, Geographic };

/// CoordSys lines: NonEarth; an Earth system of projection type 1 or of none is Geographic ("CoordSys Earth Projection
/// 1, 104"); else Projected. Well-known text: Projected when it holds a PROJCS, PROJCRS or COMPD_CS without a base of
/// degrees alone, Geographic for a GEOGCS or GEOGCRS that is not the base of a projected one.
CoordinateKind COORDINATE_KIND(std::string_view text);

/// Equal word by word: numbers are compared as numbers (0.9996 and .99960; to ten digits, as programs print them),
/// letter case, blanks and all that follows the word Bounds do not count.
bool SAME_PROJECTION(std::string_view a, std::string_view b);

/// A .prj file read whole, whatever it holds: lines trimmed and joined, byte-order mark dropped. Blank when it is
/// longer than any projection (1 MiB). The file has to exist; one that cannot be read stops the run.
std::string READ_PRJ(std::string_view name);
/// Reads on in an open .mif file to the next line that holds "CoordSys"; trimmed, blank when the file or the header
/// (its "Data" line) ends before one.
std::string READ_COORD_SYS_LINE(int file);

/// Writes <base>.prj with the text as it is; nothing when it is blank.
void WRITE_PRJ(const std::string& base, std::string_view text);
