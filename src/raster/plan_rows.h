// The rows and cells of the grid inside each element.
#pragma once

#include "inputs/mesh.h"
#include "raster/grid.h"
#include "raster/grid_plan.h"

#include <cstdint>
#include <span>

constexpr std::int32_t ELEMENTS_AT_A_TIME = 8192;

/// Makes the chunk hold the elements of a range, or its first ones when they cover many cells. order: the element at
/// each place, from 0; empty: place 1 is that of element 1. rows: those that are to
/// be filled; cells of others are left out. wet: per element, numbered from 1, to leave the dry ones out; nullptr to
/// plan for all.
void PLAN_CHUNK(const Mesh& mesh, const Grid& grid, PlanKind kind, std::span<const std::int32_t> order,
                ElementRange elements, RowRange rows, const std::uint8_t* wet, PlanChunk& chunk);
