#include "run_control/driver.h"

#include "gis/layers.h"
#include "inputs/mesh.h"
#include "inputs/one_d_triangles.h"
#include "platform/processors.h"
#include "raster/odd_quads.h"
#include "run_control/arguments.h"
#include "run_control/convert_difference.h"
#include "run_control/convert_results.h"
#include "run_control/file_listing.h"
#include "run_control/file_questions.h"
#include "run_control/grid_choice.h"
#include "run_control/input_files.h"
#include "run_control/output_formats.h"
#include "run_control/output_stage.h"
#include "run_control/run_crs.h"
#include "run_control/switch_checks.h"
#include "run_control/usage.h"
#include "run_control/world_file.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "services/phases.h"
#include "services/projection.h"
#include "services/workers.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace {

void initialiseRun() {
    INITIALISE_CONSOLE();
    INITIALISE_EXITS();
    INITIALISE_FILES();
    INITIALISE_PHASES();
    SET_FILE_QUESTIONS(CONSOLE_FILE_QUESTIONS());
    MESH_TO_FILL() = Mesh{};
    INITIALISE_RESULTS();
    gisInitialise();
}

void explainWrongSwitches() {
    if (!OPTIONS().inputError) return;
    PRINT_USAGE();
    EXITS(STATUS_USAGE);
}

std::string counted(int count, const std::string& what) {
    return AINTEGER(count) + " " + what + (count == 1 ? "" : "s");
}

/// What the run has come to. The time it took differs from run to run, so it is told only when asked for.
void reportCounts(std::chrono::steady_clock::time_point start) {
    const int warnings = MESSAGE_COUNTS().byLevel[static_cast<std::size_t>(MessageLevel::Warning)];
    REPORT(counted(OUTPUTS_WRITTEN(), "output"));
    if (warnings > 0) REPORT(counted(warnings, "warning"));
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!OPTIONS().verbose) return;
    REPORT(AREALD8(taken.count(), 1) + " seconds");
    REPORT("   " + PHASE_SECONDS());
}

/// The normal end: with -b at once, else behind the closing pause.
int finish() {
    if (!OPTIONS().batch) EXITS(FINISHED_STATUS());
    FLUSH_CONSOLE();
    return FINISHED_STATUS();
}

int convertWorldFile() {
    FIND_INPUT_FILE(" Please enter the MapInfo .tab file -> ");
    PREPARE_INTO_FOLDER();
    if (!MAKE_WORLD_FILE()) EXITS();
    return finish();
}

int listInput() {
    InputFiles files = FIND_INPUT_FILE();
    FIND_INPUT_KIND(files);
    PREPARE_INTO_FOLDER();
    LIST_FILE(files, OPTIONS().verbose, OPTIONS().allTimes);
    REPORT("Finished.");
    return finish();
}

/// A type, a scalar or a vector number chooses among the datasets of an .xmdf; other inputs hold one.
void checkDatasetSwitches(const BothSides& sides) {
    const RunOptions& options = OPTIONS();
    if (sides.now.kind == InputKind::Xmdf || sides.was.kind == InputKind::Xmdf) return;
    if (options.typeGiven || options.scalarIdGiven || options.vectorIdGiven)
        DMESSAGE(
            "WARNING - Data type specified (-type, -s<scalar_ID> or -v<vector_ID> switch) this is ignored for non "
            "XMDF "
            "files");
}

void dropSubsetOfMesh(const InputFiles& input) {
    if (input.kind != InputKind::Mesh || !OPTIONS().subset.given()) return;
    DMESSAGE("WARNING - A mesh alone has no output times, -from, -until and -nth ignored.");
    DROP_TIME_SUBSET();
}

/// A layer's spacing is asked for behind the input, whose folder says what its units are; a raster's comes first.
InputFiles askInGoodOrder() {
    const bool layer = GIVEN(OPTIONS(), Family::Layer);
    if (!layer) CHECK_GRID_SWITCHES();
    InputFiles files = FIND_INPUT_FILE();
    if (layer) CHECK_GRID_SWITCHES();
    return files;
}

/// Water level lines belong into a grid and a file of results; every other output tells them from the cells.
void settleOneD(Mesh& mesh) {
    if (!GIVEN(OPTIONS(), Family::Raster) && !OPTIONS().resultsFile) SETTLE_ONE_D_TRIANGLES(mesh, OPTIONS().no1d);
}

/// The mesh reader has already marked what -rmp leaves out; this tells the user that it counts.
void reportRemovedNodes(const Mesh& mesh) {
    if (OPTIONS().keepAllMeshParts) return;
    REPORT("Filtering out nodes from removed meshparts...");
    Progress("Node: ").finish(mesh.nodeCount);
    REPORT("   Done...");
}

void convertMesh(const std::string& base, const Mesh& mesh, OutputStages& stages) {
    OutputLabel label;
    label.base = label.run = base;
    label.timed = false;
    DiskUse use;
    for (const auto& stage : stages) use.add(stage->diskUse(mesh, {.cornersOnly = true}, {}));
    CHECK_DISK_ROOM(use, OUTPUT_STEM(base));
    for (const auto& stage : stages) {
        stage->takeMesh(mesh, label);
        stage->finish();
    }
}

void convertInput(BothSides sides, const Mesh& mesh, CoordinateKind coordinates, OutputStages& stages) {
    const std::string base = OUTPUT_BASE(sides.now.input);
    if (OPTIONS().difference) return CONVERT_DIFFERENCE(std::move(sides), base, mesh, coordinates, stages);
    if (sides.now.kind == InputKind::Mesh) return convertMesh(base, mesh, stages);
    const auto source = WITH_SUBSET(OPEN_SOURCE(sides.now, std::move(sides.nowResults), mesh), sides.now);
    CONVERT_RESULTS(*source, base, mesh, RESULTS_TO_FILL(), stages);
}

}  // namespace

int CONVERT(int argc, const char* const argv[]) {
    const auto start = std::chrono::steady_clock::now();
    initialiseRun();
    READ_ARGUMENTS(argc, argv);
    explainWrongSwitches();
    CHECK_SWITCHES();
    explainWrongSwitches();
    SET_JOBS(OPTIONS().jobs.value_or(PROCESSORS_ALLOWED()));
    if (GIVEN(OPTIONS(), Family::WorldFile)) return convertWorldFile();
    if (GIVEN(OPTIONS(), Family::Listing)) return listInput();
    Projection projection;
    OutputStages stages = MAKE_OUTPUT_STAGES(projection);
    BothSides sides;
    sides.now = askInGoodOrder();
    PREPARE_INTO_FOLDER();
    if (!MAY_WRITE_SEVERAL(OPTIONS())) PREPARE_OUTPUT_FOLDER();
    RunCrs crs(OPTIONS(), OUTPUT_FORMAT(OPTIONS()), projection);
    TAKE_OVER_TEMPLATE_GRID(crs);
    FIND_INPUT_KIND(sides.now);
    dropSubsetOfMesh(sides.now);
    FIND_SECOND_INPUT(sides);
    checkDatasetSwitches(sides);
    IDENTIFY_SIDES(sides);
    FIND_MESH_FILE(sides.now, OPTIONS().meshFile);
    Mesh& mesh = MESH_TO_FILL();
    READ_MESH(sides.now.mesh, mesh);
    REPORT_ODD_QUADS(mesh);
    settleOneD(mesh);
    crs.fitMesh(mesh);
    CHOOSE_GRID(mesh, projection.kind());
    REPORT("Allocating results storage...");
    reportRemovedNodes(mesh);
    for (const auto& stage : stages) stage->meshRead(mesh);
    convertInput(std::move(sides), mesh, projection.kind(), stages);
    if (OUTPUTS_WRITTEN() == 0) STOP_WITHOUT_OUTPUT();
    reportCounts(start);
    REPORT("Finished.");
    return finish();
}
