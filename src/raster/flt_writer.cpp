#include "raster/flt_writer.h"

#include "geometry/no_value.h"
#include "raster/header_numbers.h"
#include "raster/values_in_order.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/workers.h"
#include "text_utils/bytes.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t VALUES_AT_ONCE =
    1U << 16;  // as fast as one write of the whole grid, without its memory a second time

std::string header(const Grid& grid) {
    return "ncols " + AINTEGER(grid.ncols) + "\n" +                                     //
           "nrows " + AINTEGER(grid.nrows) + "\n" +                                     //
           "xllcorner " + HDR_NUMBER(grid.xll, CORNER_TOLERANCE(grid)) + "\n" +         //
           "yllcorner " + HDR_NUMBER(grid.yll, CORNER_TOLERANCE(grid)) + "\n" +         //
           "cellsize " + HDR_NUMBER(grid.cellSize, CELL_SIZE_TOLERANCE(grid)) + "\n" +  //
           "NODATA_value " + AREALD(NO_VALUE, 1) + "\n" +                               //
           "byteorder LSBFIRST\n";
}

char* putLittleFloats(char* to, std::span<const float> values) {
    for (const float value : values)
        to = putLittleFloat(to, std::abs(value) <= std::numeric_limits<float>::max() ? value : NO_VALUE);
    return to;
}

/// buffers: one for each slot, with room for the values of a piece.
void writeRows(int file, const PiecesInOrder& pieces, std::vector<std::vector<char>>& buffers, Progress& progress) {
    std::vector<std::size_t> lengths(buffers.size());
    std::size_t written = 0;  // bytes
    const auto convert = [&](std::size_t piece, std::size_t slot) {
        char* to = buffers[slot].data();
        pieces.parts(piece, [&](std::span<const float> values, bool) { to = putLittleFloats(to, values); });
        lengths[slot] = static_cast<std::size_t>(to - buffers[slot].data());
    };
    DO_IN_ORDER(pieces.count(), convert, [&](std::size_t piece, std::size_t slot) {
        progress.show(pieces.rowsBefore(piece));
        WRITE_OR_STOP(file, {buffers[slot].data(), lengths[slot]});
        written += lengths[slot];
    });
    if (written != sizeof(float) * pieces.grid.values.size()) SHOULD_NOT_BE_HERE("i.ne.nval");
}

}  // namespace

void WRITE_FLT(const std::string& base, const GridBands& bands, GridPrecision) {
    const Grid& grid = bands.grid;
    const int headerFile = OPEN_FILE(base + ".hdr", "O ", "hdr");
    WRITE_OR_STOP(headerFile, header(grid));
    CLOSE_FILE(headerFile);
    const int file = OPEN_FILE(base + ".flt", "O ", "flt");
    REPORT("Writing FLT grid...");
    std::vector<std::vector<char>> buffers(SLOTS_IN_ORDER());
    try {
        for (std::vector<char>& buffer : buffers)
            buffer.resize(sizeof(float) * std::min(VALUES_AT_ONCE, CELL_COUNT(grid)));
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR 2146 - Could not allocate memory (RAM) for temporary grid output array.");
    }
    Progress progress("", grid.nrows);
    FROM_NORTH(bands, [&] { writeRows(file, {grid, VALUES_AT_ONCE}, buffers, progress); });
    CLOSE_FILE(file);
    REPORT("Finished writing FLT grid.");
}
