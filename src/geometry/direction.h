// The direction of a flow, as the outputs show it.
#pragma once

/// Degrees counter-clockwise from east in (-180, 180], also for a due west flow whichever zero its northward part is;
/// 0 where nothing flows.
float DIRECTION_OF(float east, float north);

/// The component of a flow along a unit direction.
float COMPONENT_ALONG(float east, float north, double directionEast, double directionNorth);
