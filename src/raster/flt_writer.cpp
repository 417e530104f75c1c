#include "raster/flt_writer.h"

#include "geometry/no_value.h"
#include "raster/header_numbers.h"
#include "raster/values_in_order.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/output_beside.h"
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

/// Writes the header, and opens the file of the values.
int openFlt(const std::string& base, const Grid& grid) {
    const int headerFile = OPEN_FILE(base + ".hdr", "O ", "hdr");
    WRITE_OR_STOP(headerFile, header(grid));
    CLOSE_FILE(headerFile);
    return OPEN_FILE(base + ".flt", "O ", "flt");
}

std::vector<std::vector<char>> buffersFor(const Grid& grid, std::size_t count) {
    try {
        return {count, std::vector<char>(sizeof(float) * std::min(VALUES_AT_ONCE, CELL_COUNT(grid)))};
    } catch (const std::bad_alloc&) {
        STOP_RUN("ERROR 2146 - Could not allocate memory (RAM) for temporary grid output array.");
    }
}

void beginFlt() { REPORT("Writing FLT grid..."); }
void endFlt(int file) {
    CLOSE_FILE(file);
    REPORT("Finished writing FLT grid.");
}

/// The bytes of a piece, in a buffer with room for them.
std::string_view bytesOf(const PiecesInOrder& pieces, std::size_t piece, std::vector<char>& buffer) {
    char* to = buffer.data();
    pieces.parts(piece, [&](std::span<const float> values, bool) { to = putLittleFloats(to, values); });
    return {buffer.data(), static_cast<std::size_t>(to - buffer.data())};
}

/// buffers: one for each slot.
void writeRows(int file, const PiecesInOrder& pieces, std::vector<std::vector<char>>& buffers, Progress& progress) {
    std::vector<std::string_view> texts(buffers.size());
    std::size_t written = 0;  // bytes
    const auto convert = [&](std::size_t piece, std::size_t slot) {
        texts[slot] = bytesOf(pieces, piece, buffers[slot]);
    };
    DO_IN_ORDER(pieces.count(), convert, [&](std::size_t piece, std::size_t slot) {
        progress.show(pieces.rowsBefore(piece));
        WRITE_OR_STOP(file, texts[slot]);
        written += texts[slot].size();
    });
    if (written != sizeof(float) * pieces.grid.values.size()) SHOULD_NOT_BE_HERE("i.ne.nval");
}

class FltBehind : public GridBehind {
public:
    FltBehind(const std::string& base, const Grid& grid)
        : file_(openFlt(base, grid)), output_(file_), buffers_(buffersFor(grid, 1)) {}
    void writeRows(const Grid& grid) override {
        const PiecesInOrder pieces{grid, VALUES_AT_ONCE};
        for (std::size_t piece = 0; piece < pieces.count(); ++piece)
            output_.write(bytesOf(pieces, piece, buffers_.front()));
    }
    void finish() override {
        beginFlt();
        output_.finish();
        endFlt(file_);
    }

private:
    int file_;
    OutputBeside output_;
    std::vector<std::vector<char>> buffers_;
};

}  // namespace

void WRITE_FLT(const std::string& base, const GridBands& bands, GridPrecision) {
    const Grid& grid = bands.grid;
    const int file = openFlt(base, grid);
    beginFlt();
    std::vector<std::vector<char>> buffers = buffersFor(grid, SLOTS_IN_ORDER());
    Progress progress("", grid.nrows);
    FROM_NORTH(bands, [&] { writeRows(file, {grid, VALUES_AT_ONCE}, buffers, progress); });
    endFlt(file);
}

std::unique_ptr<GridBehind> WRITE_FLT_BEHIND(const std::string& base, const Grid& grid) {
    return std::make_unique<FltBehind>(base, grid);
}
