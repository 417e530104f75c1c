// The cards before the first output time of a binary .dat file.
#pragma once

#include "inputs/dat_reader.h"

#include <cstdint>

// Card values of the format.
constexpr std::int32_t DAT_CARD_STEP = 200;
constexpr std::int32_t DAT_CARD_END = 210;

/// What the cards say, and where the first output time begins.
struct DatCards {
    DatHeader header;
    std::int32_t declaredFlagSize = 1;         ///< card 120, bytes
    double secondsPerUnit = SECONDS_PER_HOUR;  ///< card 250: of the unit of times
    std::int64_t firstStep = 0;  ///< bytes from the start of the file to the byte behind the first card 200
};

/// Reads the cards from the start of the file. Stops the run on a file that is empty, a text or without an output time,
/// and on counts below zero or no values at all. An unknown unit
/// of time is taken as hours, with a WARNING.
DatCards READ_DAT_CARDS(int file);
