#include "inputs/difference_source.h"

#include "inputs/output_types.h"
#include "services/console.h"
#include "services/exits.h"

#include <algorithm>
#include <utility>

DifferenceSource::DifferenceSource(std::unique_ptr<ResultsSource> now, std::unique_ptr<ResultsSource> was,
                                   std::vector<bool> wasCellCentred, const Mesh& mesh, const Mesh* wasMesh,
                                   DifferenceRules rules)
    : now_(std::move(now)),
      was_(std::move(was)),
      wasCellCentred_(std::move(wasCellCentred)),
      mesh_(mesh),
      rules_(std::move(rules)),
      pairs_(PAIR_DATASETS(*now_, *was_, rules_.pairs)) {
    parts_.wasMesh = wasMesh;
    parts_.degrees = rules_.degrees;
    for (const DatasetPair& pair : pairs_) {
        datasets_.push_back(now_->datasets()[pair.now]);
        if (!pair.times.empty()) datasets_.back().outputs = pair.times.size();
    }
}

void DifferenceSource::settle(const std::vector<bool>& cellCentred, Results&) {
    for (std::size_t i = 0; i < pairs_.size(); ++i)
        if (rules_.nodeByNode && cellCentred[i] != wasCellCentred_[pairs_[i].was])
            STOP_RUN("ERROR - One file of -dif has values at nodes, the other at cells (" + rules_.pairs.nowName +
                     ", " + rules_.pairs.wasName + "); only rasters can be taken as their difference.");
    now_->settle(cellCentred, parts_.now);
    was_->settle(wasCellCentred_, parts_.was);
}

void DifferenceSource::begin(std::size_t dataset, bool cellCentred, Results& results) {
    pair_ = &pairs_[dataset];
    output_ = 0;
    now_->begin(pair_->now, cellCentred, parts_.now);
    was_->begin(pair_->was, wasCellCentred_[pair_->was], parts_.was);
    parts_.dryIsZero = IS_DEPTH(parts_.now.quantity) || IS_DEPTH(parts_.was.quantity);
    results = Results{};
    results.nodes = parts_.now.nodes;
    results.vector = parts_.now.vector;
    results.cellCentred = cellCentred;
    results.cornersOnly = parts_.now.cornersOnly;
    results.times = parts_.now.times;
    results.quantity = parts_.now.quantity;
    results.code = parts_.now.code;
    results.units = parts_.now.units;
    results.parts = &parts_;
}

/// Names the files, since what a reader says of a time does not.
bool DifferenceSource::readBoth(bool timeUnknown) {
    REPORT("Reading from " + rules_.pairs.nowName + "...");
    if (!now_->next(parts_.now)) return false;
    if (timeUnknown) CHECK_TIME_HAS_PARTNER(*now_, parts_.now.time, *was_, rules_.pairs);
    REPORT("Reading from " + rules_.pairs.wasName + "...");
    return was_->next(parts_.was);
}

/// The next pair of times that both files hold whole.
bool DifferenceSource::readPair() {
    if (pair_->times.empty()) {
        if (output_++ > 0 || !readBoth(true)) return false;
        CHECK_TIME_PAIR(*now_, parts_.now.time, *was_, parts_.was.time, rules_.pairs);
        return true;
    }
    while (output_ < pair_->times.size()) {
        const auto [now, was] = pair_->times[output_++];
        now_->goTo(now, parts_.now);
        was_->goTo(was, parts_.was);
        if (readBoth(false)) return true;
    }
    // A file that is not whole says so behind its last time.
    now_->goTo(now_->outputTimes(pair_->now).size(), parts_.now);
    now_->next(parts_.now);
    return false;
}

void DifferenceSource::hand(Results& results) const {
    results.time = parts_.now.time;
    results.endReached = parts_.now.endReached;
    results.flagged = parts_.now.flagged || parts_.was.flagged;
    if (rules_.nodeByNode) SUBTRACT_RESULTS(mesh_, parts_, results);
}

bool DifferenceSource::next(Results& results) {
    if (!readPair()) return false;
    hand(results);
    return true;
}

void DifferenceSource::finish() {
    now_->finish();
    was_->finish();
}
