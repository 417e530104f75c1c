#include "gdal_outputs/module/shapes.h"

#include "gdal_outputs/module/failures.h"

#include <ogr_geometry.h>

#include <memory>
#include <string>

namespace {

struct DestroyGeometry {
    void operator()(OGRGeometryH geometry) const { OGR_G_DestroyGeometry(geometry); }
};
using GeometryHandle = std::unique_ptr<std::remove_pointer_t<OGRGeometryH>, DestroyGeometry>;

struct KindPair {
    GdalGeometry kind;
    OGRwkbGeometryType type;
};
constexpr KindPair KINDS[] = {
    {GdalNoGeometry, wkbNone},           {GdalPoint, wkbPoint},
    {GdalMultiPoint, wkbMultiPoint},     {GdalLine, wkbLineString},
    {GdalMultiLine, wkbMultiLineString}, {GdalRegion, wkbPolygon},
    {GdalMultiRegion, wkbMultiPolygon},  {GdalAnyGeometry, wkbUnknown},
};

GeometryHandle made(OGRwkbGeometryType type) { return GeometryHandle(OGR_G_CreateGeometry(type)); }

void addVertices(OGRGeometryH to, const GdalShape& shape, std::int32_t part) {
    const std::int32_t first = part == 0 ? 0 : shape.lastVertex[part - 1];
    const std::int32_t count = shape.lastVertex[part] - first;
    OGR_G_SetPoints(to, count, shape.x + first, sizeof(double), shape.y + first, sizeof(double), nullptr, 0);
}

GeometryHandle lineOf(const GdalShape& shape, std::int32_t part) {
    GeometryHandle line = made(wkbLineString);
    addVertices(line.get(), shape, part);
    return line;
}

GeometryHandle pointOf(const GdalShape& shape, std::int32_t vertex) {
    GeometryHandle point = made(wkbPoint);
    OGR_G_SetPoint_2D(point.get(), 0, shape.x[vertex], shape.y[vertex]);
    return point;
}

GeometryHandle polygonOf(const GdalShape& shape, std::int32_t part) {
    GeometryHandle polygon = made(wkbPolygon);
    GeometryHandle ring = made(wkbLinearRing);
    addVertices(ring.get(), shape, part);
    OGR_G_AddGeometryDirectly(polygon.get(), ring.release());
    return polygon;
}

/// Several rings: one polygon with holes, or several polygons.
GeometryHandle regionsOf(const GdalShape& shape) {
    std::vector<OGRGeometry*> polygons;
    for (std::int32_t part = 0; part < shape.parts; ++part)
        polygons.push_back(OGRGeometry::FromHandle(polygonOf(shape, part).release()));
    int valid = 0;
    return GeometryHandle(OGRGeometry::ToHandle(
        OGRGeometryFactory::organizePolygons(polygons.data(), static_cast<int>(polygons.size()), &valid, nullptr)));
}

GeometryHandle collected(OGRwkbGeometryType type, const GdalShape& shape, std::int32_t count,
                         GeometryHandle (*one)(const GdalShape&, std::int32_t)) {
    GeometryHandle all = made(type);
    for (std::int32_t i = 0; i < count; ++i) OGR_G_AddGeometryDirectly(all.get(), one(shape, i).release());
    return all;
}

GeometryHandle geometryOf(const GdalShape& shape) {
    switch (shape.geometry) {
        case GdalPoint: return pointOf(shape, 0);
        case GdalMultiPoint: return collected(wkbMultiPoint, shape, shape.lastVertex[shape.parts - 1], pointOf);
        case GdalLine: return lineOf(shape, 0);
        case GdalMultiLine: return collected(wkbMultiLineString, shape, shape.parts, lineOf);
        case GdalRegion:
        case GdalMultiRegion: return shape.parts == 1 ? polygonOf(shape, 0) : regionsOf(shape);
        default: break;
    }
    throw GdalFailure{"an object of a kind that cannot be written"};
}

/// The geometry in the collection that the layer holds, unless it is one already.
GeometryHandle wrapped(GeometryHandle geometry, OGRwkbGeometryType layer) {
    const OGRwkbGeometryType type = OGR_G_GetGeometryType(geometry.get());
    if (layer == wkbUnknown || type == layer) return geometry;
    if (OGR_GT_GetCollection(type) != layer) throw GdalFailure{"an object of another kind than its layer's"};
    GeometryHandle all = made(layer);
    OGR_G_AddGeometryDirectly(all.get(), geometry.release());
    return all;
}

void takeVertices(OGRGeometryH geometry, ReadShape& to) {
    const int count = OGR_G_GetPointCount(geometry);
    if (count < 1) return;
    const std::size_t before = to.x.size();
    to.x.resize(before + static_cast<std::size_t>(count));
    to.y.resize(before + static_cast<std::size_t>(count));
    OGR_G_GetPoints(geometry, &to.x[before], sizeof(double), &to.y[before], sizeof(double), nullptr, 0);
    to.lastVertex.push_back(static_cast<std::int32_t>(to.x.size()));
}

/// Points, lines and rings, at whatever depth they stand.
void takeParts(OGRGeometryH geometry, ReadShape& to) {
    const int inside = OGR_G_GetGeometryCount(geometry);
    if (inside == 0) takeVertices(geometry, to);
    for (int i = 0; i < inside; ++i) takeParts(OGR_G_GetGeometryRef(geometry, i), to);
}

}  // namespace

OGRwkbGeometryType OGR_TYPE(std::int32_t geometry) {
    for (const KindPair& pair : KINDS)
        if (pair.kind == geometry) return pair.type;
    throw GdalFailure{"a layer of a kind that there is not"};
}

GdalGeometry GEOMETRY_OF(OGRwkbGeometryType type) {
    const OGRwkbGeometryType flat = OGR_GT_Flatten(OGR_GT_GetLinear(type));
    for (const KindPair& pair : KINDS)
        if (pair.type == flat) return pair.kind;
    if (flat == wkbTriangle) return GdalRegion;
    return flat == wkbTIN || flat == wkbPolyhedralSurface ? GdalMultiRegion : GdalAnyGeometry;
}

void PUT_SHAPE(OGRFeatureH feature, std::int32_t layer, const GdalShape& shape) {
    if (shape.geometry == GdalNoGeometry) {
        OGR_F_SetGeometryDirectly(feature, nullptr);
        return;
    }
    if (shape.geometry == GdalPoint && layer == GdalPoint) {
        OGRGeometryH kept = OGR_F_GetGeometryRef(feature);  // a new one for every point costs a tenth of the time
        if (kept != nullptr) return OGR_G_SetPoint_2D(kept, 0, shape.x[0], shape.y[0]);
    }
    OGR_F_SetGeometryDirectly(feature, wrapped(geometryOf(shape), OGR_TYPE(layer)).release());
}

void TAKE_SHAPE(OGRGeometryH geometry, ReadShape& to) {
    to.lastVertex.clear();
    to.x.clear();
    to.y.clear();
    GdalGeometry kind = GdalNoGeometry;
    if (geometry != nullptr && OGR_G_IsEmpty(geometry) == 0) {
        kind = GEOMETRY_OF(OGR_G_GetGeometryType(geometry));
        if (kind == GdalAnyGeometry)
            throw GdalFailure{"an object that collects other objects (" + std::string(OGR_G_GetGeometryName(geometry)) +
                              ")"};
        const GeometryHandle lines(
            OGR_G_HasCurveGeometry(geometry, FALSE) != 0 ? OGR_G_GetLinearGeometry(geometry, 0.0, nullptr) : nullptr);
        takeParts(lines ? lines.get() : geometry, to);
    }
    to.shape = {kind, static_cast<std::int32_t>(to.lastVertex.size()), to.lastVertex.data(), to.x.data(), to.y.data()};
}
