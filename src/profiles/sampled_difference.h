// A difference at points: what each side alone gives there, one less the other.
#pragma once

#include "inputs/difference.h"
#include "profiles/sampled_points.h"

#include <cstddef>
#include <vector>

/// How wet every point is on both sides. Filled by NOTE_WETNESS.
struct PointWetness {
    std::vector<Wetness> now, was;
};

/// Per point, of values that SAMPLE_RESULTS has just sampled there.
std::vector<Wetness> WETNESS_AT(const SampledPoints& points, const Results& results, const PointValues& values);

/// `now` becomes now less was at every point.
void SUBTRACT_AT(const PointWetness& wetness, bool dryIsZero, std::vector<float>& now, const std::vector<float>& was);
/// The same of directions in degrees, the short way round.
void SUBTRACT_DIRECTIONS_AT(std::vector<float>& now, const std::vector<float>& was);
