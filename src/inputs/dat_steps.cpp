#include "inputs/dat_steps.h"

#include "inputs/dat_layout.h"
#include "platform/platform.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"

#include <algorithm>
#include <string>

namespace {

/// values or flags; large enough to be read past the file service's own buffer
constexpr std::size_t CHUNK = 1U << 16;

/// The index has seen the bytes; fewer now means that the file has changed since.
void readWhole(int file, void* to, std::size_t count) {
    const std::int64_t got = READ_BYTES(file, to, count);
    if (got == static_cast<std::int64_t>(count)) return;
    if (got < 0) STOP_UNREADABLE(file);
    STOP_UNREADABLE(file, "it has become shorter since it was opened");
}

void seek(int file, std::int64_t offset) {
    if (!SEEK_FILE(file, offset)) STOP_UNREADABLE(file);
}

/// Any flag but zero is wet: some compilers write true as -1. step: offset of the one that has them.
void readFlags(const DatFile& dat, std::int64_t step, std::vector<std::uint8_t>& wet) {
    const auto size = static_cast<std::size_t>(dat.flagSize);
    const auto cells = static_cast<std::size_t>(dat.header.cells);
    seek(dat.file, step + DAT_FLAGS_OFFSET(dat.flagSize));
    if (size == 1) {
        readWhole(dat.file, wet.data() + 1, cells);
        for (std::size_t c = 1; c <= cells; ++c) wet[c] = wet[c] != 0 ? 1 : 0;
        return;
    }
    std::vector<std::uint8_t> chunk(CHUNK * size);
    for (std::size_t done = 0; done < cells;) {
        const std::size_t count = std::min(CHUNK, cells - done);
        readWhole(dat.file, chunk.data(), count * size);
        for (std::size_t c = 0; c < count; ++c) {
            const auto first = chunk.begin() + static_cast<std::ptrdiff_t>(c * size);
            wet[++done] = std::any_of(first, first + dat.flagSize, [](std::uint8_t byte) { return byte != 0; }) ? 1 : 0;
        }
    }
}

void readVectors(int file, std::size_t nodes, DatTables tables) {
    std::vector<float> pairs(CHUNK * 2);
    for (std::size_t done = 0; done < nodes;) {
        const std::size_t count = std::min(CHUNK, nodes - done);
        readWhole(file, pairs.data(), count * 2 * sizeof(float));
        turnLittleFloats(pairs);
        for (std::size_t i = 0; i < count; ++i) {
            ++done;
            tables.x[done] = pairs[2 * i];
            tables.y[done] = pairs[2 * i + 1];
        }
    }
}

void readScalars(int file, std::size_t nodes, std::vector<float>& values) {
    readWhole(file, values.data() + 1, nodes * sizeof(float));
    turnLittleFloats(std::span(values).subspan(1));
}

}  // namespace

void READ_DAT_STEP(const DatFile& dat, std::size_t index, DatTables tables) {
    const DatStep& step = dat.steps[index];
    const auto nodes = static_cast<std::size_t>(dat.header.nodes);
    REPORT("Reading data for time " + DAT_TIME_TEXT(dat, step.time));
    if (step.flagsOf > 0) readFlags(dat, step.flagsOf, tables.wet);
    else std::fill(tables.wet.begin(), tables.wet.end(), std::uint8_t{1});
    seek(dat.file, step.offset + DAT_VALUES_OFFSET(dat.header, dat.flagSize, step.flags));
    if (dat.header.vector) readVectors(dat.file, nodes, tables);
    else readScalars(dat.file, nodes, tables.x);
}

void CHECK_DAT_MEMORY(const DatFile& dat, std::uint64_t tables) {
    const DatHeader& header = dat.header;
    const std::uint64_t values = static_cast<std::uint64_t>(header.nodes) * (header.vector ? 2 : 1) * sizeof(float);
    const std::uint64_t needed = tables * (values + static_cast<std::uint64_t>(header.cells));
    const std::uint64_t available = AVAILABLE_MEMORY();
    if (available != 0 && needed > available)
        STOP_RUN("ERROR - Not enough memory for the results of " + GETNAM(dat.file) + " (" +
                 std::to_string(needed / 1000000 + 1) + " MB).");
}

void STOP_AT_DAMAGED_STEP(const DatFile& dat) {
    const std::string time = dat.damagedTime ? " (time " + DAT_TIME_TEXT(dat, *dat.damagedTime) + ")" : "";
    STOP_RUN("ERROR - Time step " + std::to_string(dat.steps.size() + 1) + time + " of " + GETNAM(dat.file) +
             " is incomplete or damaged.");
}
