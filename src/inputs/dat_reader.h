// Reads binary .dat results (SMS generic dataset format: little-endian, one quantity a file, one block of values a
// time) into a results record of the caller's. READ_DAT_HEADER first; then ALLOCATE_DAT_RESULTS and LIST_DAT_TIMES;
// then one of FIND_DAT_TIME, EXTRACT_DAT_MAXIMUMS, or NEXT_DAT_TIME until it returns false.
#pragma once

#include "inputs/results.h"
#include "services/output_time.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

constexpr std::size_t MOST_DAT_TIMES = 1000000;  ///< output times of one file; more stop the run

class DatAhead;

struct DatHeader {
    bool vector = false;     ///< x and y components, else one scalar
    std::int32_t nodes = 0;  ///< values per time: as many as the mesh has nodes, or cells in a cell-centred file
    std::int32_t cells = 0;  ///< wet/dry flags per time
    std::string name;        ///< dataset description, up to 40 characters, without trailing blanks
};

/// Where one whole output time stands in the file.
struct DatStep {
    std::int64_t offset = 0;  ///< bytes from the start of the file to the step's first byte, behind its card 200
    OutputTime time;
    bool flags = false;  ///< wet/dry flags follow the time
    /// `offset` of the step whose flags count here: its own, else the last one's before it that has some; 0: all wet
    std::int64_t flagsOf = 0;
};

/// An open .dat file. Filled by READ_DAT_HEADER.
struct DatFile {
    int file = 0;          ///< its handle, which stays the caller's to close
    bool seconds = false;  ///< messages show times in seconds
    DatHeader header;
    double secondsPerUnit = SECONDS_PER_HOUR;  ///< of the file's times
    int flagSize = 1;                          ///< bytes of a flag
    std::vector<DatStep> steps;                ///< the whole steps in file order; never empty
    /// the file ends, or stops making sense, inside the step behind the last whole one
    bool damaged = false;
    std::optional<OutputTime> damagedTime;  ///< where it could be read
    int timeDecimals = 0;                   ///< that messages need to tell the times apart
    std::size_t next = 0;                   ///< index into `steps` of what NEXT_DAT_TIME reads
    std::size_t before = 0;                 ///< index of what it has read last
    std::shared_ptr<DatAhead> ahead;        ///< the step that is being read beside; nullptr for none yet
};

/// A time of the file for a message: hours, or seconds, with the decimals that tell its times apart.
std::string DAT_TIME_TEXT(const DatFile& dat, const OutputTime& time);

/// Reads and reports the header, then checks the layout against the file's length and finds every step by seeking; no
/// memory is taken on the word of the counts. Flags are 8-bit and follow an activity byte of 1; the declared size, with
/// a "Check - " line, and other bytes than 0 and 1 taken as 1, only where the file contradicts that and fits them. A
/// file that ends inside a step gives a WARNING and keeps the whole steps before. Stops the run on a file that is no
/// binary .dat, on counts that the file does not hold, and when there is no whole step.
DatFile READ_DAT_HEADER(int file, bool seconds);

/// Sizes the results record for the file at hand, every value missing and every cell wet, and labels it.
/// cellCentred: the header's values are one per mesh cell. quantity, code: "Water Level", "h"; blank where unknown.
void ALLOCATE_DAT_RESULTS(const DatFile& dat, bool cellCentred, std::string_view quantity, std::string_view code,
                          Results& results);

/// Moves stored minimums before and stored maximums, then times of maximum, behind the ordinary times: the order in
/// which files of results hold them. To be called before anything is read.
void ORDER_DAT_STEPS(DatFile& dat);

/// Fills `times` of the results with the time of every whole step in file order.
void LIST_DAT_TIMES(const DatFile& dat, Results& results);

/// Reads the first step of the kind that the wanted number marks, else the first ordinary time in file order closer
/// than `tolerance` hours to it, with a WARNING when a later one is closer. Stops the run when there is none, naming
/// the nearest, or when the one wanted is damaged.
void FIND_DAT_TIME(DatFile& dat, const WantedTime& wanted, double tolerance, Results& results);

/// Fills the results record with the maximum of every value, and the cells wet at any time: the stored maximums (time
/// 99999.0) where the file ends with them, else the maximum over all times but the last, with a WARNING; the only step
/// of a file is taken as it is. Of vectors both components of the largest are kept. The time becomes
/// TIME_MAXIMUM. Stops the run when a step it needs is damaged.
void EXTRACT_DAT_MAXIMUMS(const DatFile& dat, Results& results);

/// Reads the next time in file order, from the first after READ_DAT_HEADER and LIST_DAT_TIMES. False, and nothing read,
/// when there is none left. A step without flags keeps those of the last step before it that has some.
bool NEXT_DAT_TIME(DatFile& dat, Results& results);
