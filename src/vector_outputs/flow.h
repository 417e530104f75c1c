// Vectors as the columns show them.
#pragma once

#include "vector_outputs/map_item.h"

/// Cosine and sine of the angle by which -slant turns the axes of the components counter-clockwise.
struct TurnedAxes {
    double cosine = 1.0, sine = 0.0;
};
TurnedAxes TURNED_AXES(float degrees);

/// Fills magnitude, components and directions from vx and vy. The components are along the turned axes; magnitude and
/// directions never change with them. A vector at rest (VECTOR_MAGNITUDE) has direction 0 both ways. Directions are
/// exact, in (-180, 180] and [0, 360); a text of few decimals may still round out of that range, which the writing of
/// the column sees to.
void SET_FLOW(MapItem& item, const TurnedAxes& axes);
