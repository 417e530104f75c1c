#include "profiles/point_stage.h"

#include "geometry/direction.h"
#include "geometry/no_value.h"
#include "inputs/difference_report.h"
#include "inputs/output_types.h"
#include "profiles/input_layer.h"
#include "profiles/point_layer.h"
#include "profiles/point_table.h"
#include "profiles/sampled_difference.h"
#include "raster/grid_extent.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

bool isWithinMesh(const Mesh& mesh, double x, double y) {
    return x >= mesh.xmin && x <= mesh.xmax && y >= mesh.ymin && y <= mesh.ymax;
}

/// Finds the points in the mesh for values of a kind, and the bed there.
void locate(PointStage& stage, PlanKind kind) {
    if (!stage.places.starts.empty() && stage.places.index.kind == kind) return;
    stage.index.kind = kind == PlanKind::Cells ? PlanKind::Nodes : kind;
    const SampledPoints bed = LOCATE_POINTS(stage.index, *stage.mesh, stage.points->x, stage.points->y);
    SAMPLE_BED(bed, *stage.mesh, stage.values);
    stage.elevation = stage.values.value;
    stage.bedElement = stage.values.element;
    stage.index.kind = kind;
    stage.places = LOCATE_POINTS(stage.index, *stage.mesh, stage.points->x, stage.points->y);
}

/// True when the dataset at hand is held against recorded values. The field is looked for once.
bool isCompared(PointStage& stage) {
    const bool asked = !stage.rules.recordedField.empty();
    if (stage.facts.vector || (!asked && !IS_WATER_LEVEL(stage.facts.quantity))) return false;
    if (!std::exchange(stage.recordedLookedFor, true))
        stage.recorded = FIND_RECORDED(*stage.points, stage.rules.recordedField);
    return !stage.recorded.field.empty();
}

PointColumns sampledColumns(PointStage& stage, const Results& results) {
    SAMPLE_RESULTS(stage.places, *stage.mesh, results, stage.values);
    PointColumns columns;
    columns.value = stage.values.value;
    columns.element = stage.values.element;
    for (std::size_t i = 0; i < columns.element.size(); ++i)
        if (columns.element[i] == 0) columns.element[i] = stage.bedElement[i];
    if (results.vector) {
        columns.angle.assign(columns.value.size(), NO_VALUE);
        for (std::size_t i = 0; i < columns.angle.size(); ++i)
            if (!IS_MISSING(columns.value[i]))
                columns.angle[i] = DIRECTION_OF(stage.values.east[i], stage.values.north[i]);
    }
    return columns;
}

/// The element of a point is that of what is now.
PointColumns differenceColumns(PointStage& stage, const DifferenceParts& parts) {
    PointWetness wetness;
    const PointColumns was = sampledColumns(stage, parts.was);
    wetness.was = WETNESS_AT(stage.places, parts.was, stage.values);
    PointColumns columns = sampledColumns(stage, parts.now);
    wetness.now = WETNESS_AT(stage.places, parts.now, stage.values);
    SUBTRACT_AT(wetness, parts.dryIsZero, columns.value, was.value);
    if (parts.now.vector) SUBTRACT_DIRECTIONS_AT(columns.angle, was.angle);
    REPORT_DIFFERENCE(columns.value, CHANGED_AREAS(*stage.mesh, parts));
    return columns;
}

PointColumns columnsOf(PointStage& stage, const Results& results, const TimeText& time) {
    const bool difference = results.parts != nullptr;
    PointColumns columns = difference ? differenceColumns(stage, *results.parts) : sampledColumns(stage, results);
    columns.time = time.shown;
    if (!difference && isCompared(stage)) columns.difference = DIFFERENCES(stage.recorded, columns.value);
    return columns;
}

void writeLayer(const PointStage& stage, const PointColumns& columns, std::string_view base) {
    std::vector<AppendedColumn> appended;
    if (!columns.value.empty()) appended.push_back({VALUE_COLUMN_NAME(stage.facts), columns.value, {}});
    if (!columns.angle.empty()) appended.push_back({"Angle", columns.angle, {}});
    if (stage.rules.verbose) appended.push_back({"SMS_ID", {}, columns.element});
    if (stage.rules.verbose || columns.value.empty()) appended.push_back({"Elevation", stage.elevation, {}});
    if (!columns.difference.empty()) appended.push_back({"Difference", columns.difference, {}});
    if (stage.package != nullptr)
        return PUT_POINTS(*stage.package, FILENAMEEXT(base) + "_cp", *stage.points, appended,
                          stage.rules.valueDecimals);
    WRITE_POINT_LAYER(std::string(base) + std::string(POINT_LAYER_FILES(*stage.points).front()), *stage.points,
                      appended, stage.rules.valueWidth, stage.rules.valueDecimals);
}

void reportValues(const PointStage& stage, const PointColumns& columns) {
    const auto have = std::count_if(columns.value.begin(), columns.value.end(), [](float v) { return !IS_MISSING(v); });
    REPORT(AINTEGER8(have) + " of " + AINTEGER8(static_cast<std::int64_t>(columns.value.size())) +
           " points have a value.");
    if (columns.difference.empty()) return;
    std::vector<bool> inMesh(stage.places.count());
    for (std::size_t i = 0; i < inMesh.size(); ++i) inMesh[i] = stage.places.isInMesh(i);
    REPORT_COMPARISON(*stage.points, stage.recorded, columns.difference, inMesh, stage.rules.valueDecimals);
}

}  // namespace

std::vector<std::string_view> POINT_LAYER_FILES(const CalibrationPoints& points) {
    if (IS_READ_BY_GDAL(points.file)) return {"_cp.gpkg"};
    if (FILEEXT(points.file) != ".shp") return {"_cp.mif", "_cp.mid"};
    return {"_cp.shp", "_cp.shx", "_cp.dbf", "_cp.prj", "_cp.cpg"};
}

PointStage START_POINTS(const Mesh& mesh, const PointIndex& index, const CalibrationPoints& points,
                        const PointRules& rules) {
    PointStage stage;
    stage.mesh = &mesh;
    stage.index = index;
    stage.points = &points;
    stage.rules = rules;
    bool within = false;
    for (std::size_t i = 0; i < points.count() && !within; ++i) within = isWithinMesh(mesh, points.x[i], points.y[i]);
    if (!within) DMESSAGE("WARNING - No calibration point lies within the mesh; check the projection.");
    if (!rules.recordedField.empty()) {
        stage.recorded = FIND_RECORDED(points, rules.recordedField);
        stage.recordedLookedFor = true;
    }
    return stage;
}

void BEGIN_POINTS(PointStage& stage, const DatasetFacts& facts) {
    stage.facts = facts;
    stage.taken.clear();
    const std::size_t bytes = stage.points->count() * facts.times * sizeof(float) * (facts.vector ? 3 : 2);
    REPORT("Allocating " + AINTEGER8(static_cast<std::int64_t>(bytes / 1024 + 1)) + "Kb memory for " +
           AINTEGER8(static_cast<std::int64_t>(stage.points->count())) + " calibration points at " +
           AINTEGER8(static_cast<std::int64_t>(facts.times)) + " times...");
    locate(stage, facts.kind);
}

void TAKE_POINTS(PointStage& stage, const Results& results, const TimeText& time, std::string_view layerBase) {
    try {
        stage.taken.push_back(columnsOf(stage, results, time));
    } catch (const std::bad_alloc&) {
        STOP_RUN(OUT_OF_MEMORY);
    }
    writeLayer(stage, stage.taken.back(), layerBase);
    reportValues(stage, stage.taken.back());
}

void END_POINTS(PointStage& stage, std::string_view csvBase) {
    WRITE_POINT_TABLE(std::string(csvBase) + "_cp.csv", stage);
    stage.taken.clear();
}

void WRITE_BED_POINTS(PointStage& stage, std::string_view base) {
    locate(stage, PlanKind::Corners);
    PointColumns bed;
    bed.element = stage.bedElement;
    writeLayer(stage, bed, base);
    stage.taken = {bed};
    END_POINTS(stage, base);
}
