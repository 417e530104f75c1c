#include "run_control/sample_stage.h"

#include "gis/layers.h"
#include "inputs/coordinate_decimals.h"
#include "inputs/mesh_degrees.h"
#include "profiles/line_layer.h"
#include "raster/grid_plan.h"
#include "run_control/output_formats.h"
#include "run_control/output_names.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <utility>

namespace {

constexpr double MERGE_METRES = 0.001, MERGE_DEGREES = 0.00000001;

void checkLayer(const std::string& file, const std::string& what, const std::string& keyword) {
    if (TRIMMED(file).empty()) STOP_RUN("ERROR - No layer specified after " + keyword + ".");
    const std::string path = SPLIT_LAYER_PATH(file).file;
    const std::string name = FILEEXT(path).empty() ? path + ".mif" : path;
    std::vector<std::string> needed = {name};
    if (FILEEXT(name) == ".mif") needed.push_back(FILENAMEPATH(name) + ".mid");
    for (const std::string& one : needed)
        if (!FIND_FILE(one)) STOP_RUN("ERROR - " + what + " layer " + one + " (" + keyword + ") does not exist.");
}

/// The defaults are meant as metres, and a degree is a hundred kilometres.
void warnOfDegrees(double distance, const std::string& what, const std::string& keyword) {
    if (distance == DEFAULT_PROFILE_DISTANCE)
        DMESSAGE("WARNING - The mesh is in degrees: " + what + " " + AREAL8(distance) + " degrees, give " + keyword +
                 " for another distance.");
}

/// "t020.00" is shown as 20.00, an extreme by its own name.
TimeText timeText(const OutputLabel& label, bool seconds) {
    TimeText text;
    if (!label.timed) return {"change", ""};  // of a bed
    text.tag = text.shown = TIME_TAG(label, seconds);
    if (!label.time.ordinary()) return text;
    text.shown.erase(0, 1);
    const bool negative = text.shown.starts_with('-');
    std::size_t zeros = negative ? 1 : 0;
    while (zeros + 1 < text.shown.size() && text.shown[zeros] == '0' && text.shown[zeros + 1] != '.') ++zeros;
    text.shown = (negative ? "-" : "") + text.shown.substr(zeros);
    return text;
}

ProfileRules profileRules(const RunOptions& options, const Mesh& mesh, CoordinateKind coordinates) {
    const bool degrees = IS_IN_DEGREES(mesh, coordinates);
    if (degrees && GIVEN(options, Family::Profile)) {
        warnOfDegrees(options.lpMarkerDistance, "markers along profiles are every", "-lpmd");
        if (GIVEN(options, Family::Points))
            warnOfDegrees(options.cpSearchDistance, "profiles take calibration points within", "-cpsd");
    }
    ProfileRules rules;
    rules.stations = {options.lpMarkerDistance, degrees ? MERGE_DEGREES : MERGE_METRES};
    rules.searchDistance = options.cpSearchDistance;
    rules.coordinateDecimals = COORDINATE_DECIMALS(mesh, coordinates);
    rules.valueDecimals = options.precisionDecimals;
    return rules;
}

PointRules pointRules(const RunOptions& options, int coordinateDecimals) {
    return {coordinateDecimals, options.precisionWidth, options.precisionDecimals, options.verbose,
            options.recordedField};
}

void startLayerLibrary(const RunOptions& options, const Mesh& mesh) {
    if (mesh.xmin <= mesh.xmax) gisSetExtent(mesh.xmin, mesh.ymin, mesh.xmax, mesh.ymax);
    if (options.verbose) gisOpenInputLog(OUTPUT_BASE(options.inputFile));
}

}  // namespace

SampleStage::SampleStage(const RunOptions& options, const Projection& projection)
    : options_(options),
      projection_(projection),
      lp_(GIVEN(options, Family::Profile)),
      cp_(GIVEN(options, Family::Points)),
      times_(options) {
    if (options.samplesPackage) package_.reset(new SamplePackage{LayerFile("-gpkg", "GPKG", options.driverOptions)});
    if (lp_) checkLayer(options.lpFile, "Long profile", "-lp");
    if (cp_) checkLayer(options.cpFile, "Calibration point", "-cp");
    if (options.freeSurfaceOnly) DMESSAGE("WARNING - Obvert levels not available, -fso has no effect.");
}

/// The layers are read once; every kind of results is sampled at the same places.
void SampleStage::begin(const Mesh& mesh, const ResultsKind&) {
    if (std::exchange(started_, true)) return;
    if (lp_ && mesh.highResolution)
        DMESSAGE("WARNING - High Res Results not fully tested with long profiles. Please check results.");
    startLayerLibrary(options_, mesh);
    const ProfileRules rules = profileRules(options_, mesh, projection_.kind());
    std::vector<ProfileLine> lines;
    if (lp_) lines = READ_PROFILE_LINES(options_.lpFile);
    if (cp_) marks_ = READ_CALIBRATION_POINTS(options_.cpFile);
    const PointIndex index = INDEX_ELEMENTS(mesh, PlanKind::Nodes);
    if (lp_) profiles_ = START_PROFILES(mesh, index, std::move(lines), cp_ ? &marks_ : nullptr, rules);
    if (cp_) points_ = START_POINTS(mesh, index, marks_, pointRules(options_, rules.coordinateDecimals));
    if (profiles_) profiles_->package = package_.get();
    if (points_) points_->package = package_.get();
}

void SampleStage::beginDataset(const Results& results, const OutputLabel& label) {
    endDataset();
    datasets_.insert(label.base);
    DatasetFacts facts;
    facts.kind = PLAN_KIND(results.cellCentred, results.cornersOnly);
    facts.vector = results.vector;
    facts.quantity = results.quantity;
    facts.times = options_.allTimes ? results.times.size() : 1;
    if (profiles_) BEGIN_PROFILES(*profiles_, facts);
    if (points_) BEGIN_POINTS(*points_, facts);
}

void SampleStage::endDataset() {
    if (outputs_ == 0 || !points_) return;
    OutputLabel label = last_;
    label.timed = false;
    END_POINTS(*points_, OUTPUT_NAME(label, {"_cp.csv"}));
}

void SampleStage::take(const Results& results, OutputLabel label) {
    label.vector = false;  // whole vectors, whatever component was asked for
    if (outputs_ == 0 && package_) expectPackage(label);
    if (outputs_ == 0 || last_.base != label.base || last_.quantity != label.quantity) beginDataset(results, label);
    last_ = label;
    ++outputs_;
    times_.set(label);
    const TimeText time = timeText(label, options_.seconds);
    if (profiles_) TAKE_PROFILES(*profiles_, results, time.tag);
    if (points_) TAKE_POINTS(*points_, results, time, pointLayerBase(label));
}

void SampleStage::expectPackage(OutputLabel label) {
    label.timed = false;
    if (label.severalDatasets) label.base = label.run;
    package_->crs = projection_.text();
    times_.add(package_->timeFields);
    times_.set(label);
    times_.put(package_->timeValues);
    package_->file.expect(OUTPUT_NAME(label, {".gpkg"}) + ".gpkg");
}

/// Of the files of a copy, or of the layer in a package, which holds all times.
std::string SampleStage::pointLayerBase(OutputLabel label) {
    if (!package_) return OUTPUT_NAME(label, POINT_LAYER_FILES(marks_));
    package_->timeValues.clear();
    times_.put(package_->timeValues);
    label.timed = label.timed && !options_.allTimes;
    return FILENAMEEXT(USUAL_NAME(label));
}

void SampleStage::takeMesh(const Mesh& mesh, OutputLabel label) {
    begin(mesh, {});
    last_ = label;
    if (package_) expectPackage(label);
    std::vector<std::string_view> files = POINT_LAYER_FILES(marks_);
    files.push_back("_cp.csv");
    if (points_) WRITE_BED_POINTS(*points_, OUTPUT_NAME(label, files));
}

/// One output is named after its time, several times after their dataset, several datasets after the run.
std::string SampleStage::profileBase() const {
    if (datasets_.size() > 1) return last_.run;
    OutputLabel label = last_;
    label.timed = label.timed && outputs_ == 1 && !options_.allTimes;
    return OUTPUT_NAME(label, {});
}

void SampleStage::finish() {
    const bool taken =
        !last_.base.empty();  // a run whose datasets could not be read has no profiles, not even of the bed
    endDataset();
    if (profiles_ && taken) FINISH_PROFILES(*profiles_, profileBase());
    if (package_) package_->file.close();
    gisCloseAllLayers();
}
