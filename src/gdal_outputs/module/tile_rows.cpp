#include "gdal_outputs/module/tile_rows.h"

#include "gdal_outputs/module/failures.h"

#include <algorithm>

TileRows::TileRows(GDALDatasetH dataset, std::int32_t tile)
    : dataset_(dataset),
      tile_(tile),
      columns_(GDALGetRasterXSize(dataset)),
      rows_(GDALGetRasterYSize(dataset)),
      buffer_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(std::min(tile, rows_))) {}

std::int32_t TileRows::rowsOf(std::int32_t tileRow) const { return std::min(tile_, rows_ - tileRow * tile_); }

void TileRows::put(std::int32_t band, std::int32_t row, const float* values) {
    const std::int32_t tileRow = row / tile_;
    if (held_ == 0) tileRow_ = tileRow;
    if (tileRow != tileRow_) throw GdalFailure{"rows of the raster came out of order"};
    const auto columns = static_cast<std::size_t>(columns_);
    std::copy_n(values, columns, &buffer_[static_cast<std::size_t>(row % tile_) * columns]);
    if (++held_ == rowsOf(tileRow)) write(band);
}

void TileRows::write(std::int32_t band) {
    GDALRasterBandH to = GDALGetRasterBand(dataset_, band);
    if (GDALRasterIO(to, GF_Write, 0, tileRow_ * tile_, columns_, held_, buffer_.data(), columns_, held_, GDT_Float32,
                     0, 0) != CE_None)
        FAIL("rows could not be written");
    GDALFlushRasterCache(to);  // in the order of the tiles, whatever the size of GDAL's cache
    CHECK_FAILURES();
    held_ = 0;
}
