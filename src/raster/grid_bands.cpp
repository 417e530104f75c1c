#include "raster/grid_bands.h"

#include <algorithm>

void FROM_NORTH(const GridBands& bands, const std::function<void()>& take) {
    if (bands.rows == 0) return take();
    for (std::int32_t left = bands.grid.nrows; left > 0; left -= std::min(left, bands.rows)) {
        bands.fill({left - std::min(left, bands.rows) + 1, left + 1});
        take();
    }
}

void FROM_SOUTH(const GridBands& bands, const std::function<void()>& take) {
    if (bands.rows == 0) return take();
    for (std::int32_t done = 0; done < bands.grid.nrows;) {
        const std::int32_t count = std::min(bands.grid.nrows - done, bands.rows);
        bands.fill({done + 1, done + count + 1});
        done += count;
        take();
    }
}
