#include "run_control/results_file_stage.h"

#include "inputs/xmdf_choice.h"
#include "result_files/dat_writer.h"
#include "result_files/written_flags.h"
#include "result_files/xmdf_writer.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <optional>
#include <string>

namespace {

/// "_h": as the dataset is called in names, else its code, else its quantity.
std::string datasetTag(const OutputLabel& label, const Results& results) {
    if (!label.tag.empty()) return label.tag;
    const std::string& name = results.code.empty() ? results.quantity : results.code;
    return name.empty() ? "" : WITH_UNDERSCORES("_" + name);
}

/// What both formats have in common: the name, and which flags are written.
class ResultsFileStage : public OutputStage {
public:
    ResultsFileStage(const OutputFormat& format, const RunOptions& options) : format_(format), options_(options) {}

    DiskUse diskUse(const Mesh& mesh, const ResultsKind& kind, const Dataset& dataset) const override {
        const double values = static_cast<double>(dataset.values) * (kind.vector ? 2.0 : 1.0) * sizeof(float);
        const double flags = dataset.flags > 0 ? mesh.elementCount : 0;
        const double times = static_cast<double>(dataset.outputs);
        return {times * (values + flags), format_.keyword == "dat" ? times * values : 0.0};
    }

    void begin(const Mesh& mesh, const ResultsKind&) override {
        mesh_ = &mesh;
        flags_.emplace(mesh);
    }

    void takeMesh(const Mesh&, OutputLabel) override {
        STOP_RUN("ERROR - A mesh alone holds no results to write into a " + std::string(format_.files.front()) +
                 " file.");
    }

protected:
    std::string beginFile(OutputLabel label, const std::string& tag) {
        const std::string extension(format_.files.front());
        if (options_.outputNameGiven)
            if (const std::string wanted = WITHOUT_EXTENSION(options_.outputName, extension) + extension;
                NAME_IN_USE(wanted))
                STOP_RUN("ERROR - " + wanted + " is read by this run, -out has to name another file.");
        label.base = label.run + "_out" + tag;  // a model's own results are never replaced
        label.timed = label.vector = false;
        name_ = OUTPUT_NAME(label, format_.files) + extension;
        BEGIN_OUTPUT(name_);
        return name_;
    }
    /// Of the file that is being written, where there is one.
    template <typename Writer>
    void end(std::optional<Writer>& writer) {
        if (!writer) return;
        writer->close();
        writer.reset();
        FINISH_OUTPUT(name_);
    }

    const OutputFormat& format_;
    const RunOptions& options_;
    const Mesh* mesh_ = nullptr;
    std::optional<WrittenFlags> flags_;
    std::string name_;
};

class DatStage : public ResultsFileStage {
public:
    using ResultsFileStage::ResultsFileStage;

    void take(const Results& results, OutputLabel label) override {
        const std::string key = XMDF_QUANTITY_KEY(label.dataset) + (results.vector ? "/v" : "/s");
        if (!writer_ || key != current_) {
            finish();
            const std::string name = beginFile(label, datasetTag(label, results));
            writer_.emplace(name, DatShape{results.quantity, results.vector, results.nodes, mesh_->elementCount});
            current_ = key;
        }
        writer_->write(results, flags_->of(results));
    }

    void finish() override { end(writer_); }

private:
    std::optional<DatWriter> writer_;
    std::string current_;  ///< the quantity being written
};

class XmdfStage : public ResultsFileStage {
public:
    using ResultsFileStage::ResultsFileStage;

    void take(const Results& results, OutputLabel label) override {
        if (!writer_) {
            const std::string name = beginFile(label, {});
            writer_.emplace(WORKING_NAME(name, LibraryMakes::OverOld), FILENAMEEXT(label.run), name);
        }
        writer_->write(results, label.dataset, flags_->of(results));
    }

    void finish() override { end(writer_); }

private:
    std::optional<XmdfWriter> writer_;
};

}  // namespace

std::unique_ptr<OutputStage> MAKE_RESULTS_FILE_STAGE(const OutputFormat& format, const RunOptions& options) {
    if (format.keyword == "dat") return std::make_unique<DatStage>(format, options);
    return std::make_unique<XmdfStage>(format, options);
}
