// The rows and cells of the grid inside each element.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"
#include "raster/grid_plan.h"

#include <cstdint>

/// Makes the chunk hold elements from `firstElement` on: as many as are worked on at a time. wet: per element, numbered
/// from 1, to leave the dry ones out; nullptr to plan for all.
void PLAN_CHUNK(const Mesh& mesh, const Grid& grid, PlanKind kind, std::int32_t firstElement, const std::uint8_t* wet,
                PlanChunk& chunk);
