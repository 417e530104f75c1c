// Chunks of a plan that are kept from one output time to the next.
#pragma once

#include "raster/grid_plan.h"

#include <cstddef>
#include <span>

/// Copies the first of the chunks, as many as the plan's limit and the memory allow, behind those that the plan keeps,
/// on the threads of the run. Returns how many; fewer than all: the limit is 0 from now on.
std::size_t KEEP_CHUNKS(GridPlan& plan, std::span<const PlanChunk> chunks);
