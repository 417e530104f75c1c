#include "geometry/hydraulics.h"

#include "geometry/distance.h"

#include <cmath>

float CIRCLE_WIDTH(float radius, float depth) {
    constexpr float CLOSE = 1e-5F;
    if (depth > 2.0F * radius - CLOSE || depth < CLOSE) return 0.0F;
    const float up = radius - depth;
    return 2.0F * std::sqrt(radius * radius - up * up);
}

SegmentHydraulics HYD_PARAM(float x1, float z1, float x2, float z2, float h, float wet) {
    if (!(wet > 0.0F)) return {};
    const float w = x2 - x1;
    if (h >= z1 && h >= z2) return {w * (h - (z1 + z2) / 2.0F), w, DISTANCE(x1, z1, x2, z2)};
    if (h < z1 && h < z2) return {};
    if (h < z1) {
        const float width = (h - z2) / (z1 - z2) * w;
        return {width * (h - z2) / 2.0F, width, DISTANCE(x2 - width, h, x2, z2)};
    }
    const float width = (h - z1) / (z2 - z1) * w;
    return {width * (h - z1) / 2.0F, width, DISTANCE(x1, z1, x1 + width, h)};
}

std::array<SegmentHydraulics, 2> HYD_PARAM2(float x1, float z1, float x2, float z2, float h, float wet) {
    const float x = (x1 + x2) / 2.0F;
    const float z = (z1 + z2) / 2.0F;
    return {HYD_PARAM(x1, z1, x, z, h, wet), HYD_PARAM(x, z, x2, z2, h, wet)};
}
