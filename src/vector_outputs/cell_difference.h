// The difference of the cells that are drawn as regions, when the values are at nodes.
#pragma once

#include "inputs/difference.h"

/// Both sides with a value per cell, as regions show it.
DifferenceParts CELL_PARTS(const Mesh& mesh, const DifferenceParts& parts);

/// The difference of parts that have a value per cell, with all that a layer asks of results.
Results CELL_DIFFERENCE(const Mesh& mesh, const DifferenceParts& cells);
