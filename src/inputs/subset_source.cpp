#include "inputs/subset_source.h"

#include "inputs/xmdf_choice.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <utility>

namespace {

std::vector<OutputTime> ordinaryOf(const std::vector<OutputTime>& times) {
    std::vector<OutputTime> ordinary;
    std::copy_if(times.begin(), times.end(), std::back_inserter(ordinary),
                 [](const OutputTime& time) { return time.ordinary(); });
    return ordinary;
}

bool earlier(const OutputTime& a, const OutputTime& b) { return a.number < b.number; }

/// "0. to 3. hours"
std::string rangeText(const std::vector<OutputTime>& ordinary, bool seconds) {
    const auto [first, last] = std::minmax_element(ordinary.begin(), ordinary.end(), earlier);
    const int decimals = TIME_DECIMALS(ordinary, seconds);
    return TIME_TEXT(*first, decimals, seconds) + " to " + TIME_TEXT(*last, decimals, seconds) +
           (seconds ? " seconds" : " hours");
}

}  // namespace

SubsetSource::SubsetSource(std::unique_ptr<ResultsSource> whole, const TimeSubset& subset, std::string name,
                           bool seconds)
    : whole_(std::move(whole)), subset_(subset), name_(std::move(name)), seconds_(seconds) {
    for (std::size_t i = 0; i < whole_->datasets().size(); ++i) {
        Taken taken{i, TIMES_TAKEN(subset_, whole_->outputTimes(i))};
        if (taken.times.empty()) continue;
        datasets_.push_back(whole_->datasets()[i]);
        datasets_.back().outputs = taken.times.size();
        taken_.push_back(std::move(taken));
    }
    if (whole_->datasets().empty()) return;  // the conversion tells
    if (taken_.empty()) stopWithoutTimes();
    passOver();
}

void SubsetSource::passOver() {
    for (std::size_t i = 0; i < whole_->datasets().size(); ++i) {
        const std::string& path = whole_->datasets()[i].path;
        const auto taken = [&](const Taken& other) { return other.dataset == i; };
        const auto goesAlong = [&](const Dataset& other) {
            return XMDF_QUANTITY_KEY(other.path) == XMDF_QUANTITY_KEY(path);
        };
        const std::vector<OutputTime> ordinary = ordinaryOf(whole_->outputTimes(i));
        if (std::any_of(taken_.begin(), taken_.end(), taken) ||
            (ordinary.empty() && std::any_of(datasets_.begin(), datasets_.end(), goesAlong)))
            continue;
        DMESSAGE("Warning - Dataset \"" + path + "\" skipped: " +
                 (ordinary.empty()
                      ? "no output times"
                      : "-from, -until and -nth leave none of its times, " + rangeText(ordinary, seconds_)));
    }
}

void SubsetSource::stopWithoutTimes() const {
    std::vector<OutputTime> ordinary;
    for (std::size_t i = 0; i < whole_->datasets().size(); ++i) {
        const std::vector<OutputTime> times = ordinaryOf(whole_->outputTimes(i));
        ordinary.insert(ordinary.end(), times.begin(), times.end());
    }
    if (ordinary.empty())
        STOP_RUN("ERROR - What is converted of " + name_ +
                 " has no output times, only stored extremes; -from, -until and -nth leave nothing.");
    STOP_RUN("ERROR - -from, -until and -nth leave no output time of " + name_ + ", which has times from " +
             rangeText(ordinary, seconds_) + ".");
}

void SubsetSource::settle(const std::vector<bool>& cellCentred, Results& results) {
    std::vector<bool> ofWhole(whole_->datasets().size(), false);
    for (std::size_t i = 0; i < taken_.size(); ++i) ofWhole[taken_[i].dataset] = cellCentred[i];
    whole_->settle(ofWhole, results);
}

std::vector<OutputTime> SubsetSource::outputTimes(std::size_t dataset) const {
    const std::vector<OutputTime> all = whole_->outputTimes(taken_[dataset].dataset);
    std::vector<OutputTime> times;
    for (const std::size_t time : taken_[dataset].times) times.push_back(all[time]);
    return times;
}

void SubsetSource::begin(std::size_t dataset, bool cellCentred, Results& results) {
    const Taken& taken = taken_[dataset];
    whole_->begin(taken.dataset, cellCentred, results);
    results.times = outputTimes(dataset);
    dataset_ = dataset;
    output_ = 0;
    const std::size_t held = ordinaryOf(whole_->outputTimes(taken.dataset)).size();
    REPORT("Converting " + AINTEGER8(static_cast<std::int64_t>(taken.times.size())) + " of " +
           AINTEGER8(static_cast<std::int64_t>(held)) + " output times.");
}

/// What a file that is not whole has lost behind its last time was asked for, unless the subset ends before.
bool SubsetSource::reachesTheEnd(const Taken& taken) const {
    const std::vector<OutputTime> all = whole_->outputTimes(taken.dataset);
    const std::vector<OutputTime> ordinary = ordinaryOf(all);
    const double last = std::max_element(ordinary.begin(), ordinary.end(), earlier)->number;
    return !subset_.until || *subset_.until > last + SUBSET_TOLERANCE(all);
}

void SubsetSource::goTo(std::size_t output, Results&) { output_ = output; }

bool SubsetSource::next(Results& results) {
    const Taken& taken = taken_[dataset_];
    if (output_ < taken.times.size()) {
        whole_->goTo(taken.times[output_++], results);
        return whole_->next(results);
    }
    if (reachesTheEnd(taken)) {
        whole_->goTo(whole_->outputTimes(taken.dataset).size(), results);
        whole_->next(results);  // says so
    }
    return false;
}
