#include "run_control/convert_dat.h"

#include "inputs/dat_reader.h"
#include "inputs/mesh.h"
#include "inputs/output_types.h"
#include "inputs/results.h"
#include "run_control/input_files.h"
#include "run_control/mesh_match.h"
#include "run_control/output_names.h"
#include "run_control/output_stage.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <string>

namespace {

struct DatInput {
    int file = 0;
    std::string quantity;  ///< "Water Level", blank when unknown
    std::string code;      ///< "h"
};
DatInput dat;

/// The text behind the last underscore of the name part: "h" of "run/x_h.dat"; blank when there is none.
std::string typeTag(const std::string& name) {
    const std::string path = FILENAMEPATH(name);
    const std::string base = FILENAMEPATHNO_(name);
    return path.size() > base.size() ? path.substr(base.size() + 1) : std::string{};
}

const OutputType* identify(const DatHeader& header) {
    if (const OutputType* type = OUTPUT_TYPE_OF_TAG(typeTag(INPUT_FILES().input), header.vector)) return type;
    const OutputType* type = OUTPUT_TYPE_OF_NAME(header.name);
    return type != nullptr && type->vector == header.vector ? type : nullptr;
}

void reportCutoff() {
    const RunOptions& options = OPTIONS();
    if ((options.mif || options.shp) && (IS_WATER_LEVEL(dat.quantity) || IS_DEPTH(dat.quantity)))
        REPORT("Cutoff depth of " + AREAL(options.cutoffDepth) + " m or ft is to be used for -mif or -shp output.");
}

void checkOutputsFit(const DatHeader& header, bool cellCentred) {
    const RunOptions& options = OPTIONS();
    if (options.vector && !header.vector) STOP_RUN("ERROR - .dat file needs to be a Vector data set to output arrows");
    const bool elsewhere = cellCentred || MESH().highResolution || options.grid || options.vector;
    if ((options.mif || options.shp) && !elsewhere)
        STOP_RUN("ERROR - mif or shp option only for cell centred .dat files");
}

void output() {
    OutputLabel label;
    label.base = FILENAMEPATH(INPUT_FILES().input);
    OUTPUT_RESULTS(RESULTS(), label);
}

void outputAllTimes() {
    REPORT("Processing all output times.");
    while (NEXT_DAT_TIME()) output();
    if (DAT().damaged) NOTE_INCOMPLETE();
}

/// The one output of a run without -tAll.
void readChosenTime(double tolerance) {
    const RunOptions& options = OPTIONS();
    if (options.max) return EXTRACT_DAT_MAXIMUMS();
    if (options.timeGiven) return FIND_DAT_TIME(options.outputTime, tolerance);
    if (DAT().steps.size() == 1 && !DAT().damaged) {
        NEXT_DAT_TIME();
        return;
    }
    DMESSAGE("WARNING - No output time specified, using maximums.");
    EXTRACT_DAT_MAXIMUMS();
}

}  // namespace

void IDENTIFY_DAT() {
    dat = DatInput{};
    dat.file = OPEN_FILE(INPUT_FILES().input, "I ", "dat");
    const DatHeader& header = READ_DAT_HEADER(dat.file);
    if (const OutputType* type = identify(header)) {
        dat.quantity = type->name;
        dat.code = type->code;
        REPORT("Data Type identified as: \"" + dat.quantity + "\"");
    } else {
        dat.quantity = header.name;
        DMESSAGE("WARNING - Could not identify data type of .dat file");
    }
    reportCutoff();
}

void CONVERT_DAT() {
    const RunOptions& options = OPTIONS();
    REPORT("Reading .dat file...");
    const DatHeader& header = DAT().header;
    const bool cellCentred = MATCH_RESULTS_TO_MESH(header.nodes, header.cells, ".dat");
    checkOutputsFit(header, cellCentred);
    ALLOCATE_DAT_RESULTS(cellCentred, dat.quantity, dat.code);
    REPORT("Allocating time arrays for .dat file...");
    LIST_DAT_TIMES();
    const double tolerance = options.timeTolerance.value_or(TIME_TOLERANCE(RESULTS().times));
    REPORT("Time search tolerance = " + AREAL8(SHOWN_TIME({tolerance}, options.seconds)));
    REPORT("Found " + AINTEGER8(static_cast<std::int64_t>(DAT().steps.size())) + " timesteps in .dat file.");
    REPORT("Rewinding .dat file...");
    SET_TIME_PRECISION(RESULTS().times, options.seconds);
    const bool severalTimes = options.allTimes && DAT().steps.size() > 1;
    if (severalTimes) IGNORE_OUTPUT_NAME();
    BEGIN_OUTPUTS(header.vector, cellCentred, severalTimes);
    if (options.allTimes) {
        outputAllTimes();
    } else {
        readChosenTime(tolerance);
        output();
    }
    CLOSE_FILE(dat.file);
    REPORT("Finished processing .dat file.");
}
