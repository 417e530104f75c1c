#include "run_control/convert_results.h"

#include "inputs/difference_report.h"
#include "inputs/xmdf_choice.h"
#include "run_control/file_questions.h"
#include "run_control/mesh_match.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/phases.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

/// A .dat holds one dataset, so what cannot be drawn of it is known at once.
void checkOutputsFit(const ResultsSource& source, const Mesh& mesh, const std::vector<bool>& cellCentred) {
    const RunOptions& options = OPTIONS();
    if (source.kind() != ".dat") return;
    if (options.vector && !source.datasets().front().vector)
        STOP_RUN("ERROR - .dat file needs to be a Vector data set to output arrows");
    const bool elsewhere = cellCentred.front() || mesh.highResolution || options.grid || options.vector;
    if (GIVEN(options, Family::Layer) && !elsewhere)
        STOP_RUN("ERROR - mif or shp option only for cell centred .dat files");
}

std::size_t outputsOf(const ResultsSource& source) {
    std::size_t outputs = 0;
    for (const Dataset& dataset : source.datasets()) outputs += dataset.outputs;
    return outputs;
}

/// Several outputs cannot share one name.
void checkOutputName(const ResultsSource& source) {
    const Holds holds = OUTPUT_HOLDS(OPTIONS());
    std::set<std::string> quantities;
    for (const Dataset& dataset : source.datasets()) quantities.insert(XMDF_QUANTITY_KEY(dataset.path));
    const bool several = holds == Holds::Time      ? outputsOf(source) > 1
                         : holds == Holds::Dataset ? quantities.size() > 1
                                                   : false;
    if (several) IGNORE_OUTPUT_NAME();
}

bool severalTags(const ResultsSource& source) {
    const std::vector<Dataset>& datasets = source.datasets();
    return std::any_of(datasets.begin(), datasets.end(),
                       [&](const Dataset& dataset) { return dataset.tag != datasets.front().tag; });
}

/// All outputs of the run together.
void checkDiskRoom(const std::vector<Dataset>& datasets, const std::vector<ResultsKind>& kinds, const Mesh& mesh,
                   const OutputStages& stages, const std::string& base) {
    DiskUse use;
    for (std::size_t i = 0; i < datasets.size(); ++i)
        for (const auto& stage : stages) use.add(stage->diskUse(mesh, kinds[i], datasets[i]));
    CHECK_DISK_ROOM(use, OUTPUT_STEM(base));
}

OutputLabel labelOf(OutputLabel label, const Dataset& dataset, const Results& results) {
    label.base = label.run + dataset.tag + label.ending;
    label.run += label.ending;
    label.timed = !dataset.bed;
    label.tag = dataset.tag;
    label.dataset = dataset.path;
    label.time = results.time;
    label.quantity = results.quantity;
    label.vector = results.vector;
    return label;
}

/// What goes from the source to the stages. These are prepared once for all datasets that are alike.
class Conversion {
public:
    Conversion(ResultsSource& source, OutputLabel label, const Mesh& mesh, Results& results, OutputStages& stages)
        : source_(source), label_(std::move(label)), mesh_(mesh), results_(results), stages_(stages) {}

    void convert(std::size_t index, const ResultsKind& kind) {
        if (!begun_ || kind_ != kind) beginStages(kind);
        source_.begin(index, kind.cellCentred, results_);
        while (next()) {
            const InPhase writing(Phase::Write);  // but for what it grids
            for (const auto& stage : stages_)
                stage->take(results_, labelOf(label_, source_.datasets()[index], results_));
            // what these write is the record itself; the others tell of what they have made of it
            if (kind.difference && (GIVEN(OPTIONS(), Family::ResultsFile) || GIVEN(OPTIONS(), Family::Scene)))
                REPORT_RESULTS_DIFFERENCE(mesh_, results_);
        }
    }

private:
    bool next() {
        const InPhase reading(Phase::Read);
        return source_.next(results_);
    }

    void beginStages(const ResultsKind& kind) {
        PREPARE_OUTPUT_FOLDER();
        for (const auto& stage : stages_) stage->begin(mesh_, kind);
        begun_ = true;
        kind_ = kind;
    }

    ResultsSource& source_;
    OutputLabel label_;  ///< what all outputs have in common
    const Mesh& mesh_;
    Results& results_;
    OutputStages& stages_;
    bool begun_ = false;
    ResultsKind kind_;  ///< what the stages are prepared for, once begun
};

}  // namespace

void CONVERT_RESULTS(ResultsSource& source, const std::string& base, const Mesh& mesh, Results& results,
                     OutputStages& stages) {
    if (source.datasets().empty()) STOP_WITHOUT_OUTPUT();
    const std::vector<bool> cellCentred = MATCH_SOURCE_TO_MESH(source, mesh);
    checkOutputsFit(source, mesh, cellCentred);
    source.settle(cellCentred, results);
    checkOutputName(source);
    const bool severalTimes = outputsOf(source) > 1;
    const bool timed = std::any_of(source.datasets().begin(), source.datasets().end(),
                                   [](const Dataset& dataset) { return dataset.timed; });
    OutputLabel label;
    label.run = base;
    label.ending = source.nameEnding();
    label.severalDatasets = severalTags(source);
    label.timeDecimals = NAME_DECIMALS(source.times(), OPTIONS().seconds);
    std::vector<ResultsKind> kinds;
    for (std::size_t i = 0; i < source.datasets().size(); ++i)
        kinds.push_back({.vector = source.datasets()[i].vector,
                         .cellCentred = cellCentred[i],
                         .severalTimes = severalTimes,
                         .timed = timed,
                         .cornersOnly = source.datasets()[i].bed,
                         .difference = !source.nameEnding().empty()});
    checkDiskRoom(source.datasets(), kinds, mesh, stages, base);
    Conversion conversion(source, std::move(label), mesh, results, stages);
    for (const bool vector : {false, true}) {
        if (!source.heading(vector).empty()) REPORT(source.heading(vector));
        for (std::size_t i = 0; i < kinds.size(); ++i)
            if (kinds[i].vector == vector) conversion.convert(i, kinds[i]);
    }
    for (const auto& stage : stages) stage->finish();
    source.finish();
}
