#include "run_control/output_stage.h"

#include "inputs/mesh.h"
#include "raster/grid_writer.h"
#include "raster/mesh_to_grid.h"
#include "run_control/file_questions.h"
#include "run_control/grid_choice.h"
#include "run_control/input_files.h"
#include "run_control/sample_stage.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "services/projection.h"
#include "text_utils/paths.h"
#include "vector_outputs/vector_output.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

// They live from the first output to the end: the cells of each element are found once.
GridRun gridRun;
VectorRun vectorRun;
std::optional<SampleStage> sampleStage;  // of a run with -lp or -cp

GridFormat rasterFormat() { return OPTIONS().flt ? GridFormat::Float : GridFormat::Ascii; }

std::vector<std::string_view> rasterFiles() {
    if (rasterFormat() == GridFormat::Float) return {".flt", ".hdr", ".prj"};
    return {".asc", ".prj"};
}

void writeGrid(OutputLabel label) {
    label.gridSize = gridRun.grid.cellSize;
    const GridPrecision precision = SET_OUTPUT_PRECISION(gridRun.grid);
    WRITE_GRID(rasterFormat(), OUTPUT_NAME(label, rasterFiles()), gridRun.grid, precision, PROJECTION().prj);
}

void startVectorRun(bool vector, bool cellCentred, bool severalTimes) {
    if (!OPTIONS().grid) {
        vectorRun = START_VECTOR_OUTPUTS(MESH(), nullptr, vector, cellCentred, severalTimes);
        return;
    }
    const Grid header = GRID_HEADER(cellCentred);
    vectorRun = START_VECTOR_OUTPUTS(MESH(), &header, vector, cellCentred, severalTimes);
}

void rasterBathymetry(OutputLabel label) {
    gridRun = START_GRID(GRID_HEADER(false), PlanKind::Corners, false, false);
    GRID_BATHYMETRY(gridRun, MESH());
    writeGrid(std::move(label));
}

void vectorBathymetry(const OutputLabel& label) {
    if (OPTIONS().grid) {
        DMESSAGE("WARNING - Grid option not supported when converting .2dm to .mif or .shp");
        REPORT("Use -asc output to convert elevations to a regular raster grid.");
        DROP_GRID();
    }
    startVectorRun(false, false, false);
    WRITE_MESH_LAYER(vectorRun, OUTPUT_NAME(label, VECTOR_FILES()));
}

}  // namespace

void CHECK_OUTPUT_STAGE() {
    const RunOptions& options = OPTIONS();
    sampleStage.reset();
    if (options.cp || options.lp) sampleStage.emplace(options);
    if (IS_VECTOR_OUTPUT()) CHECK_VECTOR_SWITCHES();
}

void STOP_WITHOUT_OUTPUT() {
    DMESSAGE("ERROR - No data processed - check that dataset and timestep exist in file.");
    REPORT("   E.g. if specifying a maximum (-max or -t99999) check that maximums are written.");
    EXITS();
}

void BEGIN_OUTPUTS(bool vector, bool cellCentred, bool severalTimes) {
    PREPARE_OUTPUT_FOLDER();
    if (sampleStage) return;  // it takes what comes
    if (IS_VECTOR_OUTPUT()) return startVectorRun(vector, cellCentred, severalTimes);
    const PlanKind kind = cellCentred ? PlanKind::Cells : PlanKind::Nodes;
    gridRun = GridRun{};  // a grid may take most of the memory, so that the old one goes before the next is made
    gridRun = START_GRID(GRID_HEADER(cellCentred), kind, vector, severalTimes);
}

void OUTPUT_RESULTS(const Results& results, OutputLabel label) {
    label.time = results.time;
    label.vector = results.vector;
    label.quantity = results.quantity;
    if (sampleStage) return sampleStage->take(MESH(), results, std::move(label));
    if (IS_VECTOR_OUTPUT()) {
        if (OPTIONS().grid) label.gridSize = OPTIONS().gridSpacing;
        return WRITE_RESULTS_LAYER(vectorRun, results, OUTPUT_NAME(label, VECTOR_FILES()));
    }
    GRID_RESULTS(gridRun, MESH(), results, VECTOR_CHOICE(OPTIONS()));
    writeGrid(std::move(label));
}

void OUTPUT_BATHYMETRY() {
    OutputLabel label;
    label.base = FILENAMEPATH(INPUT_FILES().input);
    label.timed = false;
    if (sampleStage) return sampleStage->takeMesh(MESH(), label);
    if (IS_VECTOR_OUTPUT()) return vectorBathymetry(label);
    rasterBathymetry(std::move(label));
}

void FINISH_OUTPUTS() {
    if (sampleStage) sampleStage->finish(FILENAMEPATH(INPUT_FILES().input));
    sampleStage.reset();
}
