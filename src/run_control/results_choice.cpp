#include "run_control/results_choice.h"

#include "inputs/output_types.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "text_utils/numbers.h"

namespace {

/// The datasets are found by a type: the one given, or the default where nothing else chooses them.
bool choosesByType(const RunOptions& options) {
    if (options.allTypes || options.xmdfPathGiven || options.scalarIdGiven || options.vectorIdGiven) return false;
    return options.typeGiven || !options.folderGiven;
}

std::string wantedType(const RunOptions& options) {
    if (options.typeGiven && !options.allTypes) return DATASET_NAME_OF_TYPE(options.typeText);
    if (GIVEN(options, Family::Text) && choosesByType(options)) {
        DMESSAGE("WARNING - For .xmdf conversion to .txt output type not specified, using depths.");
        return "Depth";
    }
    return options.vector ? "Vector Velocity" : "Water Level";
}

}  // namespace

TimeChoice TIME_CHOICE(const RunOptions& options) {
    TimeChoice choice;
    if (options.allTimes) choice.of = TimeChoice::Of::All;
    else if (options.max) choice.of = TimeChoice::Of::Maximums;
    else if (options.timeGiven) choice.of = TimeChoice::Of::One;
    choice.wanted = options.outputTime;
    choice.tolerance = options.timeTolerance;
    choice.seconds = options.seconds;
    choice.some = options.subset.given();
    choice.ordered = options.resultsFile;
    return choice;
}

std::string CHOOSE_XMDF_TYPE(const RunOptions& options, const std::string& quantity) {
    const bool takenOver = !quantity.empty() && !options.typeGiven && choosesByType(options);
    std::string type = takenOver ? quantity : wantedType(options);
    if (options.allTypes) REPORT("Using \"All\" data type for xmdf input.");
    if (!choosesByType(options)) return type;
    REPORT("Using \"" + type + "\" data type for xmdf input.");
    REPORT_CUTOFF(options, type);
    return type;
}

void REPORT_CUTOFF(const RunOptions& options, std::string_view quantity) {
    if (options.difference) return;
    if (GIVEN(options, Family::Layer) && (IS_WATER_LEVEL(quantity) || IS_DEPTH(quantity)))
        REPORT("Cutoff depth of " + AREAL(options.cutoffDepth) + " m or ft is to be used for -mif or -shp output.");
}
