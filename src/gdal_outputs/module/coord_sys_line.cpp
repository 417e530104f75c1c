// The CoordSys line of .mif files: GDAL's, as far as it holds.
#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/failures.h"

#include <array>
#include <cmath>
#include <string_view>

namespace {

constexpr double MOST_MOVED = 0.1;             ///< metres
constexpr double METRES_PER_RADIAN = 6378137;  ///< at the equator

struct Corner {
    double x, y;
};

/// The corner in the other system; not-a-number where there is no way.
Corner moved(OGRSpatialReferenceH from, OGRSpatialReferenceH to, Corner at) {
    const TransformHandle way = TRANSFORM(from, to);
    if (!way || OCTTransform(way.get(), 1, &at.x, &at.y, nullptr) == 0) return {NAN, NAN};
    return at;
}

double metresPerUnit(OGRSpatialReferenceH srs) {
    return OSRIsGeographic(srs) != 0 ? OSRGetAngularUnits(srs, nullptr) * METRES_PER_RADIAN
                                     : OSRGetLinearUnits(srs, nullptr);
}

/// False for not-a-number too.
bool close(Corner a, Corner b, double metres) {
    return std::abs(a.x - b.x) * metres <= MOST_MOVED && std::abs(a.y - b.y) * metres <= MOST_MOVED;
}

bool isPlace(Corner at) { return std::isfinite(at.x) && std::isfinite(at.y); }

/// Corners that the system itself places nowhere on earth (a mesh in local coordinates) tell nothing; one has to be
/// told.
bool holds(OGRSpatialReferenceH srs, OGRSpatialReferenceH readBack, const GdalBox& box) {
    const SrsHandle wgs84 = SRS_OF("EPSG:4326");
    const std::array<Corner, 4> corners{
        {{box.xmin, box.ymin}, {box.xmax, box.ymin}, {box.xmin, box.ymax}, {box.xmax, box.ymax}}};
    bool compared = false;
    for (const Corner& at : corners) {
        const Corner onEarth = moved(srs, wgs84.get(), at);
        if (!isPlace(onEarth)) continue;
        compared = true;
        if (!close(moved(readBack, srs, at), at, metresPerUnit(srs))) return false;
        // a datum that was lost moves nothing by itself, but on the way to any other system
        if (!close(moved(readBack, wgs84.get(), at), onEarth, metresPerUnit(wgs84.get()))) return false;
    }
    return compared;
}

}  // namespace

std::string PLAIN_COORD_SYS(OGRSpatialReferenceH srs) {
    char* text = nullptr;
    const OGRErr failed = OSRExportToMICoordSys(srs, &text);
    const std::string line = failed == OGRERR_NONE && text != nullptr ? text : "";
    CPLFree(text);
    return std::string_view(line).starts_with("Earth") ? "CoordSys " + line : std::string{};
}

std::string EXACT_COORD_SYS(OGRSpatialReferenceH srs, const GdalBox& box) {
    std::string line = PLAIN_COORD_SYS(srs);
    if (line.empty()) throw GdalFailure{"there is no CoordSys line for it"};
    const SrsHandle readBack = SRS_OF(line.c_str());
    if (!holds(srs, readBack.get(), box)) throw GdalFailure{"its CoordSys line loses a part of it"};
    return line;
}
