#include "run_control/convert_xmdf.h"

#include "inputs/mesh.h"
#include "inputs/output_types.h"
#include "inputs/results.h"
#include "inputs/xmdf_extract.h"
#include "inputs/xmdf_messages.h"
#include "inputs/xmdf_selection.h"
#include "run_control/input_files.h"
#include "run_control/mesh_match.h"
#include "run_control/output_names.h"
#include "run_control/output_stage.h"
#include "services/console.h"
#include "services/options.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <string>
#include <vector>

namespace {

/// The datasets are found by a type: the one given, or the default where nothing else chooses them.
bool choosesByType(const RunOptions& options) {
    if (options.allTypes || options.xmdfPathGiven || options.scalarIdGiven || options.vectorIdGiven) return false;
    return options.typeGiven || !options.folderGiven;
}

std::string wantedType(const RunOptions& options) {
    if (options.typeGiven && !options.allTypes) return DATASET_NAME_OF_TYPE(options.typeText);
    if (options.txt && choosesByType(options)) {
        DMESSAGE("WARNING - For .xmdf conversion to .txt output type not specified, using depths.");
        return "Depth";
    }
    return options.vector ? "Vector Velocity" : "Water Level";
}

void reportCutoff(const RunOptions& options) {
    if ((options.mif || options.shp) && (IS_WATER_LEVEL(options.datasetName) || IS_DEPTH(options.datasetName)))
        REPORT("Cutoff depth of " + AREAL(options.cutoffDepth) + " m or ft is to be used for -mif or -shp output.");
}

/// Per item: whether it has one value per cell. Before anything is written, so that a dataset of another model leaves
/// nothing behind.
std::vector<bool> matchToMesh(const std::vector<XmdfItem>& items) {
    std::vector<bool> cellCentred;
    const XmdfFacts* last = nullptr;
    for (const XmdfItem& item : items) {
        if (last == nullptr || last->values != item.facts.values || last->flags != item.facts.flags) {
            REPORT("Comparing counts of dataset " + item.path + " with the mesh...");
            cellCentred.push_back(MATCH_RESULTS_TO_MESH(item.facts.values, item.facts.flags, ".xmdf"));
        } else {
            cellCentred.push_back(cellCentred.back());
        }
        last = &item.facts;
    }
    return cellCentred;
}

/// Settles what the names of all outputs depend on. True when there are several.
bool prepareNames(const std::vector<XmdfItem>& items) {
    std::size_t outputs = 0;
    std::vector<OutputTime> times;
    for (const XmdfItem& item : items) {
        outputs += item.read == XmdfRead::AllTimes ? item.facts.times.size() : 1;
        times.insert(times.end(), item.facts.times.begin(), item.facts.times.end());
    }
    SET_TIME_PRECISION(times, OPTIONS().seconds);
    if (outputs > 1) IGNORE_OUTPUT_NAME();
    return outputs > 1;
}

/// A dataset that turns out to be unreadable ends the run only when it is the one that was asked for.
void convertItem(XmdfEntry& entry, const XmdfItem& item, bool cellCentred, bool alone) {
    OutputLabel label;
    label.base = FILENAMEPATH(entry.fileName) + item.tag;
    try {
        XmdfReading reading = BEGIN_XMDF_READING(entry, item, cellCentred);
        while (NEXT_XMDF_OUTPUT(reading)) OUTPUT_RESULTS(RESULTS(), label);
    } catch (const XmdfUnreadable& unreadable) {
        if (alone) STOP_XMDF(unreadable);
        LEAVE_XMDF_OUT(item.path, unreadable);
    }
}

/// The datasets of one kind. The grid is planned once for all that are alike.
void convertKind(XmdfCatalogue& catalogue, const std::vector<XmdfItem>& items, XmdfKind kind,
                 const std::vector<bool>& cellCentred, bool several) {
    bool begun = false;
    bool begunCellCentred = false;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].kind != kind) continue;
        if (!begun || begunCellCentred != cellCentred[i])
            BEGIN_OUTPUTS(kind == XmdfKind::Vector, cellCentred[i], several);
        begun = true;
        begunCellCentred = cellCentred[i];
        convertItem(catalogue[items[i].file], items[i], cellCentred[i], items.size() == 1);
    }
}

}  // namespace

void IDENTIFY_XMDF() {
    const RunOptions& options = OPTIONS();
    SET_DATASET_NAME(wantedType(options));
    if (options.allTypes) REPORT("Using \"All\" data type for xmdf input.");
    if (!choosesByType(options)) return;
    REPORT("Using \"" + options.datasetName + "\" data type for xmdf input.");
    reportCutoff(options);
}

void CONVERT_XMDF() {
    const RunOptions& options = OPTIONS();
    XmdfCatalogue catalogue = OPEN_XMDF_FILES({INPUT_FILES().input});
    const std::vector<XmdfItem> items = SELECT_XMDF_OUTPUTS(catalogue, options, options.datasetName);
    if (items.empty()) STOP_WITHOUT_OUTPUT();
    const std::vector<bool> cellCentred = matchToMesh(items);
    const bool several = prepareNames(items);
    REPORT("Processing Scalar Datasets...");
    convertKind(catalogue, items, XmdfKind::Scalar, cellCentred, several);
    REPORT("Processing Vector Datasets...");
    convertKind(catalogue, items, XmdfKind::Vector, cellCentred, several);
    REPORT("Finished processing xmdf file.");
}
