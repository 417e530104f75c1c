#include "run_control/driver.h"

#include "gis/layers.h"
#include "inputs/mesh.h"
#include "inputs/mesh_reader.h"
#include "inputs/one_d_triangles.h"
#include "inputs/results.h"
#include "raster/odd_quads.h"
#include "run_control/arguments.h"
#include "run_control/convert_dat.h"
#include "run_control/convert_xmdf.h"
#include "run_control/file_questions.h"
#include "run_control/grid_choice.h"
#include "run_control/input_files.h"
#include "run_control/output_stage.h"
#include "run_control/switch_checks.h"
#include "run_control/usage.h"
#include "run_control/world_file.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "services/projection.h"
#include "text_utils/numbers.h"
#include "vector_outputs/vector_output.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace {

void initialiseRun() {
    INITIALISE_CONSOLE();
    INITIALISE_EXITS();
    INITIALISE_FILES();
    SET_FILE_QUESTIONS(CONSOLE_FILE_QUESTIONS());
    INITIALISE_MESH();
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
    if (OPTIONS().verbose) REPORT(AREALD8(taken.count(), 1) + " seconds");
}

/// The normal end: with -b at once, else behind the closing pause.
int finish() {
    if (!OPTIONS().batch) EXITS(FINISHED_STATUS());
    FLUSH_CONSOLE();
    return FINISHED_STATUS();
}

int convertWorldFile() {
    FIND_INPUT_FILE(" Please enter the MapInfo .tab file -> ");
    if (!MAKE_WORLD_FILE()) EXITS();
    return finish();
}

/// A type, a scalar or a vector number chooses among the datasets of an .xmdf; other inputs hold one.
void checkDatasetSwitches() {
    const RunOptions& options = OPTIONS();
    if (INPUT_FILES().kind == InputKind::Xmdf) return;
    if (options.typeGiven || options.scalarIdGiven || options.vectorIdGiven)
        DMESSAGE(
            "WARNING - Data type specified (-type, -s<scalar_ID> or -v<vector_ID> switch) this is ignored for non XMDF "
            "files");
}

/// A layer's spacing is asked for behind the input, whose folder says what its units are; a raster's comes first.
void askInGoodOrder() {
    const bool layer = OPTIONS().mif || OPTIONS().shp;
    if (!layer) CHECK_GRID_SWITCHES();
    FIND_INPUT_FILE();
    if (layer) CHECK_GRID_SWITCHES();
}

void readMesh() {
    const int file = OPEN_FILE(INPUT_FILES().mesh, "I ", "2dm");
    SCAN_2DM(file);
    SIZE_MESH_TABLES();
    READ_2DM(file, OPTIONS());
    REPORT("Finished with .2dm file, closing...");
    CLOSE_FILE(file);
}

/// Water level lines belong into a grid; every other output tells them from the cells.
void settleOneD() {
    if (!OPTIONS().raster()) SETTLE_ONE_D_TRIANGLES(OPTIONS().no1d);
}

/// The mesh reader has already marked what -rmp leaves out; this tells the user that it counts.
void reportRemovedNodes() {
    if (OPTIONS().keepAllMeshParts) return;
    REPORT("Filtering out nodes from removed meshparts...");
    Progress("Node: ").finish(MESH().nodeCount);
    REPORT("   Done...");
}

void convertInput() {
    switch (INPUT_FILES().kind) {
        case InputKind::Mesh: OUTPUT_BATHYMETRY(); break;
        case InputKind::Dat: CONVERT_DAT(); break;
        case InputKind::Xmdf: CONVERT_XMDF(); break;
    }
    FINISH_OUTPUTS();
}

}  // namespace

int CONVERT(int argc, const char* const argv[]) {
    const auto start = std::chrono::steady_clock::now();
    initialiseRun();
    READ_ARGUMENTS(argc, argv);
    explainWrongSwitches();
    CHECK_SWITCHES();
    explainWrongSwitches();
    if (OPTIONS().wld) return convertWorldFile();
    CHECK_OUTPUT_STAGE();
    askInGoodOrder();
    if (!MAY_WRITE_SEVERAL(OPTIONS())) PREPARE_OUTPUT_FOLDER();
    FIND_PROJECTION();
    gisSetProjection({PROJECTION().coordSys, PROJECTION().prj, OPTIONS().projectionWarning});
    TAKE_OVER_TEMPLATE_GRID();
    FIND_INPUT_KIND();
    checkDatasetSwitches();
    if (INPUT_FILES().kind == InputKind::Dat) IDENTIFY_DAT();
    if (INPUT_FILES().kind == InputKind::Xmdf) IDENTIFY_XMDF();
    FIND_MESH_FILE();
    readMesh();
    REPORT_ODD_QUADS(MESH());
    settleOneD();
    CHOOSE_GRID();
    REPORT("Allocating results storage...");
    reportRemovedNodes();
    if (IS_VECTOR_OUTPUT()) REPORT_POINT_FILTER(MESH());
    convertInput();
    if (OUTPUTS_WRITTEN() == 0) STOP_WITHOUT_OUTPUT();
    reportCounts(start);
    REPORT("Finished.");
    return finish();
}
