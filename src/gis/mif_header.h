// MIF headers: what the layer library and other readers of MapInfo header files look up in them.
#pragma once

#include "gis/layers.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What a lookup does when it fails: the numbered ERROR and the end of the run, or the WARNING of the same number.
enum class MifTrouble : std::uint8_t { Stop, Warn };

// Each takes the handle of an open .mif file and reads on from where it stands.
/// The next line that holds "CoordSys", trimmed. False, without a message, when the file or the header (its "Data"
/// line) ends before one.
bool mifFindCoordSysLine(int handle, std::string& line);
/// Reads on behind the "Data" line. Trouble: 0313, and false.
bool mifFindDataLine(int handle, MifTrouble trouble);
/// The number of the next "Columns" line. Trouble: 0315 without such a line, 0314 without a number from 0 to
/// MOST_ATTRIBUTES, and -1.
std::int32_t mifReadColumnsCount(int handle, MifTrouble trouble);
/// The `count` definitions behind it, one a line; types without blanks ("Decimal(10,4)"). Trouble: 0316, and false.
bool mifReadFieldDefinitions(int handle, std::int32_t count, std::vector<GisAttribute>& attributes, MifTrouble trouble);

/// The CoordSys line of a projection or header file, or the default line (DEFAULT_COORD_SYS) with WARNING 0307 when
/// there is no such file and WARNING 0312 when it holds no such line.
std::string mifReadCoordSysLine(std::string_view name);

/// Copies the lines of an open header, up to but without its "Columns" line, to an open output. ERROR 0301 and 0302
/// (mifCopyHeader).
void mifCopyHeader(int source, int target);
/// The same for MapInfo header files: its errors name miCopyHeader.
void miCopyHeader(int source, int target);
