#include "gdal_outputs/module/raster_output.h"

#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/driver_options.h"
#include "gdal_outputs/module/failures.h"

#include <cpl_vsi.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

void setMetadata(GDALMajorObjectH object, const CPLStringList& metadata) {
    for (int i = 0; i < metadata.Count(); ++i) {
        char* key = nullptr;
        const char* value = CPLParseNameValue(metadata[i], &key);
        if (key != nullptr) GDALSetMetadataItem(object, key, value, nullptr);
        CPLFree(key);
    }
}

/// The keys of a GeoTIFF lack some projections; such a system would be missing from the file without a word.
void checkKept(OGRSpatialReferenceH crs) {
    const std::string name = "/vsimem/vorant_gdal_crs.tif";
    DatasetHandle probe(GDALCreate(DRIVER("GTiff"), name.c_str(), 1, 1, 1, GDT_Byte, nullptr));
    if (!probe) FAIL("a GeoTIFF could not be created");
    GDALSetSpatialRef(probe.get(), crs);
    probe.reset();
    probe.reset(GDALOpenEx(name.c_str(), GDAL_OF_RASTER, nullptr, nullptr, nullptr));
    const bool kept = probe && GDALGetSpatialRef(probe.get()) != nullptr;
    probe.reset();
    VSIUnlink(name.c_str());
    if (!kept) throw GdalFailure{"a GeoTIFF cannot hold its coordinate system"};
}

void setNumber(GDALRasterBandH band, const char* key, double value, const char* format) {
    GDALSetMetadataItem(band, key, CPLSPrintf(format, value), nullptr);
}

}  // namespace

RasterFacts::RasterFacts(const GdalRasterFacts& given)
    : path(given.path),
      columns(given.columns),
      rows(given.rows),
      noData(given.noData),
      metadata(OPTIONS_OVER({}, given.metadata)),
      options(OPTIONS_OVER({}, given.options)),
      threads(std::max(1, given.threads)),
      memory(given.memory) {
    if (columns < 1 || rows < 1 || given.bandCount < 1) throw GdalFailure{"the raster has no cells"};
    std::copy_n(given.geoTransform, 6, geoTransform.begin());
    if (*given.crs != '\0') {
        const ConfigScope noSideFiles("GDAL_PAM_ENABLED", "NO");
        crs = SRS_OF(given.crs);
        checkKept(crs.get());
    }
    for (std::int32_t i = 0; i < given.bandCount; ++i)
        bands.push_back({given.bands[i].description, given.bands[i].unit, OPTIONS_OVER({}, given.bands[i].metadata)});
}

std::unique_ptr<GdalRasterOutput> OPEN_RASTER(const GdalRasterFacts& facts) {
    std::unique_ptr<GdalRasterOutput> output =
        facts.kind == GdalMultiband ? MULTIBAND_OUTPUT(facts) : COG_OUTPUT(facts);
    try {
        output->open();
    } catch (...) {
        output->abandon();
        throw;
    }
    return output;
}

GdalRasterOutput::GdalRasterOutput(const GdalRasterFacts& given)
    : facts(given), clean_(static_cast<std::size_t>(facts.columns)) {}

void GdalRasterOutput::rows(std::int32_t band, std::int32_t firstRow, std::int32_t count, const float* values) {
    if (band == band_ + 1 && band <= static_cast<std::int32_t>(facts.bands.size())) {
        endBand();
        rowStatistics_.emplace(facts.rows);
        rowsDone_ = 0;
        band_ = band;
        northwards_ = firstRow == 1;
    }
    const std::int32_t expected = northwards_ ? rowsDone_ + 1 : facts.rows - rowsDone_ - count + 1;
    if (band != band_ || count < 0 || count > facts.rows - rowsDone_ || firstRow != expected)
        throw GdalFailure{"rows of the raster came out of order"};
    const auto columns = static_cast<std::size_t>(facts.columns);
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int32_t inBlock = northwards_ ? i : count - 1 - i;
        takeRow(firstRow + inBlock, values + static_cast<std::size_t>(inBlock) * columns);
    }
    rowsDone_ += count;
}

void GdalRasterOutput::takeRow(std::int32_t row, const float* values) {
    std::transform(values, values + clean_.size(), clean_.begin(), [this](float value) {
        return std::abs(value) <= std::numeric_limits<float>::max() ? value : facts.noData;
    });
    const std::int32_t fromNorth = facts.rows - row;
    rowStatistics_->note(fromNorth, clean_.data(), clean_.size(), facts.noData);
    put(band_, fromNorth, clean_.data());
}

void GdalRasterOutput::endBand() {
    if (band_ == 0) return;
    if (rowsDone_ != facts.rows) throw GdalFailure{"the raster has not been given all its rows"};
    statistics_.push_back(rowStatistics_->total());
}

void GdalRasterOutput::close() {
    endBand();
    if (statistics_.size() != facts.bands.size()) throw GdalFailure{"the raster has not been given all its bands"};
    finish();
}

void GdalRasterOutput::describe(GDALDatasetH dataset) const {
    GDALSetGeoTransform(dataset, const_cast<double*>(facts.geoTransform.data()));
    if (facts.crs) GDALSetSpatialRef(dataset, facts.crs.get());
    setMetadata(dataset, facts.metadata);
    for (int i = 1; i <= static_cast<int>(facts.bands.size()); ++i) {
        const RasterFacts::Band& band = facts.bands[static_cast<std::size_t>(i - 1)];
        GDALRasterBandH to = GDALGetRasterBand(dataset, i);
        GDALSetRasterNoDataValue(to, static_cast<double>(facts.noData));
        if (!band.description.empty()) GDALSetDescription(to, band.description.c_str());
        if (!band.unit.empty()) GDALSetRasterUnitType(to, band.unit.c_str());
        setMetadata(to, band.metadata);
    }
    CHECK_FAILURES();
}

void GdalRasterOutput::putStatistics(GDALDatasetH dataset) const {
    const double cells = static_cast<double>(facts.columns) * static_cast<double>(facts.rows);
    for (std::size_t i = 0; i < statistics_.size(); ++i) {
        const BandStatistics& of = statistics_[i];
        if (of.count == 0) continue;
        GDALRasterBandH band = GDALGetRasterBand(dataset, static_cast<int>(i) + 1);
        const auto count = static_cast<double>(of.count);
        setNumber(band, "STATISTICS_MINIMUM", of.lowest, "%.14g");
        setNumber(band, "STATISTICS_MAXIMUM", of.highest, "%.14g");
        setNumber(band, "STATISTICS_MEAN", of.mean, "%.14g");
        setNumber(band, "STATISTICS_STDDEV", std::sqrt(of.squares / count), "%.14g");
        setNumber(band, "STATISTICS_VALID_PERCENT", 100.0 * count / cells, "%.4g");
    }
}

bool HAS_PREDICTOR(const CPLStringList& options) {
    const char* compression = options.FetchNameValueDef("COMPRESS", "NONE");
    return EQUAL(compression, "DEFLATE") || EQUAL(compression, "LZW") || EQUAL(compression, "ZSTD");
}

void CHECK_DISK_SPACE(const std::string& path, std::int64_t bytes) {
    const std::int64_t left = VSIGetDiskFreeSpace(CPLGetDirname(path.c_str()));
    if (left >= 0 && left < bytes)
        throw GdalFailure{std::to_string(bytes) + " bytes are needed on the disk, and " + std::to_string(left) +
                          " are free"};
}
