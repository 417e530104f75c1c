// The difference of two sources as a source of results: what the first holds less what the second holds.
#pragma once

#include "inputs/dataset_pairs.h"
#include "inputs/difference.h"
#include "inputs/results_source.h"

#include <memory>

struct DifferenceRules {
    PairRules pairs;
    std::string nameEnding;  ///< "_minus_base_h"
    bool nodeByNode =
        false;             ///< outputs ask for the difference at nodes or cells: it is in the record, beside the parts
    bool degrees = false;  ///< map units
};

class DifferenceSource : public ResultsSource {
public:
    /// Pairs the datasets. mesh: of the first; wasMesh: of the second, nullptr when one serves both. wasCellCentred: by
    /// dataset of the second, which has been found to fit its mesh. All must live as long as the source.
    DifferenceSource(std::unique_ptr<ResultsSource> now, std::unique_ptr<ResultsSource> was,
                     std::vector<bool> wasCellCentred, const Mesh& mesh, const Mesh* wasMesh, DifferenceRules rules);

    /// Those of the first that have a partner.
    const std::vector<Dataset>& datasets() const override { return datasets_; }
    std::string_view kind() const override { return now_->kind(); }
    std::string_view heading(bool vector) const override { return now_->heading(vector); }
    /// Stops the run when one side has values at nodes and the other at cells, and differences of these are wanted.
    void settle(const std::vector<bool>& cellCentred, Results& results) override;
    std::vector<OutputTime> times() const override { return now_->times(); }
    std::vector<OutputTime> outputTimes(std::size_t) const override { return {}; }
    void goTo(std::size_t, Results&) override {}
    std::string nameEnding() const override { return rules_.nameEnding; }
    void begin(std::size_t dataset, bool cellCentred, Results& results) override;
    bool next(Results& results) override;
    void finish() override;

private:
    bool readBoth(bool timeUnknown);
    bool readPair();
    void hand(Results& results) const;

    std::unique_ptr<ResultsSource> now_, was_;
    std::vector<bool> wasCellCentred_;
    const Mesh& mesh_;
    DifferenceRules rules_;
    std::vector<DatasetPair> pairs_;
    std::vector<Dataset> datasets_;
    const DatasetPair* pair_ = nullptr;  ///< begun
    std::size_t output_ = 0;             ///< number of its next output
    DifferenceParts parts_;
};
