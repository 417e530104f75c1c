// One profile as a .csv file.
#pragma once

#include "profiles/profile_set.h"
#include "profiles/unique_names.h"

#include <cstddef>
#include <string>

/// "<base>_<name>.csv" with a name that every file system takes and that neither `taken` nor the run has used: else
/// "<base>_<name>_2.csv", "_3" ...
std::string PROFILE_FILE_NAME(const std::string& base, const std::string& lineName, UniqueNames& taken);

/// Writes line number `line` (from 0) of a set: a header row, then a row a station. points: as the set was made with.
/// A file that cannot be written completely stops the run.
void WRITE_PROFILE(const std::string& file, const ProfileSet& set, std::size_t line, const CalibrationPoints* points,
                   const ProfileRules& rules);
