#include "raster/flt_writer.h"

#include "geometry/no_value.h"
#include "raster/header_numbers.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

namespace {

// 1 MiB: as fast as one write of the whole grid, without its memory a second time
constexpr std::size_t BUFFER_VALUES = 1U << 18;

std::string header(const Grid& grid) {
    return "ncols " + AINTEGER(grid.ncols) + "\n" +                                     //
           "nrows " + AINTEGER(grid.nrows) + "\n" +                                     //
           "xllcorner " + HDR_NUMBER(grid.xll, CORNER_TOLERANCE(grid)) + "\n" +         //
           "yllcorner " + HDR_NUMBER(grid.yll, CORNER_TOLERANCE(grid)) + "\n" +         //
           "cellsize " + HDR_NUMBER(grid.cellSize, CELL_SIZE_TOLERANCE(grid)) + "\n" +  //
           "NODATA_value " + AREALD(NO_VALUE, 1) + "\n" +                               //
           "byteorder LSBFIRST\n";
}

void putLittleFloats(char* to, const float* values, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const float value = std::abs(values[i]) <= std::numeric_limits<float>::max() ? values[i] : NO_VALUE;
        to = putLittleFloat(to, value);
    }
}

void writeRows(int file, const Grid& grid, std::vector<char>& buffer) {
    const auto columns = static_cast<std::size_t>(grid.ncols);
    std::size_t used = 0;     // values in the buffer
    std::size_t written = 0;  // values in all
    const auto flush = [&] {
        WRITE_OR_STOP(file, {buffer.data(), 4 * used});
        written += used;
        used = 0;
    };
    Progress progress("", grid.nrows);
    for (std::int32_t row = grid.nrows; row > 0; --row) {
        progress.show(grid.nrows - row);
        const float* values = &grid.values[CELL_INDEX(grid, 1, row)];
        for (std::size_t first = 0; first < columns;) {
            const std::size_t count = std::min(BUFFER_VALUES - used, columns - first);
            putLittleFloats(buffer.data() + 4 * used, values + first, count);
            first += count;
            used += count;
            if (used == BUFFER_VALUES) flush();
        }
    }
    flush();
    if (written != CELL_COUNT(grid)) SHOULD_NOT_BE_HERE("i.ne.nval");
}

}  // namespace

void WRITE_FLT(const std::string& base, const Grid& grid, GridPrecision) {
    const int headerFile = OPEN_FILE(base + ".hdr", "O ", "hdr");
    WRITE_OR_STOP(headerFile, header(grid));
    CLOSE_FILE(headerFile);
    const int file = OPEN_FILE(base + ".flt", "O ", "flt");
    REPORT("Writing FLT grid...");
    std::vector<char> buffer;
    try {
        buffer.resize(4 * BUFFER_VALUES);
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR 2146 - Could not allocate memory (RAM) for temporary grid output array.");
    }
    writeRows(file, grid, buffer);
    CLOSE_FILE(file);
    REPORT("Finished writing FLT grid.");
}
