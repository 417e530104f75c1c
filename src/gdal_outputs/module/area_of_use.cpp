// Whether a mesh lies where its coordinate system is meant to be used.
#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/failures.h"

#include <algorithm>

namespace {

constexpr double ROUNDING = 0.01;     ///< degrees, of the areas that the authorities publish
constexpr int POINTS_ON_A_SIDE = 21;  ///< of the box, whose sides are bent lines in degrees

GdalAreaOfUse place(const GdalBox& area, const GdalBox& box) {
    if (box.xmin >= area.xmin && box.xmax <= area.xmax && box.ymin >= area.ymin && box.ymax <= area.ymax)
        return GdalInside;
    const bool apart = box.xmin > area.xmax || box.xmax < area.xmin || box.ymin > area.ymax || box.ymax < area.ymin;
    return apart ? GdalOutside : GdalPartlyOutside;
}

}  // namespace

GdalAreaOfUse AREA_OF_USE(const GdalCrs& crs, const GdalBox& box) {
    GdalBox area{};
    const bool ofItself = OSRGetAreaOfUse(crs.srs.get(), &area.xmin, &area.ymin, &area.xmax, &area.ymax, nullptr) != 0;
    if (!ofItself &&
        (!crs.known || OSRGetAreaOfUse(crs.known.get(), &area.xmin, &area.ymin, &area.xmax, &area.ymax, nullptr) == 0))
        return GdalAreaUnknown;
    if (area.xmin < -180.0 || area.ymin < -90.0) return GdalAreaUnknown;  // -1000 where there is none
    const SrsHandle wgs84 = SRS_OF("EPSG:4326");
    const TransformHandle way = TRANSFORM(crs.srs.get(), wgs84.get());
    GdalBox degrees{};
    const bool there = way && OCTTransformBounds(way.get(), box.xmin, box.ymin, box.xmax, box.ymax, &degrees.xmin,
                                                 &degrees.ymin, &degrees.xmax, &degrees.ymax, POINTS_ON_A_SIDE) != 0;
    CLEAR_FAILURES();
    if (!there) return GdalOutside;
    area = {area.xmin - ROUNDING, area.ymin - ROUNDING, area.xmax + ROUNDING, area.ymax + ROUNDING};
    if (area.xmax < area.xmin) area.xmax += 360.0;  // across the date line
    if (degrees.xmax < degrees.xmin) degrees.xmax += 360.0;
    GdalAreaOfUse best = GdalOutside;
    for (const double turn : {-360.0, 0.0, 360.0}) {
        const GdalAreaOfUse found = place(area, {degrees.xmin + turn, degrees.ymin, degrees.xmax + turn, degrees.ymax});
        best = std::min(best, found);
    }
    return best;
}
