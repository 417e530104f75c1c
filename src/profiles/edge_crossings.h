// Where a line crosses the edges of the mesh.
#pragma once

#include "inputs/mesh.h"
#include "profiles/profile_line.h"
#include "raster/element_buckets.h"
#include "raster/grid_plan.h"

#include <vector>

/// The chainages, rising, at which the line crosses or touches an edge of an element that is not removed; the same
/// place may come more than once, a rounding apart. An edge along the line gives its ends. kind: what the values belong
/// to: for PlanKind::Nodes a 9-node quad has the edges of the four quads around its centre, since its surface bends
/// there, for Cells the outline through its mid-side nodes, for Corners that of its corners.
std::vector<double> EDGE_CROSSINGS(const ProfileLine& line, const ElementBuckets& buckets, const Mesh& mesh,
                                   PlanKind kind);
