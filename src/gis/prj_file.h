// The .prj file of a shapefile set: its coordinate system as one line of well-known text.
#pragma once

#include <string>

/// When the run has a projection text (gisProjection), compares it with that of the input <base>.prj: blanks outside
/// quotes and letter case do not count. ERROR 0420 when the file cannot be read, WARNING 0420 when it holds no PROJCS,
/// ERROR or WARNING 0305 when they differ.
void CHECK_PRJ(const std::string& base);
/// Writes <base>.prj with the run's projection text as it is; none when that is blank.
void WRITE_PRJ(const std::string& base);
