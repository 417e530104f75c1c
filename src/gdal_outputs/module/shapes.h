// Vertex arrays as geometries of GDAL's, and back.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "gdal_outputs/module/gdal_handles.h"

#include <cstdint>
#include <vector>

OGRwkbGeometryType OGR_TYPE(std::int32_t geometry);
/// The kind that a type of GDAL's holds, curves as lines, heights left out; GdalAnyGeometry for collections and unknown
/// ones.
GdalGeometry GEOMETRY_OF(OGRwkbGeometryType type);

/// Gives the feature the shape. layer: the kind of its layer; a Multi kind wraps single shapes. Rings of a region are
/// sorted into outlines and holes by where they lie.
void PUT_SHAPE(OGRFeatureH feature, std::int32_t layer, const GdalShape& shape);

/// A shape that was read, with its arrays.
struct ReadShape {
    std::vector<std::int32_t> lastVertex;
    std::vector<double> x, y;
    GdalShape shape{};
};
/// Takes the vertices of a geometry; null is GdalNoGeometry. Fails for collections of unlike kinds.
void TAKE_SHAPE(OGRGeometryH geometry, ReadShape& to);
