#include "gis/shp_names.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::string_view NONE = "Unknown";
constexpr std::array<std::string_view, 33> NAMES = {
    "Null Shape", "Point",    NONE,          "Polyline", NONE,          "Polygon",   NONE, NONE,          //  0
    "MultiPoint", NONE,       NONE,          "PointZ",   NONE,          "PolyLineZ", NONE, "PolygonZ",    //  8
    NONE,         NONE,       "MultiPointZ", NONE,       NONE,          "PointM",    NONE, "PolyLineM",   // 16
    NONE,         "PolygonM", NONE,          NONE,       "MultiPointM", NONE,        NONE, "MultiPatch",  // 24
    NONE,                                                                                                 // 32
};

}  // namespace

std::string_view SHP_TYPE_NAME(std::int32_t shapeType) {
    return shapeType < 0 || static_cast<std::size_t>(shapeType) >= NAMES.size()
               ? NONE
               : NAMES[static_cast<std::size_t>(shapeType)];
}

bool SHP_TYPE_SUPPORTED(std::int32_t shapeType) {
    return shapeType == SHP_NULL || shapeType == SHP_POINT || shapeType == SHP_POLYLINE || shapeType == SHP_POLYGON ||
           shapeType == SHP_MULTIPOINT;
}
