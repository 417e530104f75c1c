// Which dataset of what was belongs to which of what is, and which of its times to which.
#pragma once

#include "inputs/results_source.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// For messages and searches.
struct PairRules {
    std::string nowName, wasName;     ///< the files
    std::optional<double> tolerance;  ///< hours that two times of a pair may be apart; else by those of the files
    bool seconds = false;             ///< times are shown in seconds
};

struct DatasetPair {
    std::size_t now = 0, was = 0;  ///< numbers in their sources, from 0
    /// numbers of the times in outputTimes(), from 0, in the order of the first; without any: both have one output,
    /// whose time reading tells
    std::vector<std::pair<std::size_t, std::size_t>> times;
};

/// The pairs in the order of the first source. Of one dataset each the quantities are compared: another one, or vectors
/// against scalars, stops the run, and one that nobody knows gives a WARNING. Of several those of one name are pairs;
/// what the second has none of is named in a Warning, and the run counts as incomplete. So are times without a partner.
/// Stops the run when there is no pair of datasets or of times.
std::vector<DatasetPair> PAIR_DATASETS(const ResultsSource& now, const ResultsSource& was, const PairRules& rules);

/// Stops the run, naming both, when an ordinary time and the closest of the other source's are no pair.
void CHECK_TIME_HAS_PARTNER(const ResultsSource& now, const OutputTime& nowTime, const ResultsSource& was,
                            const PairRules& rules);
/// The same of two times.
void CHECK_TIME_PAIR(const ResultsSource& now, const OutputTime& nowTime, const ResultsSource& was,
                     const OutputTime& wasTime, const PairRules& rules);
