// Which of the output times a run over all of them takes: -from, -until and -nth.
#pragma once

#include "services/output_time.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

struct TimeSubset {
    std::optional<double> from, until;  ///< hours, both included
    std::optional<std::int32_t> nth;    ///< every so many of those between, from the first on; at least 1
    bool given() const { return from || until || nth; }
    bool operator==(const TimeSubset&) const = default;
};

/// Hours by which a time may lie outside of -from and -until: a tenth of the smallest distance above zero between two
/// ordinary times, at most 0.001.
double SUBSET_TOLERANCE(std::span<const OutputTime> times);

/// The numbers, from 0 and in their order, of the ordinary times that the subset takes. Stored extremes are neither
/// taken nor counted.
std::vector<std::size_t> TIMES_TAKEN(const TimeSubset& subset, std::span<const OutputTime> times);
