#include "inputs/xmdf_choice.h"

#include "inputs/output_types.h"
#include "inputs/xmdf_messages.h"
#include "inputs/xmdf_search.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "text_utils/text.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::string_view PEAK_OF_LEVEL = "Time of Peak h";
constexpr std::string_view PEAK_OF_VELOCITY = "Time of Peak V";

bool holdsTimeSteps(XmdfFolder folder) { return folder == XmdfFolder::Temporal || folder == XmdfFolder::Other; }

bool isPeak(std::string_view path) {
    return ASAME(XMDF_LAST_PART(path), PEAK_OF_LEVEL) || ASAME(XMDF_LAST_PART(path), PEAK_OF_VELOCITY);
}

/// The marker of a dataset of times: its own time, else by the names of the two times of peak.
OutputTime singleOutputTime(std::string_view path, const OutputTime& time) {
    if (!time.ordinary()) return time;
    if (ASAME(XMDF_LAST_PART(path), PEAK_OF_LEVEL)) return TIME_OF_PEAK_LEVEL;
    return ASAME(XMDF_LAST_PART(path), PEAK_OF_VELOCITY) ? TIME_OF_PEAK_VELOCITY : time;
}

OutputTime timeOf(const XmdfItem& item) {
    const auto own = [&](std::int32_t step) { return item.facts.times[static_cast<std::size_t>(step - 1)]; };
    switch (item.read) {
        case XmdfRead::Maximum:
        case XmdfRead::TemporalMaximums: return TIME_MAXIMUM;
        case XmdfRead::Minimum: return TIME_MINIMUM;
        case XmdfRead::SingleOutput: return singleOutputTime(item.path, own(1));
        case XmdfRead::Time: return own(item.step);
        case XmdfRead::AllTimes: break;
    }
    return {};
}

/// For messages. A marker says nothing to a user: it gives way to the closest time that is one, else to its name.
std::string closestText(const std::vector<OutputTime>& times, OutputTime closest, const RunOptions& options) {
    const bool extreme = closest == TIME_MAXIMUM || closest == TIME_MINIMUM;
    double best = std::numeric_limits<double>::infinity();
    for (const OutputTime& time : times) {
        if (!extreme || !time.ordinary() || options.outputTime.away(time) >= best) continue;
        best = options.outputTime.away(time);
        closest = time;
    }
    if (closest == TIME_MAXIMUM) return "Max";
    if (closest == TIME_MINIMUM) return "Min";
    return TIME_TEXT(closest, TIME_DECIMALS(times, options.seconds), options.seconds);
}

}  // namespace

XmdfWanted XMDF_WANTED(const RunOptions& options) {
    if (options.allTimes) return XmdfWanted::AllTimes;
    if (!options.timeGiven) return XmdfWanted::NotGiven;
    switch (options.outputTime.kind()) {
        case TimeKind::Maximum: return XmdfWanted::Maximum;
        case TimeKind::Minimum: return XmdfWanted::Minimum;
        case TimeKind::TimeOfMaximum: return XmdfWanted::TimeOfPeak;
        default: return XmdfWanted::Time;
    }
}

std::string XMDF_PEAK_OF(std::string_view type) {
    if (IS_WATER_LEVEL(type)) return std::string(PEAK_OF_LEVEL);
    return std::string(IS_VELOCITY(type) ? PEAK_OF_VELOCITY : "");
}

std::string XMDF_QUANTITY_KEY(std::string_view path) {
    std::string key = LOWERCASE(path);
    for (const std::string_view folder : {"/maximums/", "/temporal/", "/minimums/"})
        if (const std::size_t at = key.find(folder); at != std::string::npos)
            return key.replace(at, folder.size(), "//");
    return key;
}

bool XmdfChoice::lacks(std::string what) {
    missing_ = std::move(what);
    return false;
}

bool XmdfChoice::readable(const std::string& path, XmdfFacts& facts) {
    try {
        facts = READ_XMDF_FACTS(entry_, path);
        return true;
    } catch (const XmdfUnreadable& unreadable) {
        unreadable_.insert({path, unreadable});
        return false;
    }
}

bool XmdfChoice::add(XmdfKind kind, std::int32_t number, XmdfRead read) {
    XmdfFacts facts;
    return !readable(entry_.of(kind).path(number), facts) || add(kind, number, read, std::move(facts));
}

bool XmdfChoice::add(XmdfKind kind, std::int32_t number, XmdfRead read, XmdfFacts facts, std::int32_t step) {
    XmdfItem item;
    item.file = file_;
    item.kind = kind;
    item.path = entry_.of(kind).path(number);
    item.read = read;
    item.step = step;
    item.facts = std::move(facts);
    item.time = timeOf(item);
    // A folder that holds both a dataset and its stored maximums leads to those twice.
    const auto same = [&](const XmdfItem& other) {
        return other.kind == item.kind && other.path == item.path && other.read == item.read;
    };
    if (std::none_of(items_.begin(), items_.end(), same)) items_.push_back(std::move(item));
    return true;
}

bool XmdfChoice::addStored(XmdfKind kind, std::int32_t number) {
    switch (XMDF_FOLDER_OF(entry_.of(kind).path(number))) {
        case XmdfFolder::Maximums: return add(kind, number, XmdfRead::Maximum);
        case XmdfFolder::Minimums: return add(kind, number, XmdfRead::Minimum);
        case XmdfFolder::Times: return add(kind, number, XmdfRead::SingleOutput);
        default: return addAllTimes(kind, number);
    }
}

/// Into a file of results the stored extremes go along.
bool XmdfChoice::addAllTimes(XmdfKind kind, std::int32_t number) {
    if (!options_.resultsFile) return add(kind, number, XmdfRead::AllTimes);
    const XmdfDatasets& datasets = entry_.of(kind);
    const std::string& path = datasets.path(number);
    if (const std::int32_t lowest = XMDF_TWIN(datasets, path, XmdfFolder::Minimums); lowest > 0)
        add(kind, lowest, XmdfRead::Minimum);
    add(kind, number, XmdfRead::AllTimes);
    if (const std::int32_t highest = XMDF_TWIN(datasets, path, XmdfFolder::Maximums); highest > 0)
        add(kind, highest, XmdfRead::Maximum);
    return true;
}

bool XmdfChoice::addMaximum(XmdfKind kind, std::int32_t stored, std::int32_t temporal) {
    if (stored == 0 && temporal == 0) return lacks("no maximums, and no output times to take them from");
    if (wanted_ == XmdfWanted::NotGiven) warnOfNoTime();
    return stored > 0 ? add(kind, stored, XmdfRead::Maximum) : add(kind, temporal, XmdfRead::TemporalMaximums);
}

bool XmdfChoice::addPeak(std::string_view quantity) {
    const std::string peak = XMDF_PEAK_OF(quantity);
    const XmdfDatasets& scalars = entry_.of(XmdfKind::Scalar);
    for (std::int32_t number = 1; number <= scalars.count() && !peak.empty(); ++number)
        if (XMDF_FOLDER_OF(scalars.path(number)) == XmdfFolder::Times &&
            ASAME(XMDF_LAST_PART(scalars.path(number)), peak))
            return add(XmdfKind::Scalar, number, XmdfRead::SingleOutput);
    return lacks("no time of peak");
}

bool XmdfChoice::addClosestTime(XmdfKind kind, std::int32_t number, bool stopsRun) {
    const std::string& path = entry_.of(kind).path(number);
    XmdfFacts facts;
    if (!readable(path, facts)) return true;
    const int decimals = TIME_DECIMALS(facts.times, options_.seconds);
    const std::string wanted = TIME_TEXT({options_.outputTime.hours}, decimals, options_.seconds);
    REPORT("Searching XMDF dataset for specified output time: " + wanted);
    OutputTime closest;
    const double tolerance = options_.timeTolerance.value_or(TIME_TOLERANCE(facts.times));
    const std::int32_t step = CLOSEST_XMDF_TIME(facts.times, options_.outputTime, tolerance, closest);
    if (step > 0) {
        REPORT("Found closest time: " + TIME_TEXT(closest, decimals, options_.seconds));
        const bool times = XMDF_FOLDER_OF(path) == XmdfFolder::Times;
        return add(kind, number, times ? XmdfRead::SingleOutput : XmdfRead::Time, std::move(facts), step);
    }
    const std::string text = closestText(facts.times, closest, options_);
    if (!stopsRun) return lacks("no output time " + wanted + ", the closest is " + text);
    DMESSAGE("ERROR - Closest time " + XMDF_QUOTED(text) + " is not within time search tolerance");
    REPORT("        " + XMDF_QUOTED(entry_.fileName) + ": " + path);
    EXITS();
}

bool XmdfChoice::addWithoutTime(XmdfKind kind, std::int32_t number) {
    const std::string& path = entry_.of(kind).path(number);
    if (!holdsTimeSteps(XMDF_FOLDER_OF(path))) return addStored(kind, number);
    XmdfFacts facts;
    if (!readable(path, facts)) return true;
    if (facts.times.size() == 1) return add(kind, number, XmdfRead::Time, std::move(facts), 1);
    if (!options_.datasetByNumber) return add(kind, number, XmdfRead::AllTimes, std::move(facts));
    return addMaximum(kind, XMDF_TWIN(entry_.of(kind), path, XmdfFolder::Maximums), number);
}

void XmdfChoice::warnOfNoTime() {
    if (!warned_) DMESSAGE("WARNING - No output time specified, using maximums.");
    warned_ = true;
}

bool XmdfChoice::addFound(XmdfKind kind) {
    const XmdfMatches& found = entry_.of(kind).found;
    switch (wanted_) {
        case XmdfWanted::NotGiven:
            if (found.maximum == 0 && found.temporal == 0 && found.times > 0)
                return add(kind, found.times, XmdfRead::SingleOutput);
            return addMaximum(kind, found.maximum, found.temporal);
        case XmdfWanted::Maximum: return addMaximum(kind, found.maximum, found.temporal);
        case XmdfWanted::Minimum:
            return found.minimum > 0 ? add(kind, found.minimum, XmdfRead::Minimum) : lacks("no minimums");
        case XmdfWanted::TimeOfPeak:
            return found.times > 0 ? add(kind, found.times, XmdfRead::SingleOutput) : lacks("no time of peak");
        case XmdfWanted::Time:
            return found.temporal > 0 ? addClosestTime(kind, found.temporal, true)
                                      : lacks("no temporal dataset to find the output time in");
        case XmdfWanted::AllTimes: break;
    }
    return found.temporal > 0 ? addAllTimes(kind, found.temporal) : lacks("no temporal dataset");
}

bool XmdfChoice::addDataset(XmdfKind kind, std::int32_t number, bool alone) {
    const XmdfDatasets& datasets = entry_.of(kind);
    const std::string& path = datasets.path(number);
    const XmdfFolder folder = XMDF_FOLDER_OF(path);
    const bool steps = holdsTimeSteps(folder);
    switch (wanted_) {
        case XmdfWanted::NotGiven: return addWithoutTime(kind, number);
        case XmdfWanted::Maximum: {
            const std::int32_t stored =
                folder == XmdfFolder::Maximums ? number : XMDF_TWIN(datasets, path, XmdfFolder::Maximums);
            return addMaximum(kind, steps || stored == number ? stored : 0, steps ? number : 0);
        }
        case XmdfWanted::Minimum: {
            const std::int32_t stored =
                folder == XmdfFolder::Minimums ? number : XMDF_TWIN(datasets, path, XmdfFolder::Minimums);
            return stored > 0 && (steps || stored == number) ? add(kind, stored, XmdfRead::Minimum)
                                                             : lacks("no minimums");
        }
        case XmdfWanted::TimeOfPeak:
            if (folder != XmdfFolder::Times) return addPeak(XMDF_LAST_PART(path));
            return alone || isPeak(path) ? addStored(kind, number) : lacks("no time of peak");
        case XmdfWanted::Time: return addClosestTime(kind, number, alone);
        case XmdfWanted::AllTimes: break;
    }
    return addStored(kind, number);
}

bool XmdfChoice::addOfAll(XmdfKind kind, std::int32_t number) {
    const XmdfDatasets& datasets = entry_.of(kind);
    const std::string& path = datasets.path(number);
    const XmdfFolder folder = XMDF_FOLDER_OF(path);
    const bool steps = holdsTimeSteps(folder);
    switch (wanted_) {
        case XmdfWanted::NotGiven:
        case XmdfWanted::Maximum:
            if (folder == XmdfFolder::Maximums) return addMaximum(kind, number, 0);
            return addMaximum(kind, 0, steps && XMDF_TWIN(datasets, path, XmdfFolder::Maximums) == 0 ? number : 0);
        case XmdfWanted::Minimum:
            return folder == XmdfFolder::Minimums ? add(kind, number, XmdfRead::Minimum) : lacks("no minimums");
        case XmdfWanted::TimeOfPeak:
            return folder == XmdfFolder::Times && isPeak(path) ? add(kind, number, XmdfRead::SingleOutput)
                                                               : lacks("no time of peak");
        case XmdfWanted::Time:
            return steps ? addClosestTime(kind, number, false)
                         : lacks("no temporal dataset to find the output time in");
        case XmdfWanted::AllTimes: break;
    }
    if (options_.resultsFile && folder == XmdfFolder::Times) return addStored(kind, number);  // as extremes do
    return steps ? addAllTimes(kind, number) : lacks("no temporal dataset");
}

bool XmdfChoice::holdsPeakOf(std::string_view path) const {
    const std::string peak = wanted_ == XmdfWanted::TimeOfPeak ? XMDF_PEAK_OF(XMDF_LAST_PART(path)) : std::string();
    return !peak.empty() && std::any_of(items_.begin(), items_.end(),
                                        [&](const XmdfItem& item) { return ASAME(XMDF_LAST_PART(item.path), peak); });
}
