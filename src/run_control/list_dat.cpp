#include "inputs/dat_steps.h"
#include "run_control/file_listing.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <cstddef>
#include <vector>

namespace {

std::string unitName(double seconds) {
    if (seconds == 1.0) return "Seconds";
    if (seconds == 60.0) return "Minutes";
    return seconds == SECONDS_PER_DAY ? "Days" : "Hours";
}

ValueRange rangeRead(const DatFile& dat) {
    Results results;
    ALLOCATE_DAT_RESULTS(dat, false, {}, {}, results);
    ValueRange range;
    for (std::size_t step = 0; step < dat.steps.size(); ++step) {
        READ_DAT_STEP(dat, step, {results.x, results.y, results.wet});
        range = WIDENED(range, VALUE_RANGE(results));
    }
    return range;
}

}  // namespace

void LIST_DAT(const std::string& name, bool verbose, Listing& listing) {
    const DatFile dat = READ_DAT_HEADER(OPEN_FILE(name, "I ", "dat"), false);
    if (dat.damaged) NOTE_INCOMPLETE();
    const ValueRange range = verbose ? rangeRead(dat) : ValueRange{};
    std::vector<OutputTime> times;
    std::vector<double> stored;
    bool flags = false;
    for (const DatStep& step : dat.steps) {
        times.push_back(step.time);
        stored.push_back(step.time.ordinary() ? step.time.number * SECONDS_PER_HOUR / dat.secondsPerUnit
                                              : step.time.number);
        flags = flags || step.flags;
    }
    listing.line("File: " + name);
    listing.line("1 " + std::string(dat.header.vector ? "V " : "S ") + dat.header.name);
    listing.line("   Nodes or cells: " + AINTEGER(dat.header.nodes));
    listing.line("   Wet/dry flags: " + (flags ? AINTEGER(dat.header.cells) : "none"));
    listing.range(range, verbose);
    listing.times(times, stored, unitName(dat.secondsPerUnit));
    CLOSE_FILE(dat.file);
}
