#include "inputs/mesh_blocks.h"

#include "services/files.h"
#include "services/workers.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <utility>

namespace {

constexpr std::int64_t BLOCK = std::int64_t{1} << 18;  // bytes: stays in a core's own cache

/// Behind the next line end from `from` on; null when there is none.
const char* behindLineEnd(const char* from, const char* end) {
    const auto* lineEnd = static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
    return lineEnd == nullptr ? nullptr : lineEnd + 1;
}

/// Memory that a thread has for a block, and another for a later one. Not the thread's own: a thread that can note no
/// end of what it owns, for want of memory, ends the process.
class Buffers {
public:
    Buffers() { idle_.reserve(static_cast<std::size_t>(JOBS())); }
    std::vector<char> borrow() {
        const std::lock_guard lock(guard_);
        if (idle_.empty()) return {};
        std::vector<char> buffer = std::move(idle_.back());
        idle_.pop_back();
        return buffer;
    }
    void giveBack(std::vector<char> buffer) {
        const std::lock_guard lock(guard_);
        idle_.push_back(std::move(buffer));
    }

private:
    std::mutex guard_;
    std::vector<std::vector<char>> idle_;
};

}  // namespace

bool LinesOfBlock::next(std::string_view& line) {
    if (at_ == end_) return false;
    const char* behind = behindLineEnd(at_, end_);
    const char* lineEnd = behind == nullptr ? end_ : behind - 1;
    if (lineEnd != at_ && lineEnd[-1] == '\r') --lineEnd;
    line = {at_, static_cast<std::size_t>(lineEnd - at_)};
    at_ = behind == nullptr ? end_ : behind;
    return true;
}

bool MeshBlocks::WORTH_WHILE(int file) { return JOBS() > 1 && FILE_LENGTH(file) > BLOCK; }

MeshBlocks::MeshBlocks(int file, std::int64_t offset)
    : file_(file),
      offset_(offset),
      length_(FILE_LENGTH(file)),
      count_(static_cast<std::size_t>((std::max<std::int64_t>(length_ - offset, 0) + BLOCK - 1) / BLOCK)) {}

/// Reads the block, the byte before it and what its last line has beyond it.
bool MeshBlocks::load(std::size_t block, std::vector<char>& buffer, LinesOfBlock& lines) const {
    constexpr std::int64_t USUAL_LINE = 4096;
    const std::int64_t start = offset_ + static_cast<std::int64_t>(block) * BLOCK;
    const std::int64_t from = block == 0 ? start : start - 1;  // a line begins at `start` where a line end is before it
    const std::int64_t end = std::min(start + BLOCK, length_);
    for (std::int64_t beyond = USUAL_LINE; beyond <= USUAL_LINE + static_cast<std::int64_t>(LONGEST_LINE);
         beyond += static_cast<std::int64_t>(LONGEST_LINE)) {
        const auto wanted = static_cast<std::size_t>(std::min(end + beyond, length_) - from);
        buffer.resize(std::max(buffer.size(), wanted));
        if (!READ_AT(file_, from, buffer.data(), wanted)) return false;
        const char* first = buffer.data();
        const char* blockEnd = first + (end - from);
        const char* bufferEnd = first + wanted;
        if (block > 0) first = behindLineEnd(first, blockEnd);
        if (first == nullptr) return false;  // one line fills the block
        const char* last = bufferEnd;
        if (end < length_) last = first == blockEnd ? first : behindLineEnd(blockEnd - 1, bufferEnd);
        if (last == nullptr && end + beyond >= length_) last = bufferEnd;
        if (last == nullptr) continue;
        lines = LinesOfBlock({first, static_cast<std::size_t>(last - first)});
        return true;
    }
    return false;
}

bool MeshBlocks::readAll(const std::function<bool(std::size_t, LinesOfBlock&)>& read) const {
    std::atomic<bool> good = true;
    Buffers buffers;
    DO_PIECES(count_, [&](std::size_t block) {
        if (!good.load(std::memory_order_relaxed)) return;
        std::vector<char> buffer = buffers.borrow();
        LinesOfBlock lines({});
        if (!load(block, buffer, lines) || !read(block, lines)) good = false;
        buffers.giveBack(std::move(buffer));
    });
    return good;
}
