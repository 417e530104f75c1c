#include "run_control/ensight_stage.h"

#include "result_files/ensight_files.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr std::size_t NUMBER_DIGITS = 6;  // of an output time in file names

/// A dataset being written.
struct OpenVariable {
    std::string dataset;  ///< path, quantity and sort: tells it from the next
    EnsightVariable variable;
    std::vector<double> hours;
};

class EnsightStage : public OutputStage {
public:
    explicit EnsightStage(const OutputFormat& format) : format_(format) {}

    DiskUse diskUse(const Mesh& mesh, const ResultsKind& kind, const Dataset& dataset) const override {
        const double values = static_cast<double>(kind.cellCentred ? mesh.elementCount : mesh.nodeCount);
        return {static_cast<double>(dataset.outputs) * values * sizeof(float) * (kind.vector ? 3.0 : 1.0), 0.0};
    }

    void begin(const Mesh& mesh, const ResultsKind& kind) override {
        mesh_ = &mesh;
        timed_ = kind.timed;
    }

    void take(const Results& results, OutputLabel label) override {
        const bool ordinary = results.time.ordinary();
        if (timed_ && !ordinary) return leaveOut();
        if (base_.empty()) start(*mesh_, label);
        const std::string dataset = label.dataset + "|" + results.quantity + (results.vector ? "|v" : "|s") +
                                    (ordinary ? "" : TIME_TAG(label, false));
        if (!open_ || open_->dataset != dataset) beginVariable(results, label, dataset);
        std::string number = std::to_string(open_->hours.size());
        number.insert(0, NUMBER_DIGITS - std::min(NUMBER_DIGITS, number.size()), '0');
        std::string file = open_->variable.file;
        if (ordinary) file.replace(file.find('*'), NUMBER_DIGITS, number);
        WRITE_ENSIGHT_VARIABLE(FILEFOLDERPATH(base_) + file, results, *mesh_, parts_);
        if (ordinary) open_->hours.push_back(results.time.number);
    }

    void takeMesh(const Mesh& mesh, OutputLabel label) override { start(mesh, label); }

    void finish() override {
        if (base_.empty()) return;
        endVariable();
        WRITE_ENSIGHT_CASE(base_ + ".case", case_);
        FINISH_OUTPUT(base_ + ".case");
        base_.clear();
    }

private:
    void leaveOut() {
        if (!warned_)
            DMESSAGE(
                "WARNING - Stored maximums and the like have no output time; they are left out of the .case file.");
        warned_ = true;
    }

    void start(const Mesh& mesh, OutputLabel label) {
        label.base = label.run;
        label.timed = label.vector = false;
        base_ = OUTPUT_NAME(label, format_.files);
        // the case file separates names by blanks
        std::replace(base_.begin() + static_cast<std::ptrdiff_t>(FILEFOLDERPATH(base_).size()), base_.end(), ' ', '_');
        BEGIN_OUTPUT(base_ + ".case");
        parts_ = ENSIGHT_PARTS(mesh);
        case_.geometry = FILENAMEEXT(base_) + ".geo";
        WRITE_ENSIGHT_GEOMETRY(base_ + ".geo", FILENAMEEXT(base_), mesh, parts_);
    }

    void beginVariable(const Results& results, const OutputLabel& label, const std::string& dataset) {
        endVariable();
        const bool ordinary = results.time.ordinary();
        std::string name = WITH_UNDERSCORES(results.quantity.empty() ? "Results" : results.quantity);
        if (name.front() >= '0' && name.front() <= '9') name.insert(0, 1, '_');
        if (!ordinary) name += "_" + WITH_UNDERSCORES(TIME_TAG(label, false));
        const std::string plain = name;
        for (int copy = 2; std::any_of(case_.variables.begin(), case_.variables.end(),
                                       [&](const EnsightVariable& other) { return ASAME(other.name, name); });
             ++copy)
            name = plain + "_" + std::to_string(copy);
        open_.emplace();
        open_->dataset = dataset;
        // "run.Depth_000000.scl": what begins with the name and a point is of the set that appears as a whole
        open_->variable = {name, results.vector, results.cellCentred, 0,
                           FILENAMEEXT(base_) + "." + name + (ordinary ? "_" + std::string(NUMBER_DIGITS, '*') : "") +
                               (results.vector ? ".vec" : ".scl")};
    }

    /// Datasets of the same times share a time set.
    void endVariable() {
        if (!open_) return;
        std::vector<std::vector<double>>& sets = case_.timeSets;
        if (!open_->hours.empty()) {
            const auto same = std::find(sets.begin(), sets.end(), open_->hours);
            open_->variable.timeSet = static_cast<std::size_t>(same - sets.begin()) + 1;
            if (same == sets.end()) sets.push_back(open_->hours);
        }
        case_.variables.push_back(open_->variable);
        open_.reset();
    }

    const OutputFormat& format_;
    const Mesh* mesh_ = nullptr;
    bool timed_ = false, warned_ = false;
    std::string base_;  ///< folder and name without extension; blank until the geometry is written
    std::vector<EnsightPart> parts_;
    EnsightCase case_;
    std::optional<OpenVariable> open_;
};

}  // namespace

std::unique_ptr<OutputStage> MAKE_ENSIGHT_STAGE(const OutputFormat& format) {
    return std::make_unique<EnsightStage>(format);
}
