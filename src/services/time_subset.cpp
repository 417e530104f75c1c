#include "services/time_subset.h"

double SUBSET_TOLERANCE(std::span<const OutputTime> times) {
    constexpr double TENTH_OF_A_STEP = 0.1;
    return TIME_TOLERANCE(times, TENTH_OF_A_STEP);
}

std::vector<std::size_t> TIMES_TAKEN(const TimeSubset& subset, std::span<const OutputTime> times) {
    const double tolerance = SUBSET_TOLERANCE(times);
    std::vector<std::size_t> taken;
    std::int32_t between = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double hours = times[i].number;
        if (!times[i].ordinary() || (subset.from && hours < *subset.from - tolerance) ||
            (subset.until && hours > *subset.until + tolerance))
            continue;
        if (between++ % subset.nth.value_or(1) == 0) taken.push_back(i);
    }
    return taken;
}
