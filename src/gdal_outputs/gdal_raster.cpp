#include "gdal_outputs/gdal_raster.h"

#include "gdal_outputs/gdal_module.h"
#include "geometry/no_value.h"
#include "services/exits.h"

#include <algorithm>
#include <utility>

std::array<double, 6> GEO_TRANSFORM(const Grid& grid) {
    return {grid.xll, grid.cellSize, 0.0, grid.yll + static_cast<double>(grid.nrows) * grid.cellSize,
            0.0,      -grid.cellSize};
}

RasterWriter::RasterWriter(const GdalTable& gdal, const RasterFile& file)
    : gdal_(gdal), shown_(file.shown.empty() ? file.path : file.shown), output_(nullptr) {
    std::vector<TextsView> bandMetadata;
    for (const RasterBand& band : file.bands) bandMetadata.emplace_back(band.metadata);
    std::vector<GdalBand> bands;
    for (std::size_t i = 0; i < file.bands.size(); ++i)
        bands.push_back({file.bands[i].description.c_str(), file.bands[i].unit.c_str(), bandMetadata[i].get()});
    const TextsView metadata(file.metadata);
    const TextsView options(file.options);
    GdalRasterFacts facts{};
    facts.path = file.path.c_str();
    facts.kind = file.multiband ? GdalMultiband : GdalCog;
    facts.columns = file.columns;
    facts.rows = file.rows;
    std::copy(file.geoTransform.begin(), file.geoTransform.end(), facts.geoTransform);
    facts.noData = NO_VALUE;
    facts.crs = file.crs.c_str();
    facts.metadata = metadata.get();
    facts.bands = bands.data();
    facts.bandCount = static_cast<std::int32_t>(bands.size());
    facts.options = options.get();
    facts.threads = file.threads;
    facts.memory = file.memory;
    output_ = gdal_.rasterOpen(&facts);
    check(output_ != nullptr);
}

RasterWriter::~RasterWriter() {
    if (output_ != nullptr) gdal_.rasterAbandon(output_);
}

void RasterWriter::check(bool done) {
    if (!done) STOP_RUN("ERROR - Could not write " + shown_ + ": " + gdal_.reason() + ".");
}

void RasterWriter::rows(std::int32_t band, std::int32_t firstRow, std::int32_t count, const float* values) {
    check(gdal_.rasterRows(output_, band, firstRow, count, values));
}

void RasterWriter::close() { check(gdal_.rasterClose(std::exchange(output_, nullptr))); }

RasterPlace READ_RASTER_PLACE(const GdalTable& gdal, const std::string& name) {
    GdalRasterPlace found{};
    if (!gdal.rasterPlace(name.c_str(), &found))
        STOP_RUN("ERROR - Could not take over the grid of " + name + ": " + gdal.reason() + ".");
    RasterPlace place{found.columns, found.rows, {}, found.crs};
    std::copy_n(found.geoTransform, 6, place.geoTransform.begin());
    return place;
}
