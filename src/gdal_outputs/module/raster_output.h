// A raster that is being written: rows in, a file out. Two kinds stand on one base.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "gdal_outputs/module/band_statistics.h"
#include "gdal_outputs/module/gdal_handles.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What is kept of GdalRasterFacts.
struct RasterFacts {
    struct Band {
        std::string description, unit;
        CPLStringList metadata;
    };
    explicit RasterFacts(const GdalRasterFacts& facts);
    std::int64_t bytes() const { return std::int64_t{4} * columns * rows; }  ///< of one band's values

    std::string path;
    std::int32_t columns, rows;
    std::array<double, 6> geoTransform{};
    float noData;
    SrsHandle crs;  ///< null for none
    CPLStringList metadata, options;
    std::vector<Band> bands;
    std::int32_t threads;
    std::int64_t memory;
};

/// Counts rows, clears values that are not finite and gathers statistics; where the rows go is the derived class's.
struct GdalRasterOutput {
    explicit GdalRasterOutput(const GdalRasterFacts& given);
    virtual ~GdalRasterOutput() = default;
    GdalRasterOutput(const GdalRasterOutput&) = delete;
    GdalRasterOutput& operator=(const GdalRasterOutput&) = delete;

    /// Creates what is needed, or throws; `abandon` is then still to be called.
    virtual void open() = 0;
    /// As rasterRows of the table.
    void rows(std::int32_t band, std::int32_t firstRow, std::int32_t count, const float* values);
    /// Completes the file, or throws; `abandon` is then still to be called.
    void close();
    /// Removes whatever has been written.
    virtual void abandon() = 0;

protected:
    /// One whole row: band from 1, row from 0 at the north, no value that is not finite.
    virtual void put(std::int32_t band, std::int32_t row, const float* values) = 0;
    virtual void finish() = 0;
    /// Position, coordinate system, missing value, metadata and names.
    void describe(GDALDatasetH dataset) const;
    void putStatistics(GDALDatasetH dataset) const;

    RasterFacts facts;

private:
    void takeRow(std::int32_t row, const float* values);
    void endBand();

    std::int32_t band_ = 0;      ///< being written, from 1
    std::int32_t rowsDone_ = 0;  ///< of the band
    bool northwards_ = true;     ///< the order of the band's blocks
    std::optional<RowStatistics> rowStatistics_;
    std::vector<BandStatistics> statistics_;
    std::vector<float> clean_;
};

// One of each kind, not open yet.
std::unique_ptr<GdalRasterOutput> COG_OUTPUT(const GdalRasterFacts& facts);
std::unique_ptr<GdalRasterOutput> MULTIBAND_OUTPUT(const GdalRasterFacts& facts);
/// As rasterOpen of the table.
std::unique_ptr<GdalRasterOutput> OPEN_RASTER(const GdalRasterFacts& facts);

/// True when the compression that the options name takes a predictor.
bool HAS_PREDICTOR(const CPLStringList& options);
/// Fails when the disk that holds `path` has less than `bytes` left.
void CHECK_DISK_SPACE(const std::string& path, std::int64_t bytes);
/// Overviews by averages of the values that are there, down to one that fits a tile. resampling: GDAL's name.
void BUILD_OVERVIEWS(GDALDatasetH dataset, std::int32_t tile, const char* resampling, std::int32_t threads);
