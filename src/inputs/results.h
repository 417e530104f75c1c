// The values that a run converts: one quantity at one output time. Filled by the results readers; read by every output.
#pragma once

#include "services/output_time.h"

#include <cstdint>
#include <string>
#include <vector>

struct DifferenceParts;

struct Results {
    std::int32_t nodes = 0;    ///< values per time: the mesh's nodes, or its cells when cellCentred
    std::int32_t cells = 0;    ///< wet/dry flags per time; 0 in files without flags
    bool vector = false;       ///< x and y components, else one scalar in x
    bool cellCentred = false;  ///< one value per cell instead of per node
    bool cornersOnly = false;  ///< the bed of a mesh: a 9-node quad is the quad of its corners
    OutputTime time;
    bool endReached = false;  ///< no further output time follows the one held
    /// scalar or x component, numbered from 1 (entry 0 unused); IS_MISSING where there is none
    std::vector<float> x;
    std::vector<float> y;  ///< y component of vectors, numbered from 1; empty for scalars
    /// per cell, numbered from 1: 1 wet, 0 dry. 1 everywhere until a file gives flags
    std::vector<std::uint8_t> wet;
    bool flagged = true;            ///< the source tells wet cells from dry ones; else `wet` is 1 for want of flags
    std::vector<OutputTime> times;  ///< every output time of the source, in file order
    std::string quantity;           ///< name of what is held ("Water Level"), blank when unknown
    std::string code;               ///< short code of the quantity ("h"), blank when unknown
    /// of a difference: both results that it is taken between (inputs/difference.h), the source's; nullptr for results
    /// as a file holds them
    const DifferenceParts* parts = nullptr;
    std::string units;  ///< of the values, as the source names them ("m"); blank when it does not
};

/// What the datasets that follow have in common, so that an output takes its memory once.
struct ResultsKind {
    bool vector = false;
    bool cellCentred = false;
    bool severalTimes = false;  ///< what serves more than one output time is worth keeping
    bool timed = false;         ///< a dataset of the run has ordinary times among several
    bool cornersOnly = false;   ///< as in Results
    bool difference = false;    ///< each comes with its parts
    bool operator==(const ResultsKind&) const = default;
};

const Results& RESULTS();
/// The run's record to fill, for the driver, who hands it to the readers.
Results& RESULTS_TO_FILL();
/// Sizes the tables for a source: every value NO_VALUE, every cell wet.
void ALLOCATE_RESULTS(std::int32_t values, std::int32_t cells, bool vector, Results& results);
/// The state before anything has been read: the start of a run and of every test.
void INITIALISE_RESULTS();
