#include "inputs/dat_source.h"

#include "inputs/output_types.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>

namespace {

/// The text behind the last underscore of the name part: "h" of "run/x_h.dat"; blank when there is none.
std::string typeTag(const std::string& name) {
    const std::string path = FILENAMEPATH(name);
    const std::string base = FILENAMEPATHNO_(name);
    return path.size() > base.size() ? path.substr(base.size() + 1) : std::string{};
}

const OutputType* identify(const std::string& name, const DatHeader& header) {
    if (const OutputType* type = OUTPUT_TYPE_OF_TAG(typeTag(name), header.vector)) return type;
    const OutputType* type = OUTPUT_TYPE_OF_NAME(header.name);
    return type != nullptr && type->vector == header.vector ? type : nullptr;
}

}  // namespace

DatSource::DatSource(const std::string& name, const TimeChoice& choice)
    : choice_(choice), dat_(READ_DAT_HEADER(OPEN_FILE(name, "I ", "dat"), choice.seconds)) {
    if (choice.ordered && choice.of == TimeChoice::Of::All) ORDER_DAT_STEPS(dat_);
    Dataset dataset;
    dataset.vector = dat_.header.vector;
    dataset.values = dat_.header.nodes;
    dataset.flags = dat_.header.cells;
    dataset.quantity = dat_.header.name;
    if (choice.of == TimeChoice::Of::All) {
        dataset.outputs = dat_.steps.size();
        dataset.timed =
            std::any_of(dat_.steps.begin(), dat_.steps.end(), [](const DatStep& step) { return step.time.ordinary(); });
    }
    if (const OutputType* type = identify(name, dat_.header)) {
        dataset.quantity = type->name;
        dataset.code = type->code;
        REPORT("Data Type identified as: \"" + dataset.quantity + "\"");
    } else {
        DMESSAGE("WARNING - Could not identify data type of .dat file");
    }
    datasets_.push_back(std::move(dataset));
}

void DatSource::settle(const std::vector<bool>& cellCentred, Results& results) {
    ALLOCATE_DAT_RESULTS(dat_, cellCentred.front(), datasets_.front().quantity, datasets_.front().code, results);
    REPORT("Allocating time arrays for .dat file...");
    LIST_DAT_TIMES(dat_, results);
    tolerance_ = choice_.tolerance.value_or(TIME_TOLERANCE(results.times));
    REPORT("Time search tolerance = " + AREAL8(SHOWN_TIME({tolerance_}, choice_.seconds)));
    REPORT("Found " + AINTEGER8(static_cast<std::int64_t>(dat_.steps.size())) + " timesteps in .dat file.");
    REPORT("Rewinding .dat file...");
}

std::vector<OutputTime> DatSource::times() const {
    std::vector<OutputTime> times;
    for (const DatStep& step : dat_.steps) times.push_back(step.time);
    return times;
}

std::vector<OutputTime> DatSource::outputTimes(std::size_t) const {
    return choice_.of == TimeChoice::Of::All ? times() : std::vector<OutputTime>{};
}

void DatSource::goTo(std::size_t output, Results& results) {
    dat_.next = output;
    results.endReached = output >= dat_.steps.size();
}

void DatSource::begin(std::size_t, bool, Results&) {  // settle() has sized the record
    begun_ = false;
    if (choice_.of == TimeChoice::Of::All && !choice_.some) REPORT("Processing all output times.");
}

void DatSource::readOne(Results& results) {
    if (choice_.of == TimeChoice::Of::One) return FIND_DAT_TIME(dat_, choice_.wanted, tolerance_, results);
    if (choice_.of == TimeChoice::Of::NotGiven) {
        if (dat_.steps.size() == 1 && !dat_.damaged) {
            NEXT_DAT_TIME(dat_, results);
            return;
        }
        DMESSAGE("WARNING - No output time specified, using maximums.");
    }
    EXTRACT_DAT_MAXIMUMS(dat_, results);
}

bool DatSource::next(Results& results) {
    if (choice_.of == TimeChoice::Of::All) {
        if (NEXT_DAT_TIME(dat_, results)) return true;
        if (dat_.damaged) NOTE_INCOMPLETE();
        return false;
    }
    if (begun_) return false;
    begun_ = true;
    readOne(results);
    return true;
}

void DatSource::finish() {
    dat_.ahead = nullptr;
    CLOSE_FILE(dat_.file);
    REPORT("Finished processing .dat file.");
}
