// Some of the output times of another source, as a source of results.
#pragma once

#include "inputs/results_source.h"
#include "services/time_subset.h"

#include <cstddef>
#include <memory>
#include <string>

class SubsetSource : public ResultsSource {
public:
    /// Datasets that hold stored extremes alone are passed over, and so are those that the subset leaves no time of,
    /// with a Warning, as long as there are others; else the run stops, naming the range of the times. The extremes
    /// that go along with a dataset's times into a file of results are left without a word. name: the file's, for
    /// messages. seconds: they show times in seconds.
    SubsetSource(std::unique_ptr<ResultsSource> whole, const TimeSubset& subset, std::string name, bool seconds);

    const std::vector<Dataset>& datasets() const override { return datasets_; }
    std::string_view kind() const override { return whole_->kind(); }
    std::string_view heading(bool vector) const override { return whole_->heading(vector); }
    void settle(const std::vector<bool>& cellCentred, Results& results) override;
    /// All that the file has: the names of a subset are those of a run over all times.
    std::vector<OutputTime> times() const override { return whole_->times(); }
    /// Says how many of the file's times are converted.
    void begin(std::size_t dataset, bool cellCentred, Results& results) override;
    bool next(Results& results) override;
    std::vector<OutputTime> outputTimes(std::size_t dataset) const override;
    void goTo(std::size_t output, Results& results) override;
    std::string nameEnding() const override { return whole_->nameEnding(); }
    void finish() override { whole_->finish(); }

private:
    /// Of one dataset.
    struct Taken {
        std::size_t dataset = 0;         ///< its number in the whole source
        std::vector<std::size_t> times;  ///< numbers in its outputTimes(), from 0
    };

    void passOver();
    [[noreturn]] void stopWithoutTimes() const;
    bool reachesTheEnd(const Taken& taken) const;

    std::unique_ptr<ResultsSource> whole_;
    TimeSubset subset_;
    std::string name_;
    bool seconds_;
    std::vector<Dataset> datasets_;
    std::vector<Taken> taken_;  ///< by dataset
    std::size_t dataset_ = 0;   ///< begun
    std::size_t output_ = 0;    ///< the next of its times
};
