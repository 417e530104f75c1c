// What the command line asks of the layers and text points of a run, in the terms of this folder.
#pragma once

#include "services/projection_text.h"
#include "vector_outputs/arrow.h"
#include "vector_outputs/layer_kinds.h"
#include "vector_outputs/layer_target.h"
#include "vector_outputs/point_types.h"
#include "vector_outputs/record_columns.h"

#include <string>

/// Filled once a run by whoever knows the switches; the mesh and the results add to it nothing.
struct LayerChoice {
    std::string extension = ".mif";  ///< of the main file
    bool text = false;               ///< a table of points: no map objects, no -verbose columns, no cutoff
    double coordinateStep = 0.0;     ///< what the file keeps coordinates to, map units; 0: as they are
    bool arrows = false;             ///< vectors are drawn as arrows; scalars are passed over
    bool regions = false;            ///< cells are drawn as polygons
    ShownColumns shown;
    ArrowChoice arrow;
    PointTypes pointTypes;
    RealFormat format;
    double cutoffDepth = 0.01;  ///< metres or feet: shallower objects are left out
    CoordinateKind coordinates = CoordinateKind::Unknown;
    LayerTarget* target = nullptr;  ///< takes the objects, where they do not become files of their own
    bool seconds = false;           ///< the Time column is in seconds
};
