// Counts, time unit and times of one dataset, and the search for an output time in it.
#pragma once

#include "inputs/xmdf_catalogue.h"
#include "services/output_time.h"

#include <string>
#include <vector>

struct XmdfFacts {
    std::int32_t values = 0;                   ///< per time: the nodes of the model, or its cells
    std::int32_t flags = 0;                    ///< wet/dry flags per time; 0: none, every cell is wet
    double secondsPerUnit = SECONDS_PER_HOUR;  ///< of the file's time unit
    std::string units;                         ///< of the values, blank where the file does not say
    std::string timeUnits;                     ///< as it stands in the file
    std::vector<OutputTime> times;             ///< in file order; never empty
    std::vector<double> storedTimes;           ///< the same in the file's unit
    bool cut = false;                          ///< the file holds parts of further times
};

/// Whether the steps of reading are said, as a conversion does; a listing says what it finds in its own words.
enum class XmdfSaying : std::uint8_t { Steps, Nothing };

/// Reads and reports them. An unknown time unit is taken as hours, with a WARNING where the dataset has a time that
/// depends on it. Where Times, Values and Active differ in length the times that they share count, with a WARNING.
/// Throws XmdfUnreadable, naming the file and the dataset, when something is missing, of the wrong shape or no number.
XmdfFacts READ_XMDF_FACTS(XmdfEntry& entry, const std::string& path, XmdfSaying saying = XmdfSaying::Steps);

/// Number (from 1) of the time closest to the wanted one, the earliest of equally close ones, when it lies within the
/// tolerance, in hours: a difference equal to it, in single precision, does. 0 otherwise. closest: that time in either
/// case.
std::int32_t CLOSEST_XMDF_TIME(const std::vector<OutputTime>& times, const WantedTime& wanted, double tolerance,
                               OutputTime& closest);
