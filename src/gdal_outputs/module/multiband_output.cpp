// A tiled GeoTIFF of several bands, one after the other in the file, so that one time can be read, or written, without
// the others. GDAL's COG writer would interleave them cell by cell.
#include "gdal_outputs/module/driver_options.h"
#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/raster_output.h"
#include "gdal_outputs/module/tile_rows.h"

#include <cpl_vsi.h>

#include <cstdlib>

namespace {

constexpr std::int32_t TILE = 512;

class MultibandOutput final : public GdalRasterOutput {
public:
    explicit MultibandOutput(const GdalRasterFacts& given) : GdalRasterOutput(given) {}
    void open() override;
    void abandon() override;

private:
    void put(std::int32_t band, std::int32_t row, const float* values) override { tiles_->put(band, row, values); }
    void finish() override;
    CPLStringList createOptions() const;

    DatasetHandle output_;
    std::optional<TileRows> tiles_;
    std::int32_t tile_ = TILE;
};

void MultibandOutput::open() {
    const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
    VSIUnlink(facts.path.c_str());
    CPLStringList options = createOptions();
    tile_ = std::max(16, std::atoi(options.FetchNameValue("BLOCKYSIZE")));
    output_.reset(GDALCreate(DRIVER("GTiff"), facts.path.c_str(), facts.columns, facts.rows,
                             static_cast<int>(facts.bands.size()), GDT_Float32, options.List()));
    if (!output_) FAIL("the file could not be created");
    describe(output_.get());
    tiles_.emplace(output_.get(), tile_);
}

CPLStringList MultibandOutput::createOptions() const {
    CPLStringList options;
    options.SetNameValue("TILED", "YES");
    options.SetNameValue("BLOCKXSIZE", std::to_string(TILE).c_str());
    options.SetNameValue("BLOCKYSIZE", std::to_string(TILE).c_str());
    options.SetNameValue("INTERLEAVE", "BAND");
    options.SetNameValue("COMPRESS", "DEFLATE");
    options.SetNameValue("BIGTIFF", "IF_SAFER");
    options.SetNameValue("NUM_THREADS", std::to_string(facts.threads).c_str());
    options = OPTIONS_OVER(options, {facts.options.List(), facts.options.Count()});
    if (HAS_PREDICTOR(options) && options.FetchNameValue("PREDICTOR") == nullptr)
        options.SetNameValue("PREDICTOR", "3");
    return options;
}

void MultibandOutput::finish() {
    const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
    tiles_.reset();
    putStatistics(output_.get());
    GDALFlushCache(output_.get());
    CHECK_FAILURES();
    BUILD_OVERVIEWS(output_.get(), tile_, "AVERAGE", facts.threads);
    output_.reset();
    CHECK_FAILURES();
}

void MultibandOutput::abandon() {
    const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
    output_.reset();
    VSIUnlink(facts.path.c_str());
}

}  // namespace

std::unique_ptr<GdalRasterOutput> MULTIBAND_OUTPUT(const GdalRasterFacts& facts) {
    return std::make_unique<MultibandOutput>(facts);
}
