// Where the objects of a layer go when they do not become files of the gis operations of their own.
#pragma once

#include "gis/object.h"
#include "vector_outputs/map_item.h"

struct LayerJob;

class LayerTarget {
public:
    virtual ~LayerTarget() = default;
    /// A dataset at one output time. job: its kind and its columns, whose ranges nobody has looked at.
    virtual void begin(const LayerJob& job) = 0;
    virtual void object(const MapItem& item, const GisObject& o) = 0;
};
