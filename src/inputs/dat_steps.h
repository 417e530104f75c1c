// One output time of a .dat file, into tables of the caller's.
#pragma once

#include "inputs/dat_reader.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Tables numbered from 1 (entry 0 unused): values, second components (empty for scalars), 1 wet or 0 dry per cell.
struct DatTables {
    std::vector<float>& x;
    std::vector<float>& y;
    std::vector<std::uint8_t>& wet;
};

/// Reads dat.steps[index]; the tables have been sized. A step without flags has those of the last step before it that
/// has some; every cell is wet where there is none. Stops the run when the file cannot be read.
void READ_DAT_STEP(const DatFile& dat, std::size_t index, DatTables tables);

/// Begins to read a step that is likely to be asked for next, on another thread of the run; with one job nothing.
/// Reading that step then takes over its tables. What goes wrong is told there. The file stays where it is until then.
void READ_DAT_AHEAD(DatFile& dat, std::size_t index);

/// Stops the run when this many tables of values and as many of flags do not fit the memory that is left.
void CHECK_DAT_MEMORY(const DatFile& dat, std::uint64_t tables);

/// "ERROR - ...": the output time asked for lies in the damaged step.
[[noreturn]] void STOP_AT_DAMAGED_STEP(const DatFile& dat);
