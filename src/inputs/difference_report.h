// What a run says of a difference: the values that it has written, and where the wet area has changed.
#pragma once

#include "inputs/difference.h"
#include "inputs/statistics.h"

#include <span>

/// Square map units.
struct ChangedAreas {
    double nowWet = 0.0;  ///< was dry, now wet
    double nowDry = 0.0;  ///< was wet, now dry
    bool degrees = false;
};

/// Of the 2D cells of the mesh, by the flags of both sides. The parts have one mesh.
ChangedAreas CHANGED_AREAS(const Mesh& mesh, const DifferenceParts& parts);

/// Says count, extremes, means and percentiles of the values, and both areas. Missing values do not count.
void REPORT_DIFFERENCE(const Statistics& values, const ChangedAreas& areas);
inline void REPORT_DIFFERENCE(std::span<const float> values, const ChangedAreas& areas) {
    REPORT_DIFFERENCE(STATISTICS_OF(values), areas);
}

/// The same of all values of a difference, of vectors their magnitudes.
void REPORT_RESULTS_DIFFERENCE(const Mesh& mesh, const Results& difference);
