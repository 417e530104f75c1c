#include "run_control/switches.h"

#include "platform/file_system.h"
#include "run_control/nearest_switch.h"
#include "run_control/output_formats.h"
#include "run_control/precision.h"
#include "run_control/switch_values.h"
#include "services/calendar.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/output_time.h"
#include "services/workers.h"
#include "text_utils/free_form.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

constexpr std::size_t POINT_TYPES_WIDTH = 10;

// ---- what most rows do ----
template <bool RunOptions::*Flag>
void set(RunOptions& options, const SwitchArgument&) {
    options.*Flag = true;
}

template <float RunOptions::*Field>
void setReal(RunOptions& options, const SwitchArgument& given) {
    options.*Field = gluedReal<float>(given);
}

template <std::string RunOptions::*Field>
void takeName(RunOptions& options, const SwitchArgument& given) {
    options.*Field = given.next;
}

void addOutput(RunOptions& options, const SwitchArgument& given) {
    if (std::find(options.outputs.begin(), options.outputs.end(), given.keyword) == options.outputs.end())
        options.outputs.push_back(given.keyword);
}

template <std::string RunOptions::*Field>
void addOutputAndTakeName(RunOptions& options, const SwitchArgument& given) {
    addOutput(options, given);
    options.*Field = given.next;
}

template <bool RunOptions::*Flag, std::string RunOptions::*Field>
void setText(RunOptions& options, const SwitchArgument& given) {
    options.*Flag = true;
    options.*Field = gluedText(given);
}

template <bool RunOptions::*Given, std::int32_t RunOptions::*Id>
void setDatasetNumber(RunOptions& options, const SwitchArgument& given) {
    options.*Id = gluedInteger(given);
    options.*Given = true;
    options.datasetByNumber = true;
}

// ---- rows of their own ----
void setGrid(RunOptions& options, const SwitchArgument& given) {
    double apart = 0.0;
    FreeForm next(given.next);
    if (given.behind.empty() && next.NEXT_REAL(apart) == FreeForm::Read::Value && next.ENDED())
        STOP_RUN("ERROR - The spacing is written without a blank behind the switch: -grid" + given.next);
    options.grid = true;
    if (given.behind.empty()) return;
    const auto spacing = gluedReal<double>(given);
    requireAbove(spacing > 0.0, given, "above zero");
    SET_GRID_SPACING(spacing);
}

/// Markers are laid along a profile at this distance, so it has to move ahead.
void setMarkerDistance(RunOptions& options, const SwitchArgument& given) {
    options.lpMarkerDistance = gluedReal<double>(given);
    requireAbove(options.lpMarkerDistance > 0.0, given, "above zero");
}

void setSearchDistance(RunOptions& options, const SwitchArgument& given) {
    options.cpSearchDistance = gluedReal<double>(given);
    requireAbove(options.cpSearchDistance >= 0.0, given, "zero or above");
}

void setRecordedField(RunOptions& options, const SwitchArgument& given) { options.recordedField = gluedText(given); }

void setPrecision(RunOptions& options, const SwitchArgument& given) {
    const Precision precision = READ_PRECISION(given.behind);
    options.precisionWidth = precision.units + precision.decimals + 1;
    options.precisionDecimals = precision.decimals;
    options.precisionGiven = true;
}

void setPointTypes(RunOptions& options, const SwitchArgument& given) {
    const std::string_view types = TRIMMED(given.behind);
    if (!types.empty()) options.pointTypes = FITTED(types, POINT_TYPES_WIDTH);
}

void setScaleFactor(RunOptions& options, const SwitchArgument& given) {
    const auto factor = gluedReal<float>(given);
    if (factor == 0.0F) STOP_RUN("ERROR - Scale Factor (-sf) can not equal zero");
    if (factor > 0.0F) {
        options.scaleFactor = factor;
        return;
    }
    options.fixedVectorLength = true;
    options.vectorLength = -factor;
    REPORT("Specified an fixed vector length of " + AREAL(options.vectorLength) + " metres.");
}

void setTailThickness(RunOptions& options, const SwitchArgument& given) {
    const auto factor = gluedReal<float>(given);
    if (factor < 0.0F) options.tailThicknessPerCellSize = true;
    options.tailThicknessFactor = std::abs(factor);
}

void setVmax(RunOptions& options, const SwitchArgument& given) {
    options.vmax = gluedReal<float>(given);
    options.vmaxNotGiven = false;
}

/// Told to the console at once, so that a question asked by a later switch already answers itself.
void setBatch(RunOptions& options, const SwitchArgument&) {
    options.batch = true;
    SET_BATCH(true);
}

void removePart(RunOptions& options, const SwitchArgument& given) {
    if (options.removedParts.size() >= MOST_REMOVED_PARTS)
        STOP_RUN("ERROR - Exceeded limit of number of MESHPARTS to remove");
    options.removedParts.push_back(FITTED(given.next, MESH_PART_WIDTH));
    options.keepAllMeshParts = false;
}

void setType(RunOptions& options, const SwitchArgument& given) {
    options.typeGiven = true;
    options.typeText = FITTED(gluedText(given), TYPE_NAME_WIDTH);
    if (ASAME(options.typeText, "all")) options.allTypes = true;
}

void setMarkerTime(RunOptions& options, const OutputTime& marker, std::string_view text) {
    options.timeGiven = true;
    options.outputTime.typed = static_cast<float>(marker.number);
    options.timeText = text;
}

void setTmax(RunOptions& options, const SwitchArgument&) {
    setMarkerTime(options, TIME_OF_MAXIMUM, "tmax");
    options.tmax = true;
}

/// Of -max and -min the last one given wins.
void setMax(RunOptions& options, const SwitchArgument&) {
    setMarkerTime(options, TIME_MAXIMUM, "Max");
    options.max = true;
    options.min = false;
}

void setMin(RunOptions& options, const SwitchArgument&) {
    setMarkerTime(options, TIME_MINIMUM, "Min");
    options.min = true;
    options.max = false;
}

void setTime(RunOptions& options, const SwitchArgument& given) {
    options.outputTime.typed = gluedReal<float>(given);
    options.timeGiven = true;
    options.timeValueGiven = true;
    options.timeText = given.text;
}

void setTolerance(RunOptions& options, const SwitchArgument& given) {
    options.timeTolerance = gluedReal<double>(given);
    requireAbove(*options.timeTolerance >= 0.0, given, "zero or above");
}

template <std::optional<double> TimeSubset::*End>
void setSubsetEnd(RunOptions& options, const SwitchArgument& given) {
    options.subset.*End = gluedReal<double>(given);
}

void setNth(RunOptions& options, const SwitchArgument& given) {
    options.subset.nth = gluedInteger(given);
    requireAbove(*options.subset.nth >= 1, given, "1 or above");
}

void setJobs(RunOptions& options, const SwitchArgument& given) {
    // Any whole number above the most is the most, however long.
    const bool many = given.behind.size() > 9 && given.behind.find_first_not_of("0123456789") == std::string::npos;
    const std::int32_t jobs = many ? MOST_JOBS : gluedInteger(given);
    requireAbove(jobs >= 1, given, "1 or above");
    options.jobs = std::min(jobs, MOST_JOBS);
}

void setGridMemory(RunOptions& options, const SwitchArgument& given) {
    const std::int32_t megabytes = gluedInteger(given);
    requireAbove(megabytes >= 16, given, "16 or above");
    options.gridMemory = static_cast<std::uint64_t>(megabytes) << 20;
}

/// In batch files made on Windows either separator serves.
std::string withSlashes(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

void setOutputFolder(RunOptions& options, const SwitchArgument& given) {
    options.outputFolder = withSlashes(TRIMMED(given.next));
    if (options.outputFolder.empty()) STOP_RUN("ERROR - No folder specified after " + given.argument + ".");
    while (options.outputFolder.size() > 1 && options.outputFolder.ends_with('/')) options.outputFolder.pop_back();
}

void setOutputName(RunOptions& options, const SwitchArgument& given) {
    options.outputName = withSlashes(TRIMMED(given.next));
    options.outputNameGiven = !options.outputName.empty();
    if (options.outputName.ends_with('/'))
        STOP_RUN("ERROR - " + given.next + " is a folder: -out needs the name of a file, such as " +
                 options.outputName + "result");
}

void takeSecondInput(RunOptions& options, const SwitchArgument& given) {
    options.difference = true;
    options.secondInput = given.next;
}

void addDriverOption(RunOptions& options, const SwitchArgument& given) { options.driverOptions.push_back(given.next); }

void addCrs(RunOptions& options, const SwitchArgument& given) {
    const std::string text(TRIMMED(given.next));
    if (text.empty()) STOP_RUN("ERROR - No coordinate system specified after " + given.argument + ".");
    if (std::find(options.crs.begin(), options.crs.end(), text) == options.crs.end()) options.crs.push_back(text);
}

/// "2020-01-31", "2020-01-31T12:00" or "2020-01-31 12:00:00Z" -> "2020-01-31T12:00:00".
void setEpoch(RunOptions& options, const SwitchArgument& given) {
    const std::optional<CalendarTime> time = READ_CALENDAR_TIME(TRIMMED(given.behind));
    if (!time) unreadable(given);
    options.epoch = CALENDAR_TEXT(*time, 0.0);
}

constexpr bool NEXT = true, WHOLE_WORD = true;
using O = RunOptions;

constexpr Switch TABLE[] = {
    {"2dm", takeName<&O::meshFile>, NEXT},
    {"grid", setGrid},
    {"mif", addOutput},
    {"vmi", set<&O::vmi>},
    {"asc", addOutput},
    {"shp", addOutput},
    {"txt", addOutput},
    {"fso", set<&O::freeSurfaceOnly>},
    {"sec", set<&O::seconds>},  // the "s" switches stand before "s"
    {"wld", addOutput},
    {"cd", setReal<&O::cutoffDepth>},
    {"cpsd", setSearchDistance},  // before "cp"
    {"lpmd", setMarkerDistance},  // before "lp"
    {"cp", addOutputAndTakeName<&O::cpFile>, NEXT},
    {"lp", addOutputAndTakeName<&O::lpFile>, NEXT},
    {"prec", setPrecision},
    {"vector", set<&O::vector>},
    {"arrow", set<&O::vector>},
    {"region", set<&O::region>},
    {"pts", setPointTypes},
    {"sf", setScaleFactor},
    {"ttf", setTailThickness},  // the "t" switches but one stand before "t"
    {"slant", setReal<&O::slantAngle>},
    {"vmax", setVmax},  // the "v" switches stand before "v"
    {"b", setBatch},
    {"vx", set<&O::vx>},
    {"vy", set<&O::vy>},
    {"va", set<&O::va>},
    {"vdir", set<&O::vdir>},
    {"compass", set<&O::compass>},
    {"verbose", set<&O::verbose>},
    {"rmp", removePart, NEXT},
    {"type", setType},
    {"tmax", setTmax},
    {"tAll", set<&O::allTimes>},
    {"max", setMax},
    {"min", setMin},
    {"out", setOutputName, NEXT},
    {"sgs", set<&O::suppressGridSize>},
    {"t", setTime},
    {"s", setDatasetNumber<&O::scalarIdGiven, &O::scalarId>},
    {"v", setDatasetNumber<&O::vectorIdGiven, &O::vectorId>},
    {"path", setText<&O::xmdfPathGiven, &O::xmdfPath>},
    {"folder", setText<&O::folderGiven, &O::folder>},
    {"dttol", setTolerance},
    {"cc", set<&O::cellCentred>},
    {"like", takeName<&O::likeGrid>, NEXT},
    {"prjwarn", set<&O::projectionWarning>},
    {"no1d", set<&O::no1d>},
    {"obs", setRecordedField},
    {"dif", takeSecondInput, NEXT, WHOLE_WORD},
    {"mesh2", takeName<&O::secondMesh>, NEXT},
    {"multiband", set<&O::multiband>},
    {"epoch", setEpoch},
    {"co", addDriverOption, NEXT, WHOLE_WORD},
    {"crs", addCrs, NEXT, WHOLE_WORD},
    {"jobs", setJobs},
    {"mem", setGridMemory},
    {"from", setSubsetEnd<&TimeSubset::from>},
    {"until", setSubsetEnd<&TimeSubset::until>},
    {"nth", setNth},
    {"into", setOutputFolder, NEXT, WHOLE_WORD},
};

}  // namespace

std::optional<Switch> FIND_SWITCH(std::string_view text) {
    for (const Switch& row : TABLE)
        if (row.wholeWord ? ASAME(text, row.keyword) : BEGINS_WITH(text, row.keyword)) return row;
    for (const OutputFormat& format : OUTPUT_FORMATS())
        if (format.wholeWord ? ASAME(text, format.keyword) : BEGINS_WITH(text, format.keyword))
            return Switch{format.keyword, addOutput};
    return {};
}

std::vector<Switch> ALL_SWITCHES() {
    std::vector<Switch> rows(std::begin(TABLE), std::end(TABLE));
    for (const OutputFormat& format : OUTPUT_FORMATS())
        if (std::none_of(rows.begin(), rows.end(), [&](const Switch& row) { return row.keyword == format.keyword; }))
            rows.push_back({format.keyword, addOutput});
    return rows;
}
