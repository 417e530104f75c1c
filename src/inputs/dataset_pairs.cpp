#include "inputs/dataset_pairs.h"

#include "inputs/xmdf_search.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double ROUNDING = 1.0e-7;  ///< hours: times in single precision

double toleranceOf(const std::vector<OutputTime>& now, const std::vector<OutputTime>& was, const PairRules& rules) {
    return rules.tolerance.value_or(std::min(TIME_TOLERANCE(now), TIME_TOLERANCE(was)));
}

/// Hours between two times; infinite for outputs of two kinds, and between markers of two thresholds.
double hoursApart(const OutputTime& a, const OutputTime& b) {
    constexpr double SAME_MARKER = 0.01;  // single precision stores 99999.1 as 99999.1015625
    const double apart = std::abs(a.number - b.number);
    if (a.kind != b.kind) return std::numeric_limits<double>::infinity();
    if (a.ordinary()) return apart;
    return apart < SAME_MARKER ? 0.0 : std::numeric_limits<double>::infinity();
}

std::string timeText(const OutputTime& time, const std::vector<OutputTime>& among, const PairRules& rules) {
    return TIME_TEXT(time, TIME_DECIMALS(among, rules.seconds), rules.seconds);
}

std::string toleranceText(double hours, const PairRules& rules) {
    return AREAL8(SHOWN_TIME({hours}, rules.seconds)) + (rules.seconds ? " seconds" : " hours");
}

// ---- datasets ----
bool known(const Dataset& dataset) { return !dataset.code.empty(); }

void checkQuantities(const Dataset& now, const Dataset& was, const PairRules& rules) {
    const auto holds = [](const Dataset& dataset) {
        return " holds " + (dataset.quantity.empty() ? std::string("an unknown quantity") : dataset.quantity);
    };
    const std::string both = rules.nowName + holds(now) + ", " + rules.wasName + holds(was) + ".";
    if (now.vector != was.vector)
        STOP_RUN(
            "ERROR - Vectors and scalars have no difference (-dif): " + (now.vector ? rules.nowName : rules.wasName) +
            " holds vectors, " + (now.vector ? rules.wasName : rules.nowName) + " scalars.");
    if (ASAME(now.quantity, was.quantity)) return;
    if (known(now) && known(was)) STOP_RUN("ERROR - Two quantities have no difference (-dif): " + both);
    DMESSAGE("WARNING - Whether both files of -dif hold the same quantity is not known: " + both);
}

/// The dataset of the same name, of the same folder where a quantity comes with its stored extremes; the count of them
/// when there is none.
std::size_t partnerOf(const Dataset& now, const std::vector<Dataset>& was) {
    const XmdfFolder folder = XMDF_FOLDER_OF(now.path);
    const auto named = [&](const Dataset& dataset) {
        if (dataset.vector != now.vector || dataset.timed != now.timed || !ASAME(dataset.quantity, now.quantity))
            return false;
        if (dataset.path.empty() || now.path.empty()) return true;  // a .dat: no folders, and its name is its tag
        const bool lowest = XMDF_FOLDER_OF(dataset.path) == XmdfFolder::Minimums;
        return ASAME(dataset.tag, now.tag) && lowest == (folder == XmdfFolder::Minimums);
    };
    auto found = std::find_if(was.begin(), was.end(), [&](const Dataset& dataset) {
        return named(dataset) && XMDF_FOLDER_OF(dataset.path) == folder;
    });
    if (found == was.end()) found = std::find_if(was.begin(), was.end(), named);
    return static_cast<std::size_t>(found - was.begin());
}

std::vector<DatasetPair> pairsByName(const std::vector<Dataset>& now, const std::vector<Dataset>& was,
                                     const PairRules& rules) {
    std::vector<DatasetPair> pairs;
    std::string alone;
    for (std::size_t i = 0; i < now.size(); ++i) {
        const std::size_t partner = partnerOf(now[i], was);
        if (partner < was.size()) pairs.push_back({i, partner, {}});
        else alone += (alone.empty() ? "" : ", ") + (now[i].path.empty() ? now[i].quantity : now[i].path);
    }
    if (pairs.empty())
        STOP_RUN("ERROR - No dataset that is converted of " + rules.nowName + " has a partner in " + rules.wasName +
                 " (-dif).");
    if (!alone.empty()) {
        DMESSAGE("Warning - Datasets without a partner in " + rules.wasName + " are left out: " + alone);
        NOTE_INCOMPLETE();
    }
    return pairs;
}

// ---- times ----
/// The number of the closest time; nothing when it is out of tolerance.
std::optional<std::size_t> closest(const OutputTime& wanted, const std::vector<OutputTime>& times, double tolerance) {
    const auto found = std::min_element(times.begin(), times.end(), [&](const OutputTime& a, const OutputTime& b) {
        return hoursApart(wanted, a) < hoursApart(wanted, b);
    });
    if (found == times.end() || hoursApart(wanted, *found) > tolerance + ROUNDING) return {};
    return static_cast<std::size_t>(found - times.begin());
}

/// Fills the pair's times and returns those of the first that have no partner, as text.
std::string pairTimes(const ResultsSource& now, const ResultsSource& was, const PairRules& rules, DatasetPair& pair) {
    const std::vector<OutputTime> nowTimes = now.outputTimes(pair.now), wasTimes = was.outputTimes(pair.was);
    if (nowTimes.empty() && wasTimes.empty()) return {};
    if (nowTimes.empty() || wasTimes.empty())
        STOP_RUN("ERROR - Of one file of -dif all times are converted, of the other one; give -t, -max or -tAll.");
    const double tolerance = toleranceOf(nowTimes, wasTimes, rules);
    std::string alone;
    for (std::size_t i = 0; i < nowTimes.size(); ++i) {
        if (const auto partner = closest(nowTimes[i], wasTimes, tolerance)) pair.times.emplace_back(i, *partner);
        else alone += (alone.empty() ? "" : ", ") + timeText(nowTimes[i], nowTimes, rules);
    }
    if (pair.times.empty())
        STOP_RUN("ERROR - No time of " + rules.nowName + " (" + alone + ") is within " +
                 toleranceText(tolerance, rules) + " of one of " + rules.wasName + " (from " +
                 timeText(wasTimes.front(), wasTimes, rules) + " to " + timeText(wasTimes.back(), wasTimes, rules) +
                 "); -dttol allows more.");
    return alone;
}

/// One Warning for all datasets, which mostly lack the same times.
void warnOfTimes(const std::vector<std::pair<std::string, std::string>>& alone, const PairRules& rules) {
    if (alone.empty()) return;
    const bool alike =
        std::all_of(alone.begin(), alone.end(), [&](const auto& a) { return a.second == alone[0].second; });
    std::string text;
    for (const auto& [quantity, times] : alone) {
        text += (text.empty() ? "" : "; ") + (alike ? times : quantity + ": " + times);
        if (alike) break;
    }
    DMESSAGE("Warning - Times of " + rules.nowName + " without a partner in " + rules.wasName +
             " are left out: " + text);
    NOTE_INCOMPLETE();
}

}  // namespace

std::vector<DatasetPair> PAIR_DATASETS(const ResultsSource& now, const ResultsSource& was, const PairRules& rules) {
    const std::vector<Dataset>& nowSets = now.datasets();
    const std::vector<Dataset>& wasSets = was.datasets();
    std::vector<DatasetPair> pairs;
    if (nowSets.empty()) return pairs;
    if (nowSets.size() == 1 && wasSets.size() == 1) {
        checkQuantities(nowSets.front(), wasSets.front(), rules);
        pairs.emplace_back();
    } else {
        pairs = pairsByName(nowSets, wasSets, rules);
    }
    std::vector<std::pair<std::string, std::string>> alone;
    for (DatasetPair& pair : pairs)
        if (std::string times = pairTimes(now, was, rules, pair); !times.empty())
            alone.emplace_back(nowSets[pair.now].quantity, std::move(times));
    warnOfTimes(alone, rules);
    return pairs;
}

void CHECK_TIME_PAIR(const ResultsSource& now, const OutputTime& nowTime, const ResultsSource& was,
                     const OutputTime& wasTime, const PairRules& rules) {
    const std::vector<OutputTime> nowTimes = now.times(), wasTimes = was.times();
    const double tolerance = toleranceOf(nowTimes, wasTimes, rules);
    if (hoursApart(nowTime, wasTime) <= tolerance + ROUNDING) return;
    STOP_RUN("ERROR - The times of -dif differ by more than " + toleranceText(tolerance, rules) + ": " +
             timeText(nowTime, nowTimes, rules) + " in " + rules.nowName + ", " + timeText(wasTime, wasTimes, rules) +
             " in " + rules.wasName + "; -dttol allows more.");
}

void CHECK_TIME_HAS_PARTNER(const ResultsSource& now, const OutputTime& nowTime, const ResultsSource& was,
                            const PairRules& rules) {
    const std::vector<OutputTime> times = was.times();
    if (!nowTime.ordinary() || times.empty()) return;
    const auto apart = [&](const OutputTime& time) {
        return std::pair(!time.ordinary(), std::abs(time.number - nowTime.number));
    };
    const auto nearest = std::min_element(
        times.begin(), times.end(), [&](const OutputTime& a, const OutputTime& b) { return apart(a) < apart(b); });
    CHECK_TIME_PAIR(now, nowTime, was, *nearest, rules);
}
