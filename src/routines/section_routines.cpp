// Cross-sections, for the C interface.
#include "geometry/hydraulics.h"
#include "routines/references.h"

#include "vorant_routines.h"

using Real4 = const float*;

namespace {

void putSegment(const SegmentHydraulics& segment, float* area, float* width, float* perimeter) {
    put(area, segment.area);
    put(width, segment.width);
    put(perimeter, segment.perimeter);
}

}  // namespace

float CIRCLE_WIDTH(Real4 radius, Real4 depth) { return CIRCLE_WIDTH(at(radius), at(depth)); }

void HYD_PARAM(Real4 x1, Real4 z1, Real4 x2, Real4 z2, Real4 h, Real4 wet, float* area, float* width,
               float* perimeter) {
    putSegment(HYD_PARAM(at(x1), at(z1), at(x2), at(z2), at(h), at(wet)), area, width, perimeter);
}

void HYD_PARAM2(Real4 x1, Real4 z1, Real4 x2, Real4 z2, Real4 h, Real4 wet, float* area1, float* width1,
                float* perimeter1, float* area2, float* width2, float* perimeter2) {
    const auto [first, second] = HYD_PARAM2(at(x1), at(z1), at(x2), at(z2), at(h), at(wet));
    putSegment(first, area1, width1, perimeter1);
    putSegment(second, area2, width2, perimeter2);
}
