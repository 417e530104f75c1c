// The length of a vector from its components.
#pragma once

#include <cmath>

/// Magnitude of the vector (vx, vy) in the unit of its components, in single precision. Exactly 0 when both components
/// are at most 1e-6 either way; not a number when a component is none. Inline: every node of every output time goes
/// through it.
inline float VECTOR_MAGNITUDE(float vx, float vy) {
    constexpr float AT_REST = 1e-6F;
    if (std::abs(vx) <= AT_REST && std::abs(vy) <= AT_REST) return 0.0F;
    return std::sqrt(vx * vx + vy * vy);
}
