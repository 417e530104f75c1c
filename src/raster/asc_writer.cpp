#include "raster/asc_writer.h"

#include "geometry/no_value.h"
#include "raster/fixed_decimals.h"
#include "raster/header_numbers.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t BUFFER_SIZE = 1U << 20;
constexpr std::size_t VALUES_AT_ONCE = 1024;  // of one row, between two looks at the room left in the buffer

std::string field(std::string_view text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + std::string(text);
}

std::string header(const Grid& grid) {
    const int decimals = ASC_HEADER_DECIMALS(grid);
    return "ncols " + field(AINTEGER(grid.ncols), 8) + "\n" +               //
           "nrows " + field(AINTEGER(grid.nrows), 8) + "\n" +               //
           "xllcorner " + FIXED_FIELD(grid.xll, 16, decimals) + "\n" +      //
           "yllcorner " + FIXED_FIELD(grid.yll, 16, decimals) + "\n" +      //
           "cellsize " + FIXED_FIELD(grid.cellSize, 12, decimals) + "\n" +  //
           "NODATA_value " + FIXED_FIELD(static_cast<double>(NO_VALUE), 10, 0) + "\n";
}

void writeRows(int file, const Grid& grid, GridPrecision precision, std::vector<char>& buffer) {
    const auto columns = static_cast<std::size_t>(grid.ncols);
    char* to = buffer.data();
    const auto flush = [&] {
        WRITE_OR_STOP(file, {buffer.data(), static_cast<std::size_t>(to - buffer.data())});
        to = buffer.data();
    };
    Progress progress("", grid.nrows);
    for (std::int32_t row = grid.nrows; row > 0; --row) {
        progress.show(grid.nrows - row);
        const std::span<const float> values(&grid.values[CELL_INDEX(grid, 1, row)], columns);
        for (std::size_t first = 0; first < columns; first += VALUES_AT_ONCE) {
            to = PUT_FIXED_FIELDS(to, values.subspan(first, std::min(VALUES_AT_ONCE, columns - first)), precision.width,
                                  precision.decimals);
            if (to >= buffer.data() + BUFFER_SIZE) flush();
        }
        *to++ = '\n';
    }
    flush();
}

}  // namespace

void WRITE_ASC(const std::string& base, const Grid& grid, GridPrecision precision) {
    std::vector<char> buffer;
    try {
        buffer.resize(BUFFER_SIZE + FIXED_FIELDS_ROOM(VALUES_AT_ONCE) + 1);
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR 2146 - Could not allocate memory (RAM) for temporary grid output array.");
    }
    const int file = OPEN_FILE(base + ".asc", "O ", "asc");
    WRITE_OR_STOP(file, header(grid));
    REPORT("Writing ASCII grid file...");
    writeRows(file, grid, precision, buffer);
    CLOSE_FILE(file);
    REPORT("   Done.");
}
