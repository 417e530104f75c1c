// Which cells and nodes of a mesh a set of wet/dry flags makes wet.
#pragma once

#include "inputs/mesh.h"

#include <cstdint>
#include <span>
#include <vector>

/// True for an element that is part of the outputs: its card was taken, and it is in no removed part.
inline bool TAKES_PART(const MeshElement& element) { return element.shape != 0 && !element.removed; }

/// Per cell, numbered from 1: 1 for a 2D cell that is wet, takes part in outputs and is not removed.
/// wet: flags per cell, numbered from 1; empty when all are wet.
std::vector<std::uint8_t> WET_CELLS(const Mesh& mesh, std::span<const std::uint8_t> wet);
/// Per node, numbered from 1: 1 for a node that a wet element uses, 1D triangles included.
std::vector<std::uint8_t> WET_NODES(const Mesh& mesh, std::span<const std::uint8_t> wet);
