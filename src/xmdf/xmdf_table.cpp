#include "xmdf/xmdf_table.h"

#include "platform/platform.h"
#include "xmdf/h5_text.h"
#include "xmdf/xmdf_reason.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::uint64_t LARGEST_CHUNK = std::uint64_t{2} << 30;  // bytes; also the most that the cache of a row takes
constexpr std::uint64_t MOST_CACHE_SLOTS = 1U << 20;

bool failed(std::string reason) { return xmdfFailed(std::move(reason)) >= 0; }

herr_t refuseExternalLink(const char*, const char*, const char*, const char*, unsigned*, hid_t, void*) { return -1; }

constexpr std::size_t WIDEST_NUMBER = 16;  // bytes; the library itself believes any width in a damaged header

bool holdsNumbers(const H5Dataset& data) {
    const H5Type type(H5Dget_type(data.id()));
    if (H5Tget_size(type.id()) > WIDEST_NUMBER) return false;
    const H5T_class_t kind = H5Tget_class(type.id());
    // flags are often an enumeration of FALSE and TRUE
    return kind == H5T_INTEGER || kind == H5T_FLOAT || kind == H5T_ENUM;
}

bool readExtent(H5Table& table, int rank) {
    const H5Space space(H5Dget_space(table.data.id()));
    table.rank = H5Sget_simple_extent_ndims(space.id());
    if (table.rank != rank)
        return failed(table.name + " has " + std::to_string(table.rank) + " dimensions, expecting " +
                      std::to_string(rank));
    H5Sget_simple_extent_dims(space.id(), table.extent.data(), nullptr);
    return true;
}

/// Storage without chunks must have room for the whole table; the library itself believes a damaged header and reads
/// beyond it.
bool storageHoldsAll(const H5Table& table) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    const H5D_layout_t kind = H5Pget_layout(layout.id());
    if (kind != H5D_COMPACT && kind != H5D_CONTIGUOUS) return true;
    const H5Type type(H5Dget_type(table.data.id()));
    std::uint64_t bytes = H5Tget_size(type.id());
    for (int i = 0; i < table.rank; ++i) bytes *= table.extent[static_cast<std::size_t>(i)];
    const std::uint64_t stored = H5Dget_storage_size(table.data.id());
    // 0: nothing written yet, so that fill values are read
    if (stored >= bytes || (kind == H5D_CONTIGUOUS && stored == 0)) return true;
    return failed(table.name + " is damaged: " + std::to_string(stored) + " of " + std::to_string(bytes) +
                  " bytes are stored");
}

struct Chunks {
    std::uint64_t bytes = 0;  ///< of one chunk; 0 for storage without chunks
    std::uint64_t timesEach = 0;
    std::uint64_t inRow = 1;  ///< chunks that hold one time
    std::uint64_t slots = 1;  ///< hash slots in which the chunks of a row never meet
};

Chunks chunksOf(const H5Table& table) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    std::array<hsize_t, 3> size{};
    if (H5Pget_layout(layout.id()) != H5D_CHUNKED || H5Pget_chunk(layout.id(), table.rank, size.data()) != table.rank)
        return {};
    const H5Type type(H5Dget_type(table.data.id()));
    Chunks chunks{H5Tget_size(type.id()), size[0], 1, 1};
    for (int i = 0; i < table.rank; ++i) {
        const auto k = static_cast<std::size_t>(i);
        chunks.bytes *= size[k];
        if (i == 0) continue;
        const std::uint64_t across = (table.extent[k] + size[k] - 1) / size[k];
        chunks.inRow *= across;
        // The library numbers the slot by the chunk's place in each dimension, a power of two apart.
        chunks.slots = std::min(chunks.slots * std::bit_ceil(across), MOST_CACHE_SLOTS);
    }
    return chunks;
}

std::string megabytes(std::uint64_t bytes) { return std::to_string((bytes >> 20) + 1) + " MB"; }

bool chunkFits(const H5Table& table, const Chunks& chunks) {
    if (chunks.bytes > LARGEST_CHUNK)
        return failed(table.name + " is stored in chunks of " + megabytes(chunks.bytes) + ", the limit is 2048 MB");
    const std::uint64_t available = AVAILABLE_MEMORY();
    if (available > 0 && chunks.bytes > available)
        return failed(table.name + " is stored in chunks of " + megabytes(chunks.bytes) +
                      ", more than the memory available");
    return true;
}

std::uint64_t cacheSize(const Chunks& chunks) {
    if (chunks.timesEach <= 1) return 0;  // a chunk of one time is read once in any case, and straight to its place
    const std::uint64_t available = AVAILABLE_MEMORY();
    const std::uint64_t most = available > 0 ? std::min(LARGEST_CHUNK, available / 2) : LARGEST_CHUNK;
    const std::uint64_t chunksThatFit = std::max<std::uint64_t>(1, most / std::max<std::uint64_t>(1, chunks.bytes));
    return std::min(chunks.inRow, chunksThatFit) * chunks.bytes;
}

bool openWithCache(hid_t group, const char* member, std::uint64_t bytes, std::uint64_t slots, H5Table& table) {
    const H5Properties access = h5WithinFile(H5P_DATASET_ACCESS);
    H5Pset_chunk_cache(access.id(), static_cast<std::size_t>(slots) + 1, static_cast<std::size_t>(bytes), 1.0);
    table.data = H5Dataset(H5Dopen2(group, member, access.id()));
    return table.data.valid() || failed(table.name + " could not be opened" + h5Reason());
}

bool openTable(hid_t group, const char* member, int rank, H5Table& table) {
    if (!h5HasMember(group, member)) return failed(table.name + " does not exist");
    if (!openWithCache(group, member, 0, 1, table)) return false;
    if (!holdsNumbers(table.data)) return failed(table.name + " does not hold numbers");
    if (!readExtent(table, rank)) return false;
    if (!storageHoldsAll(table)) return false;
    const Chunks chunks = chunksOf(table);
    if (!chunkFits(table, chunks)) return false;
    const std::uint64_t bytes = cacheSize(chunks);
    if (bytes == 0) return true;
    table.data.close();  // the cache of a dataset is settled when it is first opened
    return openWithCache(group, member, bytes, chunks.slots, table);
}

}  // namespace

H5Properties h5WithinFile(hid_t propertyClass) {
    H5Properties access(H5Pcreate(propertyClass));
    H5Pset_elink_cb(access.id(), refuseExternalLink, nullptr);
    return access;
}

bool h5HasMember(hid_t group, const char* member) {
    const H5Properties access = h5WithinFile(H5P_LINK_ACCESS);
    return H5Lexists(group, member, H5P_DEFAULT) > 0 && H5Oexists_by_name(group, member, access.id()) > 0;
}

bool h5OpenTable(hid_t group, const std::string& groupName, const char* member, int rank, H5Table& table) {
    H5Table opened;
    opened.name = groupName + "/" + member;
    if (!openTable(group, member, rank, opened)) return false;
    table = std::move(opened);
    return true;
}

bool h5ReadRow(const H5Table& table, hsize_t step, hid_t memoryType, void* to, std::size_t count) {
    if (step < 1 || step > table.extent[0])
        return failed(table.name + " has " + std::to_string(table.extent[0]) + " times, asked for number " +
                      std::to_string(step));
    std::array<hsize_t, 3> start{step - 1, 0, 0};
    std::array<hsize_t, 3> size = table.extent;
    size[0] = 1;
    hsize_t row = 1;
    for (int i = 1; i < table.rank; ++i) row *= size[static_cast<std::size_t>(i)];
    if (row != count)
        return failed(table.name + " has " + std::to_string(row) + " values per time, expecting " +
                      std::to_string(count));
    const H5Space inFile(H5Dget_space(table.data.id()));
    const H5Space inMemory(H5Screate_simple(1, &row, nullptr));
    if (H5Sselect_hyperslab(inFile.id(), H5S_SELECT_SET, start.data(), nullptr, size.data(), nullptr) < 0 ||
        H5Dread(table.data.id(), memoryType, inMemory.id(), inFile.id(), H5P_DEFAULT, to) < 0)
        return failed(table.name + ", time number " + std::to_string(step) + ", could not be read" + h5Reason());
    return true;
}
