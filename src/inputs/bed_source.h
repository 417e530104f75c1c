// The bed of a mesh as a source of results without a time, for the change between two beds.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results_source.h"

class BedSource : public ResultsSource {
public:
    /// Copies the elevations, so that the mesh may go.
    explicit BedSource(const Mesh& mesh);

    const std::vector<Dataset>& datasets() const override { return datasets_; }
    std::string_view kind() const override { return ".2dm"; }
    std::string_view heading(bool) const override { return {}; }
    void settle(const std::vector<bool>&, Results&) override {}
    std::vector<OutputTime> times() const override { return {}; }
    std::vector<OutputTime> outputTimes(std::size_t) const override { return {}; }
    void goTo(std::size_t, Results&) override {}
    void begin(std::size_t dataset, bool cellCentred, Results& results) override;
    bool next(Results& results) override;
    void finish() override {}

private:
    std::vector<Dataset> datasets_;
    std::vector<float> elevations_;  ///< numbered from 1
    bool taken_ = false;
};
