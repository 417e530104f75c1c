#include "services/options.h"

#include "text_utils/paths.h"

namespace {
RunOptions options;  // the only copy
}

const RunOptions& OPTIONS() { return options; }
RunOptions& OPTIONS_TO_FILL() { return options; }
void INITIALISE_OPTIONS() { options = RunOptions{}; }

void SET_GRID_SPACING(double metres) {
    options.gridSpacing = metres;
    options.gridSpacingGiven = true;
}

void SET_INPUT_FILE(const std::string& name) {
    options.inputFile = name;
    options.inputIsMesh = FILEEXT(name) == ".2dm";
}

void DROP_OUTPUT_NAME() {
    options.outputNameGiven = false;
    options.outputName.clear();
}

void DROP_GRID() {
    options.grid = false;
    options.gridSpacingGiven = false;
    options.gridSpacing = 0.0;
}

void DROP_TIME_SUBSET() {
    if (options.subsetAlone) options.allTimes = false;
    options.subset = {};
    options.subsetAlone = false;
}

void DROP_REGION() { options.region = false; }
void DROP_POINT_TYPES() { options.pointTypes = "ALL"; }
