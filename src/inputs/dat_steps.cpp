#include "inputs/dat_steps.h"

#include "inputs/dat_layout.h"
#include "platform/platform.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/input_beside.h"
#include "services/workers.h"
#include "text_utils/bytes.h"

#include <algorithm>
#include <new>
#include <string>

namespace {

/// values or flags; large enough to be read past the file service's own buffer
constexpr std::size_t CHUNK = 1U << 16;

/// Bytes from an offset on, for the run's own thread: what fails ends the run. The index has seen the bytes; fewer now
/// means that the file has changed since.
class BytesOrStop {
public:
    BytesOrStop(int file, std::int64_t offset) : file_(file) {
        if (!SEEK_FILE(file, offset)) STOP_UNREADABLE(file);
    }
    void read(void* to, std::size_t count) {
        const std::int64_t got = READ_BYTES(file_, to, count);
        if (got == static_cast<std::int64_t>(count)) return;
        if (got < 0) STOP_UNREADABLE(file_);
        STOP_UNREADABLE(file_, "it has become shorter since it was opened");
    }

private:
    int file_;
};

struct Unread {};

/// The same for any other thread, which throws Unread.
class BytesAhead {
public:
    BytesAhead(const InputBeside& file, std::int64_t offset) : file_(file), offset_(offset) {}
    void read(void* to, std::size_t count) {
        if (!file_.read(offset_, to, count)) throw Unread{};
        offset_ += static_cast<std::int64_t>(count);
    }

private:
    InputBeside file_;
    std::int64_t offset_;
};

/// Any flag but zero is wet: some compilers write true as -1. step: offset of the one that has them.
template <typename Bytes, typename File>
void readFlags(const DatFile& dat, const File& file, std::int64_t step, std::vector<std::uint8_t>& wet) {
    const auto size = static_cast<std::size_t>(dat.flagSize);
    const auto cells = static_cast<std::size_t>(dat.header.cells);
    Bytes bytes(file, step + DAT_FLAGS_OFFSET(dat.flagSize));
    if (size == 1) {
        bytes.read(wet.data() + 1, cells);
        for (std::size_t c = 1; c <= cells; ++c) wet[c] = wet[c] != 0 ? 1 : 0;
        return;
    }
    std::vector<std::uint8_t> chunk(CHUNK * size);
    for (std::size_t done = 0; done < cells;) {
        const std::size_t count = std::min(CHUNK, cells - done);
        bytes.read(chunk.data(), count * size);
        for (std::size_t c = 0; c < count; ++c) {
            const auto first = chunk.begin() + static_cast<std::ptrdiff_t>(c * size);
            wet[++done] = std::any_of(first, first + dat.flagSize, [](std::uint8_t byte) { return byte != 0; }) ? 1 : 0;
        }
    }
}

template <typename Bytes>
void readVectors(Bytes& bytes, std::size_t nodes, DatTables tables) {
    std::vector<float> pairs(CHUNK * 2);
    for (std::size_t done = 0; done < nodes;) {
        const std::size_t count = std::min(CHUNK, nodes - done);
        bytes.read(pairs.data(), count * 2 * sizeof(float));
        turnLittleFloats(pairs);
        for (std::size_t i = 0; i < count; ++i) {
            ++done;
            tables.x[done] = pairs[2 * i];
            tables.y[done] = pairs[2 * i + 1];
        }
    }
}

template <typename Bytes, typename File>
void readStep(const DatFile& dat, const File& file, const DatStep& step, DatTables tables) {
    const auto nodes = static_cast<std::size_t>(dat.header.nodes);
    if (step.flagsOf > 0) readFlags<Bytes>(dat, file, step.flagsOf, tables.wet);
    else std::fill(tables.wet.begin(), tables.wet.end(), std::uint8_t{1});
    Bytes bytes(file, step.offset + DAT_VALUES_OFFSET(dat.header, dat.flagSize, step.flags));
    if (dat.header.vector) return readVectors(bytes, nodes, tables);
    bytes.read(tables.x.data() + 1, nodes * sizeof(float));
    turnLittleFloats(std::span(tables.x).subspan(1));
}

}  // namespace

/// A step in tables of its own.
class DatAhead {
public:
    void begin(const DatFile& dat, std::size_t index) {
        work_.cancel();
        const auto nodes = static_cast<std::size_t>(dat.header.nodes);
        x_.resize(nodes + 1);
        y_.resize(dat.header.vector ? nodes + 1 : 0);
        wet_.resize(static_cast<std::size_t>(dat.header.cells) + 1);
        index_ = index;
        work_.begin(1, [this, &dat, file = InputBeside(dat.file), index](std::size_t) {
            readStep<BytesAhead>(dat, file, dat.steps[index], {x_, y_, wet_});
        });
    }

    /// The tables change hands.
    bool take(std::size_t index, DatTables tables) {
        if (index != index_) work_.cancel();  // the file is read from one side at a time
        if (index != index_ || !work_.finish()) return false;
        const bool fits =
            tables.x.size() == x_.size() && tables.y.size() == y_.size() && tables.wet.size() == wet_.size();
        if (!fits) return false;
        tables.x.swap(x_);
        tables.y.swap(y_);
        tables.wet.swap(wet_);
        return true;
    }

private:
    std::size_t index_ = 0;
    std::vector<float> x_, y_;
    std::vector<std::uint8_t> wet_;
    WorkAhead work_;  ///< ends before what it fills
};

void READ_DAT_STEP(const DatFile& dat, std::size_t index, DatTables tables) {
    REPORT("Reading data for time " + DAT_TIME_TEXT(dat, dat.steps[index].time));
    if (dat.ahead != nullptr && dat.ahead->take(index, tables)) return;
    readStep<BytesOrStop>(dat, dat.file, dat.steps[index], tables);
}

void READ_DAT_AHEAD(DatFile& dat, std::size_t index) {
    if (JOBS() == 1 || index >= dat.steps.size()) return;
    if (dat.ahead == nullptr) dat.ahead = std::make_shared<DatAhead>();
    try {
        dat.ahead->begin(dat, index);
    } catch (const std::bad_alloc&) {
        dat.ahead = nullptr;  // there is room for one time alone
    }
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
