// Where the output times of a .dat file stand, and whether its length agrees with its header.
#pragma once

#include "inputs/dat_header.h"

// Offsets in bytes from the start of an output time, behind its card 200: the activity flag, the time, one flag per
// cell if there are any, the values, and the end.
std::int64_t DAT_FLAGS_OFFSET(int flagSize);
std::int64_t DAT_VALUES_OFFSET(const DatHeader& header, int flagSize, bool flags);
std::int64_t DAT_STEP_LENGTH(const DatHeader& header, int flagSize, bool flags);

/// Walks the file from step to step by seeking and fills all of DatFile but `next`. Stops the run when there is no
/// whole step.
DatFile INDEX_DAT_STEPS(int file, const DatCards& cards, bool seconds);
