// What a layer holds: its objects, how they are drawn, and its columns.
#pragma once

#include "services/options.h"
#include "vector_outputs/map_item.h"

#include <cstdint>
#include <vector>

enum class LayerContent : std::uint8_t { Bed, Scalar, Vector };
enum class ItemKind : std::uint8_t { Node, Cell, GridCell };
enum class DrawnAs : std::uint8_t { Point, Region, Arrow };

struct LayerKind {
    LayerContent content = LayerContent::Bed;
    ItemKind items = ItemKind::Node;
    DrawnAs drawnAs = DrawnAs::Point;
    bool waterLevel = false;  ///< of a scalar layer: the depth comes with it
};

/// The columns in their order: what the objects have, what is shown of them, and behind them what -verbose adds.
/// options: vx, vy, va, vdir, compass and verbose are read. Arrows are drawn along a component but never as a direction
/// alone, so they carry all columns under -va and -vdir.
std::vector<Column> LAYER_COLUMNS(const LayerKind& kind, const RunOptions& options);
