// A band of a tiled file, filled row by row: rows are kept until a row of tiles is whole, so that each tile is
// compressed and written once.
#pragma once

#include "gdal_outputs/module/gdal_handles.h"

#include <cstdint>
#include <vector>

class TileRows {
public:
    TileRows(GDALDatasetH dataset, std::int32_t tile);
    /// One whole row: band from 1, row from 0 at the north. Rows come in order, upwards or downwards.
    void put(std::int32_t band, std::int32_t row, const float* values);

private:
    std::int32_t rowsOf(std::int32_t tileRow) const;
    void write(std::int32_t band);

    GDALDatasetH dataset_;
    std::int32_t tile_, columns_, rows_;
    std::int32_t tileRow_ = -1;  ///< in the buffer; -1: none
    std::int32_t held_ = 0;      ///< rows in the buffer
    std::vector<float> buffer_;
};
