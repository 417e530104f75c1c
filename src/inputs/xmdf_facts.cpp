#include "inputs/xmdf_facts.h"

#include "inputs/xmdf_messages.h"
#include "inputs/xmdf_search.h"
#include "services/console.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <limits>

namespace {

struct TimeUnit {
    std::string_view name;
    double seconds;
};
constexpr TimeUnit UNITS[] = {
    {"hour", SECONDS_PER_HOUR},
    {"hr", SECONDS_PER_HOUR},
    {"h", SECONDS_PER_HOUR},
    {"minute", 60.0},
    {"min", 60.0},
    {"second", 1.0},
    {"sec", 1.0},
    {"s", 1.0},
    {"day", SECONDS_PER_DAY},
    {"d", SECONDS_PER_DAY},
};

const TimeUnit* unitOf(std::string_view name) {
    const auto* row = std::find_if(std::begin(UNITS), std::end(UNITS), [&](const TimeUnit& unit) {
        return ASAME(unit.name, name) || ASAME(std::string(unit.name) + "s", name);
    });
    return row == std::end(UNITS) ? nullptr : row;
}

void say(XmdfSaying saying, const std::string& step) {
    if (saying == XmdfSaying::Steps) REPORT(step);
}

void readCounts(XmdfGroupState& group, XmdfFacts& facts, XmdfSaying saying) {
    CHECK_XMDF(xfgetdatasetnumvals_f(group, facts.values),
               "ERROR - Exracting Number of Values in Dataset [XF_GET_DATASET_NUMVALS].");
    say(saying, "Number of nodes: " + AINTEGER(facts.values));
    CHECK_XMDF(xfgetdatasetnumactive_f(group, facts.flags),
               "ERROR - Exracting Number Active in Dataset [XF_GET_DATASET_NUMACTIVE].");
    say(saying, "Number of cells: " + AINTEGER(facts.flags));
    CHECK_XMDF(xfgetdatasettimeunits_f(group, facts.timeUnits),
               "ERROR - Exracting Time Unit Dataset [XF_GET_DATASET_TIME_UNITS].");
    say(saying, "Time Units: " + facts.timeUnits);
}

std::vector<double> readTimes(XmdfGroupState& group) {
    std::int32_t count = 0;
    CHECK_XMDF(xfgetdatasetnumtimes_f(group, count),
               "ERROR - Extracting number of times [XF_GET_DATASET_NUM_TIMES] from xmdf file");
    std::vector<double> times;
    CHECK_XMDF(xfgetdatasettimes_f(group, times), "ERROR - Extracting times [XF_GET_DATASET_TIMES] from xmdf file");
    return times;
}

/// A run that was stopped while it wrote leaves one member longer than another.
void warnOfTimesLeftOut(XmdfGroupState& group, const std::string& path, XmdfFacts& facts) {
    const std::string counts = XMDF_TIMES_LEFT_OUT(group);
    facts.cut = !counts.empty();
    if (!facts.cut) return;
    DMESSAGE("WARNING - Dataset " + XMDF_QUOTED(path) + " was not written to its end: " + counts + ". Only the first " +
             std::to_string(facts.times.size()) + " can be used.");
}

}  // namespace

XmdfFacts READ_XMDF_FACTS(XmdfEntry& entry, const std::string& path, XmdfSaying saying) {
    say(saying, "Getting time units, number of cells and nodes from XMDF file " + XMDF_QUOTED(entry.fileName));
    XmdfGroup group;
    CHECK_XMDF(xfopengroup_f(*entry.file, path, group),
               "ERROR - Could not open data group " + XMDF_QUOTED(path) + " in XMDF file.");
    XmdfFacts facts;
    readCounts(*group, facts, saying);
    say(saying, "Extracting number of outputs for temporal data in " + XMDF_QUOTED(entry.fileName));
    facts.storedTimes = readTimes(*group);
    xfgetdatasetunits_f(*group, facts.units);
    const bool derived = XMDF_FOLDER_OF(path) == XmdfFolder::Times;
    const TimeUnit* unit = unitOf(facts.timeUnits);
    if (unit != nullptr) facts.secondsPerUnit = unit->seconds;
    facts.times =
        OUTPUT_TIMES(facts.storedTimes, facts.secondsPerUnit, derived ? TimeMarkers::All : TimeMarkers::Extremes);
    warnOfTimesLeftOut(*group, path, facts);
    const auto ordinary = [](const OutputTime& time) { return time.ordinary(); };
    if (unit == nullptr && (derived || std::any_of(facts.times.begin(), facts.times.end(), ordinary)))
        DMESSAGE("WARNING - Unknown time unit " + XMDF_QUOTED(facts.timeUnits) + " of " + XMDF_QUOTED(path) +
                 ", taken as hours.");
    return facts;
}

std::int32_t CLOSEST_XMDF_TIME(const std::vector<OutputTime>& times, const WantedTime& wanted, double tolerance,
                               OutputTime& closest) {
    double best = std::numeric_limits<double>::infinity();
    std::int32_t number = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double away = wanted.away(times[i]);
        if (!(away < best)) continue;
        best = away;
        closest = times[i];
        number = static_cast<std::int32_t>(i) + 1;
    }
    return static_cast<float>(best) - static_cast<float>(tolerance) > 0.0F ? 0 : number;
}
