#include "gdal_outputs/module/raster_place.h"

#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/gdal_handles.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

std::string listed(const double* numbers) {
    std::string text;
    for (int i = 0; i < 6; ++i) text += (i == 0 ? "" : ", ") + std::string(CPLSPrintf("%.15g", numbers[i]));
    return text;
}

/// Blank when the cells are square, with rows from north to south: over the whole raster the two sizes may drift apart
/// by less than a hundredth of a cell, which is what text in a file's header costs.
std::string fault(const double* t, int longest) {
    if (t[2] != 0.0 || t[4] != 0.0) return "is turned";
    if (t[5] >= 0.0) return "has its first row in the south";
    if (t[1] <= 0.0) return "has its first column in the east";
    const double drift = std::abs(t[1] + t[5]) * static_cast<double>(longest);
    return drift < 0.01 * std::min(t[1], -t[5]) ? "" : "has cells that are not square";
}

}  // namespace

void READ_RASTER_PLACE(const char* path, GdalRasterPlace& place) {
    const DatasetHandle raster(
        GDALOpenEx(path, GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR, nullptr, nullptr, nullptr));
    if (!raster) FAIL("no raster that GDAL can read");
    place.columns = GDALGetRasterXSize(raster.get());
    place.rows = GDALGetRasterYSize(raster.get());
    if (GDALGetRasterCount(raster.get()) < 1) throw GdalFailure{"it holds no raster, or several"};
    if (GDALGetGeoTransform(raster.get(), place.geoTransform) != CE_None) throw GdalFailure{"it has no geotransform"};
    for (const double number : place.geoTransform)
        if (!std::isfinite(number)) throw GdalFailure{"its geotransform is not finite"};
    const std::string wrong = fault(place.geoTransform, std::max(place.columns, place.rows));
    if (!wrong.empty()) throw GdalFailure{"it " + wrong + "; its geotransform is " + listed(place.geoTransform)};
    static thread_local std::string crs;
    crs = WKT_OF(GDALGetSpatialRef(raster.get()));
    place.crs = crs.c_str();
}
