#include "inputs/dat_reader.h"

#include "inputs/dat_layout.h"
#include "inputs/dat_steps.h"
#include "inputs/dat_time_text.h"
#include "inputs/results.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>

namespace {

DatFile dat;

void readIntoResults(std::size_t index) {
    Results& results = RESULTS_TO_FILL();
    READ_DAT_STEP(index, {results.x, results.y, results.wet});
    results.time = dat.steps[index].time;
    dat.next = index + 1;
}

void warnOfCloserTime(std::size_t taken, float wanted) {
    const auto away = [wanted](const DatStep& step) { return std::abs(step.time - wanted); };
    const auto closest = std::min_element(dat.steps.begin() + static_cast<std::ptrdiff_t>(taken), dat.steps.end(),
                                          [&](const DatStep& a, const DatStep& b) { return away(a) < away(b); });
    if (away(*closest) < away(dat.steps[taken]))
        DMESSAGE("WARNING - Time " + DAT_TIME_TEXT(closest->time) +
                 " in .dat file is closer to the specified time than " + DAT_TIME_TEXT(dat.steps[taken].time) +
                 ", the first within the tolerance, which is used.");
}

}  // namespace

const DatFile& DAT() { return dat; }

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
    std::vector<float>& times = RESULTS_TO_FILL().times;
    times.clear();
    for (const DatStep& step : dat.steps) times.push_back(step.time);
    REPORT("End of .dat file.");
}

void FIND_DAT_TIME(float time, float tolerance) {
    const auto wanted = [=](float t) { return std::abs(t - time) < tolerance; };
    const auto found =
        std::find_if(dat.steps.begin(), dat.steps.end(), [&](const DatStep& step) { return wanted(step.time); });
    if (found == dat.steps.end()) {
        if (dat.damagedTimeKnown && wanted(dat.damagedTime)) STOP_AT_DAMAGED_STEP();
        STOP_RUN("ERROR - Could not find specified timestep in .dat file.");
    }
    const auto index = static_cast<std::size_t>(found - dat.steps.begin());
    readIntoResults(index);
    RESULTS_TO_FILL().endReached = dat.next == dat.steps.size();
    REPORT("...Found time " + DAT_TIME_TEXT(found->time) + " in dat file.");
    warnOfCloserTime(index, time);
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
