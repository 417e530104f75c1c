#include "gis/shp_index.h"

#include "gis/shp_header.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace {

constexpr std::int64_t HEADER = SHP_HEADER_BYTES, RECORD = SHP_RECORD_HEADER_BYTES;
constexpr std::int64_t AT_A_TIME = 4096;  ///< entries

[[noreturn]] void stop(int file, std::string_view why) {
    STOP_RUN("ERROR - Reading .shx file " + GETNAM(file) + ": " + std::string(why));
}

void readBytes(int file, char* to, std::int64_t count) {
    const std::int64_t got = READ_BYTES(file, to, static_cast<std::size_t>(count));
    if (got < 0) stop(file, LAST_FILE_ERROR(file));
    if (got < count) stop(file, "it ends before the length in its header.");
}

void seek(int file, std::int64_t offset) {
    if (!SEEK_FILE(file, offset)) stop(file, LAST_FILE_ERROR(file));
}

}  // namespace

void ShxIndex::open(int file) {
    file_ = file;
    std::array<char, SHP_HEADER_BYTES> bytes{};
    seek(file, 0);
    readBytes(file, bytes.data(), HEADER);
    const ShpHeader header = SHP_HEADER_OF(bytes.data());
    if (header.fileCode != SHP_FILE_CODE) stop(file, "it does not begin as a shapefile does.");
    const std::int64_t records = std::int64_t{2} * header.lengthWords - HEADER;
    if (records < 0 || records % RECORD != 0) stop(file, "the length in its header is no whole number of records.");
    if (FILE_LENGTH(file) < HEADER + records) stop(file, "it ends before the length in its header.");
    count_ = records / RECORD;
    rewind();
}

void ShxIndex::rewind() {
    seek(file_, HEADER);
    read_ = 0;
    block_.clear();
    used_ = 0;
}

bool ShxIndex::next(ShxEntry& entry) {
    if (used_ == block_.size()) {
        const std::int64_t entries = std::min(AT_A_TIME, count_ - read_);
        if (entries == 0) return false;
        block_.resize(static_cast<std::size_t>(entries * RECORD));
        readBytes(file_, block_.data(), entries * RECORD);
        read_ += entries;
        used_ = 0;
    }
    entry.offset = std::int64_t{2} * bigInt32(&block_[used_]);
    entry.contentBytes = std::int64_t{2} * bigInt32(&block_[used_ + 4]);
    used_ += static_cast<std::size_t>(RECORD);
    return true;
}
