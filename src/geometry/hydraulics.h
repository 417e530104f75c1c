// Wetted parts of cross-sections: a circular section, and an open channel cut into straight segments. Metres and square
// metres (or feet).
#pragma once

#include <array>

/// Water-surface width in a circular section of the given radius at a depth: the chord 2 sqrt(r^2 - (r - d)^2). 0
/// within 1e-5 of full or of dry.
float CIRCLE_WIDTH(float radius, float depth);

/// The wetted part of one cross-section segment. Filled by HYD_PARAM.
struct SegmentHydraulics {
    float area = 0.0F;
    float width = 0.0F;      ///< of the water surface
    float perimeter = 0.0F;  ///< of the wetted bed, without the water surface
};

/// The segment from (x1, z1) to (x2, z2), x across the section and z up, under water level h. All zero unless `wet`, a
/// wet flag or a depth, is above 0, and where the segment is dry.
SegmentHydraulics HYD_PARAM(float x1, float z1, float x2, float z2, float h, float wet);
/// HYD_PARAM of the two halves of the segment, split at its midpoint; the half at (x1, z1) first.
std::array<SegmentHydraulics, 2> HYD_PARAM2(float x1, float z1, float x2, float z2, float h, float wet);
