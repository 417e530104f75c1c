#include "inputs/statistics.h"

#include "geometry/no_value.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace {

constexpr std::size_t HALF = std::size_t{1} << 16;
using Counts = std::vector<std::int64_t>;

/// A number that grows with the value. Minus zero is zero.
std::uint32_t keyOf(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value + 0.0F);
    return (bits & 0x80000000U) != 0 ? ~bits : bits | 0x80000000U;
}

float valueOf(std::uint32_t key) { return std::bit_cast<float>((key & 0x80000000U) != 0 ? key & 0x7FFFFFFFU : ~key); }

/// What the first pass finds out.
struct Tally {
    Statistics statistics;
    Counts upper = Counts(HALF);  ///< values by the upper half of their keys
};

Tally tallyOf(std::span<const float> values) {
    Tally tally;
    float least = std::numeric_limits<float>::max(), most = -least;
    double sum = 0.0, absolute = 0.0;
    for (const float value : values) {
        if (IS_MISSING(value)) continue;
        ++tally.upper[keyOf(value) >> 16];
        least = std::min(least, value);
        most = std::max(most, value);
        sum += static_cast<double>(value);
        absolute += static_cast<double>(std::abs(value));
    }
    for (const std::int64_t count : tally.upper) tally.statistics.count += count;
    if (tally.statistics.count == 0) return tally;
    const auto count = static_cast<double>(tally.statistics.count);
    tally.statistics.least = static_cast<double>(least);
    tally.statistics.most = static_cast<double>(most);
    tally.statistics.mean = sum / count;
    tally.statistics.meanAbsolute = absolute / count;
    return tally;
}

/// The entry that holds a rank, which becomes the rank inside it.
std::uint32_t entryOf(const Counts& counts, std::int64_t& rank) {
    std::size_t entry = 0;
    while (rank >= counts[entry]) rank -= counts[entry++];
    return static_cast<std::uint32_t>(entry);
}

/// Values of given ranks. The lower halves are counted anew where the upper half changes.
class Ranks {
public:
    Ranks(std::span<const float> values, const Counts& upper) : values_(values), upper_(upper) {}

    double at(std::int64_t rank) {
        const std::uint32_t upper = entryOf(upper_, rank);
        if (lower_.empty() || upper != counted_) countLower(upper);
        return static_cast<double>(valueOf(upper << 16 | entryOf(lower_, rank)));
    }

private:
    void countLower(std::uint32_t upper) {
        lower_.assign(HALF, 0);
        counted_ = upper;
        for (const float value : values_)
            if (const std::uint32_t key = keyOf(value); key >> 16 == upper && !IS_MISSING(value)) ++lower_[key % HALF];
    }

    std::span<const float> values_;
    const Counts& upper_;
    Counts lower_;
    std::uint32_t counted_ = 0;
};

double percentile(Ranks& ranks, std::int64_t count, double share) {
    const double place = share * static_cast<double>(count - 1);
    const auto below = static_cast<std::int64_t>(place);
    const double low = ranks.at(below);
    const double beyond = place - static_cast<double>(below);
    return beyond > 0.0 ? low + beyond * (ranks.at(below + 1) - low) : low;
}

}  // namespace

Statistics STATISTICS_OF(std::span<const float> values) {
    Tally tally = tallyOf(values);
    Statistics& statistics = tally.statistics;
    if (statistics.count == 0) return statistics;
    Ranks ranks(values, tally.upper);
    statistics.percentile5 = percentile(ranks, statistics.count, 0.05);
    statistics.percentile95 = percentile(ranks, statistics.count, 0.95);
    return statistics;
}
