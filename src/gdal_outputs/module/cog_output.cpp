// A Cloud Optimized GeoTIFF. GDAL makes one only as a copy of a whole raster with its overviews, since these stand
// first in the file: the values wait in memory, or beyond the run's limit in a plain GeoTIFF beside the output.
#include "gdal_outputs/module/driver_options.h"
#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/raster_output.h"
#include "gdal_outputs/module/tile_rows.h"

#include <cpl_vsi.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::int32_t TILE = 512;
/// Options that change which overviews there are: GDAL then makes them itself.
constexpr const char* OVERVIEWS_BY_GDAL[] = {"OVERVIEWS", "OVERVIEW_COUNT", "TILING_SCHEME", "TARGET_SRS",
                                             "RES",       "EXTENT"};

/// The values and a third of them again: the overviews are a quarter, a sixteenth, ...
constexpr std::int64_t withOverviews(std::int64_t bytes) { return bytes + bytes / 3; }

/// Gone when its owner is.
struct TemporaryFile {
    ~TemporaryFile() {
        if (!path.empty()) VSIUnlink(path.c_str());
    }
    std::string path;
};

class CogOutput final : public GdalRasterOutput {
public:
    explicit CogOutput(const GdalRasterFacts& given) : GdalRasterOutput(given) {}
    void open() override;
    void abandon() override;

private:
    void put(std::int32_t band, std::int32_t row, const float* values) override;
    void finish() override;
    void openInMemory();
    void openOnDisk();
    void copy();
    void buildOverviews(const CPLStringList& options);
    CPLStringList copyOptions() const;

    std::unique_ptr<float[]> values_;  ///< all of them, north to south, when they fit
    TemporaryFile file_;               ///< that holds them otherwise
    DatasetHandle waiting_;
    std::optional<TileRows> tiles_;
};

void CogOutput::open() {
    if (facts.bands.size() != 1) throw GdalFailure{"a COG is written with one band"};
    const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
    VSIUnlink(facts.path.c_str());
    if (facts.memory <= 0 || withOverviews(facts.bytes()) <= facts.memory) openInMemory();
    else openOnDisk();
    describe(waiting_.get());
}

void CogOutput::openInMemory() {
    const auto cells = static_cast<std::size_t>(facts.columns) * static_cast<std::size_t>(facts.rows);
    values_ = std::make_unique_for_overwrite<float[]>(cells);
    waiting_.reset(GDALCreate(DRIVER("MEM"), "", facts.columns, facts.rows, 0, GDT_Float32, nullptr));
    if (!waiting_) FAIL("the raster could not be held in memory");
    char pointer[64] = {};
    pointer[CPLPrintPointer(pointer, values_.get(), sizeof pointer - 1)] = '\0';
    CPLStringList options;
    options.SetNameValue("DATAPOINTER", pointer);
    if (GDALAddBand(waiting_.get(), GDT_Float32, options.List()) != CE_None)
        FAIL("the raster could not be held in memory");
}

void CogOutput::openOnDisk() {
    CHECK_DISK_SPACE(facts.path, withOverviews(facts.bytes()));
    file_.path = facts.path + ".values.tif";
    CPLStringList options;
    options.SetNameValue("TILED", "YES");
    options.SetNameValue("BLOCKXSIZE", std::to_string(TILE).c_str());
    options.SetNameValue("BLOCKYSIZE", std::to_string(TILE).c_str());
    options.SetNameValue("BIGTIFF", withOverviews(facts.bytes()) > 2'000'000'000 ? "YES" : "NO");
    waiting_.reset(
        GDALCreate(DRIVER("GTiff"), file_.path.c_str(), facts.columns, facts.rows, 1, GDT_Float32, options.List()));
    if (!waiting_) FAIL("the file could not be created");
    tiles_.emplace(waiting_.get(), TILE);
}

void CogOutput::put(std::int32_t band, std::int32_t row, const float* values) {
    if (tiles_) return tiles_->put(band, row, values);
    const auto columns = static_cast<std::size_t>(facts.columns);
    std::copy_n(values, columns, &values_[static_cast<std::size_t>(row) * columns]);
}

CPLStringList CogOutput::copyOptions() const {
    CPLStringList options;
    options.SetNameValue("COMPRESS", "DEFLATE");
    options.SetNameValue("BLOCKSIZE", std::to_string(TILE).c_str());
    options.SetNameValue("OVERVIEW_RESAMPLING", "AVERAGE");
    options.SetNameValue("BIGTIFF", "IF_SAFER");  // compressed data may pass 4 GiB where nobody can know before
    options.SetNameValue("NUM_THREADS", std::to_string(facts.threads).c_str());
    options = OPTIONS_OVER(options, {facts.options.List(), facts.options.Count()});
    if (HAS_PREDICTOR(options) && options.FetchNameValue("PREDICTOR") == nullptr)
        options.SetNameValue("PREDICTOR", "FLOATING_POINT");
    return options;
}

void CogOutput::buildOverviews(const CPLStringList& options) {
    for (const char* option : OVERVIEWS_BY_GDAL)
        if (options.FetchNameValue(option) != nullptr) return;
    BUILD_OVERVIEWS(waiting_.get(), std::max(1, std::atoi(options.FetchNameValue("BLOCKSIZE"))),
                    options.FetchNameValue("OVERVIEW_RESAMPLING"), facts.threads);
}

void CogOutput::finish() {
    const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
    const CPLStringList options = copyOptions();
    buildOverviews(options);
    putStatistics(waiting_.get());
    CHECK_FAILURES();
    DatasetHandle output(GDALCreateCopy(DRIVER("COG"), facts.path.c_str(), waiting_.get(), FALSE,
                                        const_cast<CPLStringList&>(options).List(), GDALDummyProgress, nullptr));
    if (!output) FAIL("the file could not be written");
    output.reset();
    CHECK_FAILURES();
}

void CogOutput::abandon() {
    const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
    waiting_.reset();
    VSIUnlink(facts.path.c_str());
}

}  // namespace

std::unique_ptr<GdalRasterOutput> COG_OUTPUT(const GdalRasterFacts& facts) {
    return std::make_unique<CogOutput>(facts);
}
