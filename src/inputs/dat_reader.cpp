#include "inputs/dat_reader.h"

#include "inputs/dat_layout.h"
#include "inputs/dat_steps.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <utility>

namespace {

void readIntoResults(DatFile& dat, std::size_t index, Results& results) {
    READ_DAT_STEP(dat, index, {results.x, results.y, results.wet});
    results.time = dat.steps[index].time;
    dat.next = index + 1;
}

/// The closest ordinary time from a step on; a step of another kind only where there is no ordinary one.
const OutputTime& closestFrom(const DatFile& dat, std::size_t first, const WantedTime& wanted) {
    const auto away = [&](const DatStep& step) { return std::pair(!step.time.ordinary(), wanted.away(step.time)); };
    return std::min_element(dat.steps.begin() + static_cast<std::ptrdiff_t>(first), dat.steps.end(),
                            [&](const DatStep& a, const DatStep& b) { return away(a) < away(b); })
        ->time;
}

void warnOfCloserTime(const DatFile& dat, std::size_t taken, const WantedTime& wanted) {
    const OutputTime& closest = closestFrom(dat, taken, wanted);
    if (wanted.away(closest) < wanted.away(dat.steps[taken].time))
        DMESSAGE("WARNING - Time " + DAT_TIME_TEXT(dat, closest) +
                 " in .dat file is closer to the specified time than " + DAT_TIME_TEXT(dat, dat.steps[taken].time) +
                 ", the first within the tolerance, which is used.");
}

[[noreturn]] void stopWithoutTime(const DatFile& dat, const WantedTime& wanted) {
    DMESSAGE("ERROR - Could not find specified timestep in .dat file.");
    const OutputTime& nearest = closestFrom(dat, 0, wanted);
    if (wanted.kind() == TimeKind::Ordinary && nearest.ordinary())
        REPORT("        The nearest output time is " + DAT_TIME_TEXT(dat, nearest));
    EXITS();
}

}  // namespace

std::string DAT_TIME_TEXT(const DatFile& dat, const OutputTime& time) {
    return TIME_TEXT(time, dat.timeDecimals, dat.seconds);
}

DatFile READ_DAT_HEADER(int file, bool seconds) {
    REPORT("Reading Header for: " + GETNAM(file));
    const DatCards cards = READ_DAT_CARDS(file);
    REPORT("Number Cells: " + AINTEGER(cards.header.cells));
    REPORT("Number Nodes: " + AINTEGER(cards.header.nodes));
    REPORT("Data Description: " + cards.header.name);
    return INDEX_DAT_STEPS(file, cards, seconds);
}

void ALLOCATE_DAT_RESULTS(const DatFile& dat, bool cellCentred, std::string_view quantity, std::string_view code,
                          Results& results) {
    CHECK_DAT_MEMORY(dat, 1);
    ALLOCATE_RESULTS(dat.header.nodes, dat.header.cells, dat.header.vector, results);
    results.endReached = false;
    results.cellCentred = cellCentred;
    results.flagged = std::any_of(dat.steps.begin(), dat.steps.end(), [](const DatStep& step) { return step.flags; });
    results.units.clear();
    results.quantity = quantity;
    results.code = code;
}

void ORDER_DAT_STEPS(DatFile& dat) {
    const auto place = [](const DatStep& step) {
        switch (step.time.kind) {
            case TimeKind::Minimum: return 0;
            case TimeKind::Maximum: return 2;
            case TimeKind::TimeOfMaximum: return 3;
            default: return 1;
        }
    };
    std::stable_sort(dat.steps.begin(), dat.steps.end(),
                     [&](const DatStep& a, const DatStep& b) { return place(a) < place(b); });
}

void LIST_DAT_TIMES(const DatFile& dat, Results& results) {
    REPORT("Finding Times and reading data for " + GETNAM(dat.file) + " (please wait) ...");
    results.times.clear();
    for (const DatStep& step : dat.steps) results.times.push_back(step.time);
    REPORT("End of .dat file.");
}

void FIND_DAT_TIME(DatFile& dat, const WantedTime& wanted, double tolerance, Results& results) {
    const auto marked = [&](const OutputTime& time) { return !time.ordinary() && time.kind == wanted.kind(); };
    const auto near = [&](const OutputTime& time) { return time.ordinary() && wanted.away(time) < tolerance; };
    const auto first = [&](const auto& matches) {
        return std::find_if(dat.steps.begin(), dat.steps.end(),
                            [&](const DatStep& step) { return matches(step.time); });
    };
    auto found = first(marked);
    if (found == dat.steps.end()) found = first(near);
    if (found == dat.steps.end()) {
        if (dat.damagedTime && (marked(*dat.damagedTime) || near(*dat.damagedTime))) STOP_AT_DAMAGED_STEP(dat);
        stopWithoutTime(dat, wanted);
    }
    const auto index = static_cast<std::size_t>(found - dat.steps.begin());
    readIntoResults(dat, index, results);
    results.endReached = dat.next == dat.steps.size();
    REPORT("...Found time " + DAT_TIME_TEXT(dat, found->time) + " in dat file.");
    if (found->time.ordinary()) warnOfCloserTime(dat, index, wanted);
}

bool NEXT_DAT_TIME(DatFile& dat, Results& results) {
    if (results.endReached) return false;
    const std::size_t index = dat.next, stride = dat.before < index ? index - dat.before : 1;
    readIntoResults(dat, index, results);
    READ_DAT_AHEAD(dat, index + stride);  // whoever takes every so many times goes on so
    dat.before = index;
    if (dat.next == dat.steps.size()) {
        REPORT("End of .dat file.");
        results.endReached = true;
    }
    return true;
}
