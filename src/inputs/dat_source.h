// A .dat file as a source of results: one dataset, of the quantity that its name or its header tells.
#pragma once

#include "inputs/dat_reader.h"
#include "inputs/results_source.h"

#include <memory>
#include <optional>

/// Which output times are converted.
struct TimeChoice {
    enum class Of : std::uint8_t {
        NotGiven,  ///< the only one, else the maximums with a WARNING
        Maximums,
        One,  ///< of `wanted`
        All
    };
    Of of = Of::NotGiven;
    WantedTime wanted;
    std::optional<double> tolerance;  ///< hours; else by the distances of the file's times
    bool seconds = false;             ///< times are shown in seconds
    bool some = false;                ///< All: a subset of them is converted, which says how many
    bool ordered = false;             ///< All: minimums come before and maximums behind the ordinary times
};

class DatSource : public ResultsSource {
public:
    /// Opens the file, reads its header and says what it holds. Stops the run on a file that is no binary .dat.
    DatSource(const std::string& name, const TimeChoice& choice);

    const std::vector<Dataset>& datasets() const override { return datasets_; }
    std::string_view kind() const override { return ".dat"; }
    std::string_view heading(bool) const override { return {}; }
    void settle(const std::vector<bool>& cellCentred, Results& results) override;
    std::vector<OutputTime> times() const override;
    std::vector<OutputTime> outputTimes(std::size_t dataset) const override;
    void goTo(std::size_t output, Results& results) override;
    void begin(std::size_t dataset, bool cellCentred, Results& results) override;
    bool next(Results& results) override;
    void finish() override;

private:
    void readOne(Results& results);

    TimeChoice choice_;
    DatFile dat_;
    std::vector<Dataset> datasets_;
    double tolerance_ = 0.0;  ///< hours
    bool begun_ = false;
};
