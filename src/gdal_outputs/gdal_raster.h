// GeoTIFFs through the GDAL module, and the place of any raster that GDAL reads.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "raster/grid.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct RasterBand {
    std::string description;  ///< "Water Level, m, 1.5 h"
    std::string unit;
    std::vector<std::string> metadata;  ///< "KEY=VALUE"
};

/// What a GeoTIFF holds beside its values. Filled by the raster outputs.
struct RasterFile {
    std::string path;        ///< with its extension; created or replaced
    std::string shown = {};  ///< its name in messages, where it is written under another one; blank: the path
    bool multiband = false;  ///< a tiled GeoTIFF, band after band; else a Cloud Optimized GeoTIFF of one band
    std::int32_t columns = 0, rows = 0;
    std::array<double, 6> geoTransform{};  ///< x and y of the north-west corner, cell sizes: x, width, 0, y, 0, -height
    std::string crs;                       ///< any text that RESOLVE_CRS takes; blank for none
    std::vector<std::string> metadata;     ///< "KEY=VALUE"
    std::vector<RasterBand> bands;
    std::vector<std::string> options;  ///< "KEY=VALUE" of -co
    int threads = 1;                   ///< that compress
    std::int64_t memory = 0;  ///< bytes that the values may take, beyond which they wait on the disk; 0: no limit
};

/// A grid's place as RasterFile has it.
std::array<double, 6> GEO_TRANSFORM(const Grid& grid);

/// A GeoTIFF that is being written. Whatever fails stops the run, naming the file; without `close` nothing is left.
class RasterWriter {
public:
    RasterWriter(const GdalTable& gdal, const RasterFile& file);
    ~RasterWriter();
    RasterWriter(const RasterWriter&) = delete;
    RasterWriter& operator=(const RasterWriter&) = delete;

    /// Rows of one band (both from 1), in blocks from south to north or from north to south; band after band. firstRow:
    /// row 1 is the southernmost. values: count rows, south to north, each west to east. NO_VALUE and values that are
    /// not finite are cells without a value.
    void rows(std::int32_t band, std::int32_t firstRow, std::int32_t count, const float* values);
    /// Makes overviews and statistics and completes the file.
    void close();

private:
    void check(bool done);

    const GdalTable& gdal_;
    std::string shown_;
    GdalRasterOutput* output_;
};

/// Where an existing raster lies.
struct RasterPlace {
    std::int32_t columns = 0, rows = 0;
    std::array<double, 6> geoTransform{};  ///< as RasterFile has it
    std::string crs;                       ///< well-known text; blank for none
};
/// Stops the run for what GDAL cannot read, and with its geotransform for a raster that is turned, south-up or not
/// square.
RasterPlace READ_RASTER_PLACE(const GdalTable& gdal, const std::string& name);
