// An .xmdf file as a source of results: the datasets that the command line chooses among those it holds.
#pragma once

#include "inputs/results_source.h"
#include "inputs/xmdf_extract.h"

#include <optional>

struct RunOptions;

class XmdfSource : public ResultsSource {
public:
    /// Opens the file, says what it holds and chooses. options: the dataset and time switches are read. typeName: what
    /// a search by type looks for. Stops the run on a file that is no whole HDF5 file and where a choice finds nothing.
    XmdfSource(const std::string& name, const RunOptions& options, const std::string& typeName);

    const std::vector<Dataset>& datasets() const override { return datasets_; }
    std::string_view kind() const override { return ".xmdf"; }
    std::string_view heading(bool vector) const override;
    void settle(const std::vector<bool>&, Results&) override {}
    std::vector<OutputTime> times() const override;
    std::vector<OutputTime> outputTimes(std::size_t dataset) const override;
    void goTo(std::size_t output, Results& results) override;
    void begin(std::size_t dataset, bool cellCentred, Results& results) override;
    bool next(Results& results) override;
    void finish() override;

private:
    XmdfCatalogue catalogue_;
    std::vector<XmdfItem> items_;
    std::vector<Dataset> datasets_;
    std::optional<XmdfReading> reading_;
    bool seconds_ = false;
};
