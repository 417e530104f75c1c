// What a layer holds: its objects, how they are drawn, and its columns.
#pragma once

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

/// What is shown of vectors.
enum class VectorColumns : std::uint8_t { All, XComponent, YComponent, Direction };

struct ShownColumns {
    VectorColumns vectors = VectorColumns::All;
    bool bearings = false;    ///< a direction alone is a bearing, clockwise from north
    float slantAngle = 0.0F;  ///< degrees by which the axes of the components are turned counter-clockwise
    bool verbose = false;     ///< material, bed elevation and time too
};

/// The columns in their order: what the objects have, what is shown of them, and behind them what `verbose` adds.
/// Arrows are drawn along a component but never as a direction alone, so they carry all columns then.
std::vector<Column> LAYER_COLUMNS(const LayerKind& kind, const ShownColumns& shown);
