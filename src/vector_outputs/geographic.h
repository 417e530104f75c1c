// Whether the map's coordinates are degrees.
#pragma once

#include <string_view>

/// True for a MapInfo CoordSys line of an Earth system of projection type 1 or of none (longitude/latitude: "CoordSys
/// Earth Projection 1, 104"), and for a .prj text of a geographic system (GEOGCS, GEOGCRS) that is not the base of a
/// projected one. False for anything else, a blank text included.
bool IS_GEOGRAPHIC(std::string_view projection);

/// The same for the first of Header.prj, Projection.prj, Header.mif and Projection.mif beside the input, for outputs
/// that take no projection along. Nothing is said, whatever is found or not.
bool INPUT_IS_GEOGRAPHIC();
