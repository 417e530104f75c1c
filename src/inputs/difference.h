// A difference: the input, which is what is now, less what was. One rule for every kind of place that has both values:
// a node, a cell, a grid cell, a point of a profile.
#pragma once

#include "geometry/no_value.h"
#include "inputs/mesh.h"
#include "inputs/results.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// What one side of a difference is at a place.
enum class Wetness : std::uint8_t {
    Outside,  ///< of its mesh
    Dry,
    Unknown,  ///< wet, but without a value
    Wet       ///< wet, with a value
};

/// The two results of a difference. Filled by DifferenceSource; read through Results::parts.
struct DifferenceParts {
    Results now, was;
    const Mesh* wasMesh = nullptr;  ///< nullptr: one mesh serves both, and both have values at the same places
    bool dryIsZero = false;         ///< of depths: dry is 0 where the other is wet
    bool degrees = false;           ///< map units, so that areas are no m2
};

/// The change of wetness, as the classes of rasters and regions count it; NO_VALUE where both are dry, or one is not
/// known.
/// Of the name of what shows them, behind that of the difference.
constexpr std::string_view CLASS_ENDING = "_class";
constexpr float WET_IN_BOTH = 1.0F, NOW_WET = 2.0F, NOW_DRY = 3.0F;

inline float CLASS_OF(Wetness now, Wetness was) {
    if (now == Wetness::Wet && was == Wetness::Wet) return WET_IN_BOTH;
    if (now == Wetness::Wet && was == Wetness::Dry) return NOW_WET;
    if (now == Wetness::Dry && was == Wetness::Wet) return NOW_DRY;
    return NO_VALUE;
}

/// now less was where both are wet; of depths also where one of them is dry. Else NO_VALUE.
inline float DIFFERENCE_OF(float now, Wetness nowWetness, float was, Wetness wasWetness, bool dryIsZero) {
    const float change = CLASS_OF(nowWetness, wasWetness);
    if (change == WET_IN_BOTH) return now - was;
    if (!dryIsZero || change == NO_VALUE) return NO_VALUE;
    return change == NOW_WET ? now : 0.0F - was;  // not -0
}

/// The difference of two directions in degrees, the short way round: in (-180, 180].
inline float TURN_OF(float now, float was) {
    const float turn = now - was;
    if (turn > 180.0F) return turn - 360.0F;
    return turn <= -180.0F ? turn + 360.0F : turn;
}

/// Per value of the results, numbered from 1. A node is as wet as the wettest element around it.
std::vector<Wetness> WETNESS_OF(const Mesh& mesh, const Results& results);

/// Fills values and flags of the difference, node by node or cell by cell, of vectors by components. A cell that is wet
/// on either side counts as wet. The parts have one mesh.
void SUBTRACT_RESULTS(const Mesh& mesh, const DifferenceParts& parts, Results& difference);

/// The classes, cell by cell, as results of the quantity "Class". The parts have a value per cell.
Results CLASS_RESULTS(const Mesh& mesh, const DifferenceParts& parts);
