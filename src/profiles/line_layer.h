// Reads the polylines of a long-profile layer.
#pragma once

#include "profiles/profile_line.h"

#include <string>
#include <vector>

/// Every line and every part of a polyline, in the order of the layer. The first attribute names a line; a blank name
/// becomes "LP<n>" of the layer's n-th object, and the parts behind the first end in "_2", "_3". Names may repeat.
/// Objects of other kinds, and lines of fewer than two distinct vertices, are passed over with a WARNING. Stops the run
/// when the layer cannot be read or holds no line. file: .mif, .shp, or what
/// GDAL reads ("a.gpkg:banks").
std::vector<ProfileLine> READ_PROFILE_LINES(const std::string& file);
