// One thing that a layer shows: a node, a cell or a grid cell, with everything its columns and its drawing need.
#pragma once

#include "inputs/mesh.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// Columns that a layer may have. The reals come first, so that a column is also the place of its value in
/// MapItem::reals.
enum class Column : std::uint8_t {
    Elevation,   ///< bed, map's vertical unit
    Value,       ///< the scalar result, named after its quantity
    Depth,       ///< water level less the bed
    Magnitude,   ///< of a vector, in its own unit
    Angle,       ///< where the flow goes: degrees counter-clockwise from east, (-180, 180]
    XComponent,  ///< along the x axis, turned by -slant
    YComponent,
    Bearing,  ///< where the flow goes: degrees clockwise from north, [0, 360)
    Time,     ///< hours, with -sec seconds; a marker as it is
    SmsId,    ///< node or element number of the mesh; from here on no reals
    PtType,   ///< kind of a node
    MatId,    ///< material of a cell; of a node or a point that of the last cell in numbering order that has it
    GridRef   ///< "R00001C00001"
};
constexpr std::size_t REAL_COLUMNS = static_cast<std::size_t>(Column::SmsId);

struct MapItem {
    std::int32_t id = 0;               ///< of the node or element; 0 for a grid cell
    std::int32_t row = 0, column = 0;  ///< of a grid cell, from 1, row 1 the southernmost
    double x = 0.0, y = 0.0;           ///< where its point stands or its arrow starts, map units
    NodeKind kind = {' ', ' '};
    std::int32_t material = 0;
    float vx = 0.0F, vy = 0.0F;  ///< components of vector results along the map's axes
    std::array<double, REAL_COLUMNS> reals{};

    double& operator[](Column column_) { return reals[static_cast<std::size_t>(column_)]; }
    double operator[](Column column_) const { return reals[static_cast<std::size_t>(column_)]; }
};
