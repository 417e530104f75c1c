#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/raster_output.h"

#include <algorithm>

namespace {

/// Fills each overview from the one before.
void averageLevels(GDALRasterBandH band, const char* resampling) {
    const double noData = GDALGetRasterNoDataValue(band, nullptr);
    GDALRasterBandH from = band;
    for (int level = 0; level < GDALGetOverviewCount(band); ++level) {
        GDALRasterBandH to = GDALGetOverview(band, level);
        int there = 0;
        GDALGetRasterNoDataValue(to, &there);
        if (there == 0) GDALSetRasterNoDataValue(to, noData);
        if (GDALRegenerateOverviews(from, 1, &to, resampling, GDALDummyProgress, nullptr) != CE_None)
            FAIL("the overviews could not be made");
        from = to;
    }
}

}  // namespace

void BUILD_OVERVIEWS(GDALDatasetH dataset, std::int32_t tile, const char* resampling, std::int32_t threads) {
    // Averages of odd sizes depend on the rows that GDAL takes at a time, which follow from the height of the blocks:
    // these are as high on the disk as in memory (above 256 and below 16 rows count alike).
    const ConfigScope blocks("GDAL_TIFF_OVR_BLOCKSIZE", "512");
    const ConfigScope workers("GDAL_NUM_THREADS", std::to_string(threads));
    std::vector<int> factors;
    const int longest = std::max(GDALGetRasterXSize(dataset), GDALGetRasterYSize(dataset));
    for (int factor = 2; (longest - 1) / (factor / 2) + 1 > tile; factor *= 2) factors.push_back(factor);
    if (factors.empty()) return;
    const auto levels = static_cast<int>(factors.size());
    if (GDALBuildOverviews(dataset, "NONE", levels, factors.data(), 0, nullptr, GDALDummyProgress, nullptr) != CE_None)
        FAIL("the overviews could not be made");
    for (int band = 1; band <= GDALGetRasterCount(dataset); ++band)
        averageLevels(GDALGetRasterBand(dataset, band), resampling);
}
