#include "raster/asc_writer.h"

#include "geometry/no_value.h"
#include "raster/fixed_decimals.h"
#include "raster/header_numbers.h"
#include "raster/values_in_order.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/workers.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t VALUES_AT_ONCE = 1U << 14;  // enough text for one write

using TextBuffers = std::vector<std::unique_ptr<char[]>>;

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

/// buffers: one for each slot, with room for the text of a piece.
void writeRows(int file, const PiecesInOrder& pieces, GridPrecision precision, const TextBuffers& buffers,
               Progress& progress) {
    std::vector<std::size_t> lengths(buffers.size());
    const auto format = [&](std::size_t piece, std::size_t slot) {
        char* to = buffers[slot].get();
        pieces.parts(piece, [&](std::span<const float> values, bool endsRow) {
            to = PUT_FIXED_FIELDS(to, values, precision.width, precision.decimals);
            if (endsRow) *to++ = '\n';
        });
        lengths[slot] = static_cast<std::size_t>(to - buffers[slot].get());
    };
    DO_IN_ORDER(pieces.count(), format, [&](std::size_t piece, std::size_t slot) {
        progress.show(pieces.rowsBefore(piece));
        WRITE_OR_STOP(file, {buffers[slot].get(), lengths[slot]});
    });
}

}  // namespace

void WRITE_ASC(const std::string& base, const GridBands& bands, GridPrecision precision) {
    const Grid& grid = bands.grid;
    TextBuffers buffers(SLOTS_IN_ORDER());
    try {
        const std::size_t most = std::min(VALUES_AT_ONCE, CELL_COUNT(grid));
        const std::size_t room = FIXED_FIELDS_ROOM(most) + most;  // a line end for each value
        for (auto& buffer : buffers) buffer = std::make_unique_for_overwrite<char[]>(room);
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR 2146 - Could not allocate memory (RAM) for temporary grid output array.");
    }
    const int file = OPEN_FILE(base + ".asc", "O ", "asc");
    WRITE_OR_STOP(file, header(grid));
    REPORT("Writing ASCII grid file...");
    Progress progress("", grid.nrows);
    FROM_NORTH(bands, [&] { writeRows(file, {grid, VALUES_AT_ONCE}, precision, buffers, progress); });
    CLOSE_FILE(file);
    REPORT("   Done.");
}
