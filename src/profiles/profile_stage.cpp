#include "profiles/profile_stage.h"

#include "geometry/direction.h"
#include "geometry/no_value.h"
#include "gis/attributes.h"
#include "inputs/difference_report.h"
#include "profiles/profile_file.h"
#include "profiles/sampled_difference.h"
#include "raster/grid_extent.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <cstdint>
#include <new>
#include <utility>

namespace {

std::size_t setOf(ProfileStage& stage, PlanKind kind) {
    for (std::size_t i = 0; i < stage.sets.size(); ++i)
        if (stage.sets[i].kind == kind) return i;
    try {
        stage.sets.push_back(MAKE_PROFILE_SET(*stage.mesh, stage.index, kind, stage.lines, stage.points, stage.rules));
    } catch (const std::bad_alloc&) {
        STOP_RUN(OUT_OF_MEMORY);
    }
    return stage.sets.size() - 1;
}

/// "Depth_Max"; a name that another dataset has taken carries the quantity ("Magnitude_Wind_Max"), then a number.
std::string columnName(ProfileStage& stage, const std::string& what, const std::string& tag) {
    const std::string name = CLEANATTRIBUTENAME(what) + "_" + tag;
    if (!stage.facts.vector || !stage.columnNames.has(name)) return stage.columnNames.take(name, "_");
    return stage.columnNames.take(CLEANATTRIBUTENAME(what + "_" + stage.facts.quantity) + "_" + tag, "_");
}

/// The columns of one output time, without values.
std::vector<ProfileColumn> columnsOf(ProfileStage& stage, const std::string& tag) {
    std::vector<ProfileColumn> columns;
    std::vector<std::string> names = {stage.facts.quantity.empty() ? "Value" : stage.facts.quantity};
    if (stage.facts.vector) names = {"Magnitude", "Angle", "Along"};
    for (const std::string& name : names) columns.push_back({columnName(stage, name, tag), {}, {}, {}});
    return columns;
}

std::vector<float> anglesOf(const PointValues& values) {
    std::vector<float> angles(values.value.size(), NO_VALUE);
    for (std::size_t i = 0; i < angles.size(); ++i)
        if (!IS_MISSING(values.value[i])) angles[i] = DIRECTION_OF(values.east[i], values.north[i]);
    return angles;
}

std::vector<float> alongStations(const PointValues& values, const std::vector<Station>& stations) {
    std::vector<float> along(stations.size(), NO_VALUE);
    for (std::size_t i = 0; i < along.size(); ++i)
        if (!IS_MISSING(values.value[i]))
            along[i] = COMPONENT_ALONG(values.east[i], values.north[i], stations[i].east, stations[i].north);
    return along;
}

using Columns = std::vector<ProfileColumn>;

void sampleStations(ProfileStage& stage, const ProfileSet& set, const Results& results, Columns& columns) {
    SAMPLE_RESULTS(set.stationPlaces, *stage.mesh, results, stage.values);
    columns[0].stations = stage.values.value;
    if (!results.vector) return;
    columns[1].stations = anglesOf(stage.values);
    columns[2].stations = alongStations(stage.values, set.stations);
}

void samplePoints(ProfileStage& stage, const ProfileSet& set, const Results& results, Columns& columns) {
    SAMPLE_RESULTS(set.pointPlaces, *stage.mesh, results, stage.values);
    columns[0].points = stage.values.value;
    if (!results.vector) return;
    columns[1].points = anglesOf(stage.values);
    columns[2].points = stage.values.east;
    columns[2].pointsNorth = stage.values.north;
}

/// Column less column, at the stations or at the points.
void subtractColumns(const PointWetness& wetness, bool dryIsZero, std::vector<float> ProfileColumn::*values,
                     Columns& now, const Columns& was) {
    SUBTRACT_AT(wetness, dryIsZero, now[0].*values, was[0].*values);
    if (now.size() < 3) return;
    SUBTRACT_DIRECTIONS_AT(now[1].*values, was[1].*values);
    SUBTRACT_AT(wetness, false, now[2].*values, was[2].*values);
    if (values == &ProfileColumn::points) SUBTRACT_AT(wetness, false, now[2].pointsNorth, was[2].pointsNorth);
}

void sampleDifference(ProfileStage& stage, const ProfileSet& set, const DifferenceParts& parts, Columns& columns) {
    Columns was(columns.size());
    PointWetness wetness;
    sampleStations(stage, set, parts.was, was);
    wetness.was = WETNESS_AT(set.stationPlaces, parts.was, stage.values);
    sampleStations(stage, set, parts.now, columns);
    wetness.now = WETNESS_AT(set.stationPlaces, parts.now, stage.values);
    subtractColumns(wetness, parts.dryIsZero, &ProfileColumn::stations, columns, was);
    REPORT_DIFFERENCE(columns[0].stations, CHANGED_AREAS(*stage.mesh, parts));
    if (stage.points == nullptr) return;
    samplePoints(stage, set, parts.was, was);
    wetness.was = WETNESS_AT(set.pointPlaces, parts.was, stage.values);
    samplePoints(stage, set, parts.now, columns);
    wetness.now = WETNESS_AT(set.pointPlaces, parts.now, stage.values);
    subtractColumns(wetness, parts.dryIsZero, &ProfileColumn::points, columns, was);
}

void sampleColumns(ProfileStage& stage, const ProfileSet& set, const Results& results, Columns& columns) {
    if (results.parts != nullptr) return sampleDifference(stage, set, *results.parts, columns);
    sampleStations(stage, set, results, columns);
    if (stage.points != nullptr) samplePoints(stage, set, results, columns);
}

void stateMemory(const ProfileStage& stage, const ProfileSet& set) {
    const std::size_t places = set.stations.size() + set.pointPlaces.count();
    const std::size_t bytes = places * stage.facts.times * sizeof(float) * (stage.facts.vector ? 3 : 1);
    REPORT("Allocating " + AINTEGER8(static_cast<std::int64_t>(bytes / 1024 + 1)) + "Kb memory for " +
           AINTEGER8(static_cast<std::int64_t>(set.stations.size())) + " stations at " +
           AINTEGER8(static_cast<std::int64_t>(stage.facts.times)) + " times...");
}

}  // namespace

ProfileStage START_PROFILES(const Mesh& mesh, const PointIndex& index, std::vector<ProfileLine> lines,
                            const CalibrationPoints* points, const ProfileRules& rules) {
    CHECK_MARKERS(lines, rules.stations.markerDistance);
    ProfileStage stage;
    stage.mesh = &mesh;
    stage.index = index;
    stage.lines = std::move(lines);
    stage.points = points;
    stage.rules = rules;
    return stage;
}

void BEGIN_PROFILES(ProfileStage& stage, const DatasetFacts& facts) {
    stage.facts = facts;
    stage.set = setOf(stage, facts.kind);
    stateMemory(stage, stage.sets[stage.set]);
}

void TAKE_PROFILES(ProfileStage& stage, const Results& results, const std::string& tag) {
    ProfileSet& set = stage.sets[stage.set];
    try {
        std::vector<ProfileColumn> columns = columnsOf(stage, tag);
        sampleColumns(stage, set, results, columns);
        for (ProfileColumn& column : columns) set.columns.push_back(std::move(column));
    } catch (const std::bad_alloc&) {
        STOP_RUN(OUT_OF_MEMORY);
    }
}

void FINISH_PROFILES(ProfileStage& stage, const std::string& base) {
    if (stage.sets.empty()) setOf(stage, PlanKind::Corners);
    if (stage.sets.size() > 1)
        DMESSAGE(
            "Check - Values of nodes and of cells have stations of their own: every profile is written twice, the " +
            std::string(stage.sets.back().kind == PlanKind::Cells ? "cells" : "nodes") + " to \"_2.csv\".");
    UniqueNames files;
    for (const ProfileSet& set : stage.sets)
        for (std::size_t line = 0; line < stage.lines.size(); ++line)
            WRITE_PROFILE(PROFILE_FILE_NAME(base, stage.lines[line].name, files), set, line, stage.points, stage.rules);
    if (stage.package == nullptr) return;
    const std::string name = FILENAMEEXT(base);
    PUT_LINES(*stage.package, name + "_lines", stage.lines, stage.rules.coordinateDecimals);
    for (const ProfileSet& set : stage.sets)
        PUT_STATIONS(*stage.package, name + "_stations", set, stage.lines, stage.points, stage.rules);
}
