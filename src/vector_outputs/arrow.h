// Arrows: how long a vector is drawn, and the arrow itself.
#pragma once

#include "gis/object.h"
#include "inputs/mesh.h"
#include "vector_outputs/flow.h"
#include "vector_outputs/map_item.h"

#include <cstdint>
#include <optional>
#include <vector>

/// How the arrows of a run are drawn. Filled by ARROW_RULES.
struct ArrowRules {
    enum class Along : std::uint8_t { Flow, XAxis, YAxis };
    Along along = Along::Flow;  ///< an axis: the component along it is drawn
    TurnedAxes axes;
    bool outlined = false;           ///< a region with a tail of some thickness; else a polyline
    double cellSize = 1.0;           ///< map units
    double lengthOfUnit = 1.0;       ///< map units for a magnitude of 1
    double fixedLength = 0.0;        ///< map units for every vector; 0 when the length follows the magnitude
    double cap = 0.0;                ///< larger magnitudes are drawn as this one; 0 for none
    double thicknessOfLength = 0.0;  ///< tail thickness per arrow length
    double fixedThickness = 0.0;     ///< tail thickness, map units
    double step = 0.0;               ///< what the file keeps coordinates to, map units; 0: as they are
};

/// The arrows that were asked for, before the size of a cell is known.
struct ArrowChoice {
    ArrowRules::Along along = ArrowRules::Along::Flow;
    float slantAngle = 0.0F;     ///< degrees the axes are turned counter-clockwise
    bool outlined = false;       ///< the format has no lines for arrows
    double scaleFactor = 1.0;    ///< cells per magnitude of 1
    double fixedLength = 0.0;    ///< map units; 0 when the length follows the magnitude
    double cap = 0.0;            ///< larger magnitudes are drawn as this one; 0 for none
    double tailThickness = 0.0;  ///< per arrow length, or per cell size
    bool thicknessPerCellSize = false;
    double step = 0.0;  ///< what the file keeps coordinates to, map units; 0: as they are
};

/// cellSize: map units.
ArrowRules ARROW_RULES(const ArrowChoice& choice, double cellSize);

/// The length of a cell: median over the 2D elements that are neither removed nor flat of the square root of the area
/// (the mean of the middle two). 1D triangles do not count. Nothing when there is no such element.
std::optional<double> MEDIAN_CELL_SIZE(const Mesh& mesh);

enum class Drawn : std::uint8_t { Object, Nothing, Invalid };

/// The arrow of an item whose columns are set, starting at its point. With L its length, u along the flow and w to the
/// left: a polyline (0,0) (L,0) (0.7L,0.1L) (L,0) (0.7L,-0.1L), or a closed clockwise ring around a tail of thickness
/// 2t, at most 0.2L: (0,t) (0.7L,t) (0.7L,0.1L) (L,0) (0.7L,-0.1L) (0.7L,-t) (0,-t) (0,t), of area 0.7 L 2t + 0.03 L L.
/// Nothing: at rest, or shorter than a ten-thousandth of a cell. Invalid: too thin for the coordinates of the file to
/// make a polygon, or to show the head of a polyline.
Drawn DRAW_ARROW(const ArrowRules& rules, const MapItem& item, GisObject& o);
