#include "inputs/dat_reader.h"

#include "inputs/dat_layout.h"
#include "inputs/dat_steps.h"
#include "inputs/results.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <utility>

namespace {

DatFile dat;

void readIntoResults(std::size_t index) {
    Results& results = RESULTS_TO_FILL();
    READ_DAT_STEP(index, {results.x, results.y, results.wet});
    results.time = dat.steps[index].time;
    dat.next = index + 1;
}

/// The closest ordinary time from a step on; a step of another kind only where there is no ordinary one.
const OutputTime& closestFrom(std::size_t first, const WantedTime& wanted) {
    const auto away = [&](const DatStep& step) { return std::pair(!step.time.ordinary(), wanted.away(step.time)); };
    return std::min_element(dat.steps.begin() + static_cast<std::ptrdiff_t>(first), dat.steps.end(),
                            [&](const DatStep& a, const DatStep& b) { return away(a) < away(b); })
        ->time;
}

void warnOfCloserTime(std::size_t taken, const WantedTime& wanted) {
    const OutputTime& closest = closestFrom(taken, wanted);
    if (wanted.away(closest) < wanted.away(dat.steps[taken].time))
        DMESSAGE("WARNING - Time " + DAT_TIME_TEXT(dat, closest) +
                 " in .dat file is closer to the specified time than " + DAT_TIME_TEXT(dat, dat.steps[taken].time) +
                 ", the first within the tolerance, which is used.");
}

[[noreturn]] void stopWithoutTime(const WantedTime& wanted) {
    DMESSAGE("ERROR - Could not find specified timestep in .dat file.");
    const OutputTime& nearest = closestFrom(0, wanted);
    if (wanted.kind() == TimeKind::Ordinary && nearest.ordinary())
        REPORT("        The nearest output time is " + DAT_TIME_TEXT(dat, nearest));
    EXITS();
}

}  // namespace

const DatFile& DAT() { return dat; }

std::string DAT_TIME_TEXT(const DatFile& found, const OutputTime& time) {
    return TIME_TEXT(time, found.timeDecimals, OPTIONS().seconds);
}

const DatHeader& READ_DAT_HEADER(int file) {
    INITIALISE_RESULTS();
    REPORT("Reading Header for: " + GETNAM(file));
    const DatCards cards = READ_DAT_CARDS(file);
    REPORT("Number Cells: " + AINTEGER(cards.header.cells));
    REPORT("Number Nodes: " + AINTEGER(cards.header.nodes));
    REPORT("Data Description: " + cards.header.name);
    dat = INDEX_DAT_STEPS(file, cards);
    return dat.header;
}

void ALLOCATE_DAT_RESULTS(bool cellCentred, std::string_view quantity, std::string_view code) {
    CHECK_DAT_MEMORY(1);
    ALLOCATE_RESULTS(dat.header.nodes, dat.header.cells, dat.header.vector);
    Results& results = RESULTS_TO_FILL();
    results.cellCentred = cellCentred;
    results.quantity = quantity;
    results.code = code;
}

void LIST_DAT_TIMES() {
    REPORT("Finding Times and reading data for " + GETNAM(dat.file) + " (please wait) ...");
    std::vector<OutputTime>& times = RESULTS_TO_FILL().times;
    times.clear();
    for (const DatStep& step : dat.steps) times.push_back(step.time);
    REPORT("End of .dat file.");
}

void FIND_DAT_TIME(const WantedTime& wanted, double tolerance) {
    const auto marked = [&](const OutputTime& time) { return !time.ordinary() && time.kind == wanted.kind(); };
    const auto near = [&](const OutputTime& time) { return time.ordinary() && wanted.away(time) < tolerance; };
    const auto first = [](const auto& matches) {
        return std::find_if(dat.steps.begin(), dat.steps.end(),
                            [&](const DatStep& step) { return matches(step.time); });
    };
    auto found = first(marked);
    if (found == dat.steps.end()) found = first(near);
    if (found == dat.steps.end()) {
        if (dat.damagedTime && (marked(*dat.damagedTime) || near(*dat.damagedTime))) STOP_AT_DAMAGED_STEP();
        stopWithoutTime(wanted);
    }
    const auto index = static_cast<std::size_t>(found - dat.steps.begin());
    readIntoResults(index);
    RESULTS_TO_FILL().endReached = dat.next == dat.steps.size();
    REPORT("...Found time " + DAT_TIME_TEXT(dat, found->time) + " in dat file.");
    if (found->time.ordinary()) warnOfCloserTime(index, wanted);
}

bool NEXT_DAT_TIME() {
    Results& results = RESULTS_TO_FILL();
    if (results.endReached) return false;
    readIntoResults(dat.next);
    if (dat.next == dat.steps.size()) {
        REPORT("End of .dat file.");
        results.endReached = true;
    }
    return true;
}
