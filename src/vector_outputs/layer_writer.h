// Writes one vector layer from its objects, in two walks over them: the first sizes the columns, the second writes.
#pragma once

#include "vector_outputs/arrow.h"
#include "vector_outputs/item_source.h"
#include "vector_outputs/layer_target.h"
#include "vector_outputs/record_columns.h"

#include <string>
#include <vector>

/// What is written and how. Filled by the run's vector outputs.
struct LayerJob {
    std::string name;  ///< with its extension, .mif or .shp
    ItemSource source;
    RecordColumns record;
    ArrowRules arrows;                      ///< of a layer of arrows
    double step = 0.0;                      ///< what the file keeps coordinates to, map units; 0: as they are
    std::vector<float>* written = nullptr;  ///< of a difference: takes the values, of vectors the magnitudes
};

/// Writes the layer and reports the number of its objects. Polygons that would not be valid are left out with one
/// WARNING; a layer without objects is written empty, with a WARNING. Objects are drawn a piece at a time on the
/// threads of the run, so memory does not grow with their number.
void WRITE_LAYER(LayerJob& job);
/// The same into another place, in one walk, since nothing there has a width.
void HAND_OVER_LAYER(LayerJob& job, LayerTarget& target);
