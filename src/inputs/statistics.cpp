#include "inputs/statistics.h"

#include "geometry/no_value.h"
#include "services/workers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t HALF = 1U << 16;
constexpr float LARGEST = std::numeric_limits<float>::max();
constexpr std::size_t LANES = 8;   ///< sums and extremes side by side, for the compiler to take several at once
constexpr std::size_t BLOCK = 64;  ///< values looked at before they are counted one by one
using Counts = std::vector<std::int64_t>;

/// A number that grows with the value. Minus zero is zero.
std::uint32_t keyOf(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value + 0.0F);
    return bits ^ (0x80000000U | (0U - (bits >> 31)));  // all bits of a negative one, else the sign alone
}

float valueOf(std::uint32_t key) { return std::bit_cast<float>((key & 0x80000000U) != 0 ? key & 0x7FFFFFFFU : ~key); }

/// What the first pass finds out.
struct Tally {
    Counts upper = Counts(HALF + 1);  ///< values by the upper half of their keys; behind them the missing ones
    std::array<float, LANES> least, most;
    std::array<double, LANES> sum{}, absolute{};

    Tally() {
        least.fill(LARGEST);
        most.fill(-LARGEST);
    }
    void take(const float* values);
    void add(const Tally& later);
};

/// A block of values.
void Tally::take(const float* values) {
    std::array<std::uint32_t, BLOCK> present, entries;
    std::array<float, BLOCK> counted;
    for (std::size_t i = 0; i < BLOCK; ++i) {
        present[i] = VALUE_BITS(values[i]);
        counted[i] = WITH_BITS(present[i], values[i], 0.0F);
        entries[i] = ((keyOf(counted[i]) >> 16) & present[i]) | (HALF & ~present[i]);
    }
    for (std::size_t i = 0; i < BLOCK; i += LANES)
        for (std::size_t lane = 0; lane < LANES; ++lane) {
            const float low = WITH_BITS(present[i + lane], counted[i + lane], LARGEST);
            const float high = WITH_BITS(present[i + lane], counted[i + lane], -LARGEST);
            least[lane] = low < least[lane] ? low : least[lane];
            most[lane] = high > most[lane] ? high : most[lane];
        }
    for (std::size_t i = 0; i < BLOCK; i += LANES)
        for (std::size_t lane = 0; lane < LANES; ++lane) {
            sum[lane] += static_cast<double>(counted[i + lane]);
            absolute[lane] += static_cast<double>(std::abs(counted[i + lane]));
        }
    for (const std::uint32_t entry : entries) ++upper[entry];
}

/// Parts for the threads of the run, cut by the number of values alone, so that sums are rounded alike.
class Parts {
public:
    explicit Parts(std::size_t values) : values_(values), count_(std::clamp<std::size_t>(values / SHORTEST, 1, MOST)) {}

    std::size_t count() const { return count_; }
    /// The first value of a part; of the one behind the last the number of values.
    std::size_t first(std::size_t part) const {
        return part == count_ ? values_ : values_ / BLOCK * part / count_ * BLOCK;
    }

private:
    static constexpr std::size_t SHORTEST = std::size_t{1} << 20, MOST = 16;  // each counts in tables of its own
    std::size_t values_, count_;
};

/// Cuts what comes in stretches into blocks.
class Blocks {
public:
    template <typename Visit>
    void take(std::span<const float> stretch, Visit visit) {
        const std::size_t missing = std::min((BLOCK - count_) % BLOCK, stretch.size());
        keep(stretch.first(missing));
        if (count_ == BLOCK) {
            visit(kept_.data());
            count_ = 0;
        }
        std::size_t first = missing;
        for (; first + BLOCK <= stretch.size() && count_ == 0; first += BLOCK) visit(stretch.data() + first);
        keep(stretch.subspan(first));
    }
    /// The last block is filled up with missing values.
    template <typename Visit>
    void end(Visit visit) {
        std::fill(kept_.begin() + static_cast<std::ptrdiff_t>(count_), kept_.end(), NO_VALUE);
        visit(kept_.data());
    }

private:
    void keep(std::span<const float> values) {
        std::copy(values.begin(), values.end(), kept_.begin() + static_cast<std::ptrdiff_t>(count_));
        count_ += values.size();
    }

    std::array<float, BLOCK> kept_{};  ///< of a block that goes on in the next stretch
    std::size_t count_ = 0;
};

/// Calls visit(part, first of BLOCK values) for all of them, the parts beside one another.
template <typename Visit>
void forEachBlock(const ValuesInStretches& values, const Parts& parts, Visit visit) {
    std::vector<Blocks> blocks(parts.count());
    std::size_t at = 0;
    values.each([&](std::span<const float> stretch) {
        DO_PIECES(parts.count(), [&](std::size_t part) {
            const std::size_t from = std::max(parts.first(part), at);
            const std::size_t to = std::min(parts.first(part + 1), at + stretch.size());
            if (from < to)
                blocks[part].take(stretch.subspan(from - at, to - from),
                                  [&](const float* block) { visit(part, block); });
        });
        at += stretch.size();
    });
    for (std::size_t part = 0; part < parts.count(); ++part)
        blocks[part].end([&](const float* block) { visit(part, block); });
}

void addCounts(Counts& to, const Counts& counts) {
    for (std::size_t i = 0; i < to.size(); ++i) to[i] += counts[i];
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
    Ranks(const ValuesInStretches& values, const Parts& parts, const Counts& upper)
        : values_(values), parts_(parts), upper_(upper) {}

    double at(std::int64_t rank) {
        const std::uint32_t upper = entryOf(upper_, rank);
        if (lower_.empty() || upper != counted_) countLower(upper);
        return static_cast<double>(valueOf(upper << 16 | entryOf(lower_, rank)));
    }

private:
    void countLower(std::uint32_t upper) {
        std::vector<Counts> lower(parts_.count(), Counts(HALF));
        counted_ = upper;
        const float low = valueOf(upper << 16), high = valueOf(upper << 16 | (HALF - 1));
        forEachBlock(values_, parts_, [&](std::size_t part, const float* values) {
            std::uint32_t any = 0;  // mostly none of a block
            for (std::size_t i = 0; i < BLOCK; ++i)
                any |= static_cast<std::uint32_t>((values[i] >= low) & (values[i] <= high));
            for (std::size_t i = 0; i < BLOCK && any != 0; ++i)
                if (const std::uint32_t key = keyOf(values[i]); key >> 16 == upper && !IS_MISSING(values[i]))
                    ++lower[part][key % HALF];
        });
        lower_.assign(HALF, 0);
        for (const Counts& counts : lower) addCounts(lower_, counts);
    }

    const ValuesInStretches& values_;
    const Parts& parts_;
    const Counts& upper_;
    Counts lower_;
    std::uint32_t counted_ = 0;
};

void Tally::add(const Tally& later) {
    addCounts(upper, later.upper);
    for (std::size_t lane = 0; lane < LANES; ++lane) {
        least[lane] = std::min(least[lane], later.least[lane]);
        most[lane] = std::max(most[lane], later.most[lane]);
        sum[lane] += later.sum[lane];
        absolute[lane] += later.absolute[lane];
    }
}

/// Of all parts together.
Tally tallyOf(const ValuesInStretches& values, const Parts& parts) {
    std::vector<Tally> tallies(parts.count());
    forEachBlock(values, parts, [&](std::size_t part, const float* block) { tallies[part].take(block); });
    for (std::size_t part = 1; part < tallies.size(); ++part) tallies.front().add(tallies[part]);
    return std::move(tallies.front());
}

double percentile(Ranks& ranks, std::int64_t count, double share) {
    const double place = share * static_cast<double>(count - 1);
    const auto below = static_cast<std::int64_t>(place);
    const double low = ranks.at(below);
    const double beyond = place - static_cast<double>(below);
    return beyond > 0.0 ? low + beyond * (ranks.at(below + 1) - low) : low;
}

}  // namespace

Statistics STATISTICS_OF(const ValuesInStretches& values) {
    const Parts parts(values.count);
    Tally tally = tallyOf(values, parts);
    tally.upper.pop_back();
    const auto total = [](const auto& lanes) { return std::accumulate(lanes.begin(), lanes.end(), 0.0); };
    Statistics statistics;
    statistics.count = std::accumulate(tally.upper.begin(), tally.upper.end(), std::int64_t{0});
    if (statistics.count == 0) return statistics;
    statistics.least = static_cast<double>(*std::min_element(tally.least.begin(), tally.least.end()));
    statistics.most = static_cast<double>(*std::max_element(tally.most.begin(), tally.most.end()));
    statistics.mean = total(tally.sum) / static_cast<double>(statistics.count);
    statistics.meanAbsolute = total(tally.absolute) / static_cast<double>(statistics.count);
    Ranks ranks(values, parts, tally.upper);
    statistics.percentile5 = percentile(ranks, statistics.count, 0.05);
    statistics.percentile95 = percentile(ranks, statistics.count, 0.95);
    return statistics;
}

Statistics STATISTICS_OF(std::span<const float> values) {
    return STATISTICS_OF({values.size(), [values](const auto& take) { take(values); }});
}
