#include "xmdf/xmdf_chunks.h"

#include "platform/platform.h"
#include "xmdf/h5_text.h"
#include "xmdf/xmdf_failure.h"

#include <algorithm>
#include <bit>
#include <set>

namespace {

constexpr std::uint64_t LARGEST_CHUNK = std::uint64_t{2} << 30;  // bytes; also the most that the cache of a row takes
constexpr std::uint64_t MOST_CACHE_SLOTS = 1U << 20;
constexpr hsize_t MOST_LISTED = 4096;  // the library looks for each chunk from the first one on
constexpr float DRY = -99999.0F;
constexpr std::uint64_t CHECKSUM_BYTES = 4;
constexpr std::uint64_t FILTER_BYTES = 1024;  // what compression may add to a chunk of noise, with twice its bytes

std::string megabytes(std::uint64_t bytes) { return std::to_string((bytes >> 20) + 1) + " MB"; }

[[noreturn]] void tooLarge(const H5Table& table, const std::string& limit) {
    xmdfFailed(table.name + " is stored in chunks of " + megabytes(table.chunks.bytes) + ", " + limit);
}

[[noreturn]] void damaged(const H5Table& table, const std::string& how) {
    xmdfFailed(table.name + " is damaged: " + how);
}

void checkSizes(H5Table& table) {
    H5Chunks& chunks = table.chunks;
    const H5Type type(H5Dget_type(table.data.id()));
    chunks.bytes = H5Tget_size(type.id());
    for (std::size_t k = 0; k < static_cast<std::size_t>(table.rank); ++k) {
        const hsize_t size = chunks.size[k];
        const bool fixed = table.most[k] != H5S_UNLIMITED;
        if (size == 0 || (fixed && table.extent[k] > 0 && size > table.most[k]))
            damaged(table, "chunks of " + std::to_string(size) + " in a dimension of " + std::to_string(table.most[k]));
        chunks.bytes *= size;
        if (chunks.bytes > LARGEST_CHUNK) tooLarge(table, "the limit is 2048 MB");
        chunks.across[k] = table.extent[k] / size + (table.extent[k] % size > 0 ? 1 : 0);
    }
    const std::uint64_t available = AVAILABLE_MEMORY();
    if (available > 0 && chunks.bytes > available) tooLarge(table, "more than the memory available");
}

/// Bytes that a chunk takes in the file; 0 where a filter that compresses has run over it, so that nobody knows. A
/// filter whose bit is set in the mask was left out.
std::uint64_t storedBytes(const H5Table& table, const H5Properties& layout, unsigned mask) {
    std::uint64_t bytes = table.chunks.bytes;
    const int filters = H5Pget_nfilters(layout.id());
    for (unsigned i = 0; static_cast<int>(i) < filters; ++i) {
        unsigned flags = 0;
        std::size_t values = 0;
        const H5Z_filter_t filter = H5Pget_filter2(layout.id(), i, &flags, &values, nullptr, 0, nullptr, nullptr);
        if (i < 32 && (mask >> i & 1U) != 0) continue;
        if (filter == H5Z_FILTER_FLETCHER32) bytes += CHECKSUM_BYTES;
        else if (filter != H5Z_FILTER_SHUFFLE) return 0;
    }
    return bytes;
}

void checkEach(const H5Table& table, const H5Space& space, hsize_t count) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    std::set<std::array<hsize_t, 3>> met;
    for (hsize_t i = 0; i < count; ++i) {
        std::array<hsize_t, 3> at{};
        unsigned mask = 0;
        haddr_t address = 0;
        hsize_t size = 0;
        if (H5Dget_chunk_info(table.data.id(), space.id(), i, at.data(), &mask, &address, &size) < 0)
            xmdfFailed(table.name + ": chunk number " + std::to_string(i + 1) + " could not be found" + h5Reason());
        bool placed = met.insert(at).second;
        for (std::size_t k = 0; k < static_cast<std::size_t>(table.rank); ++k)
            placed = placed && at[k] % table.chunks.size[k] == 0 && at[k] < table.extent[k];
        if (!placed) damaged(table, "chunk number " + std::to_string(i + 1) + " is out of place");
        const std::uint64_t expected = storedBytes(table, layout, mask);
        const bool fits = expected > 0 ? size == expected : size <= 2 * table.chunks.bytes + FILTER_BYTES;
        if (!fits)
            damaged(table, "chunk number " + std::to_string(i + 1) + " has " + std::to_string(size) +
                               " bytes, expecting " + std::to_string(expected > 0 ? expected : table.chunks.bytes));
    }
}

/// Bytes stored of the chunk that begins there; 0 where there is none.
hsize_t bytesAt(const H5Table& table, const std::array<hsize_t, 3>& start) {
    hsize_t bytes = 0;
    return H5Dget_chunk_storage_size(table.data.id(), start.data(), &bytes) < 0 ? 0 : bytes;
}

bool ownFillIsDry(const H5Table& table) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    H5D_fill_value_t defined = H5D_FILL_VALUE_UNDEFINED;
    float fill = 0.0F;
    return H5Pfill_value_defined(layout.id(), &defined) >= 0 && defined == H5D_FILL_VALUE_USER_DEFINED &&
           H5Pget_fill_value(layout.id(), H5T_NATIVE_FLOAT, &fill) >= 0 && fill == DRY;
}

void checkChunks(H5Table& table) {
    const H5Space space(H5Dget_space(table.data.id()));
    hsize_t count = 0;
    if (H5Dget_num_chunks(table.data.id(), space.id(), &count) < 0)
        xmdfFailed(table.name + ": its chunks could not be counted" + h5Reason());
    const hsize_t whole = table.chunks.across[0] * table.chunks.inRow();
    if (count > whole)
        damaged(table, std::to_string(count) + " chunks are stored, its shape holds " + std::to_string(whole));
    if (count <= MOST_LISTED) checkEach(table, space, count);
    table.holes = count < whole;
}

}  // namespace

void h5ReadChunkSizes(H5Table& table) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    table.chunks = {};
    if (H5Pget_layout(layout.id()) != H5D_CHUNKED) return;
    if (H5Pget_chunk(layout.id(), table.rank, table.chunks.size.data()) != table.rank)
        damaged(table, "the sizes of its chunks cannot be read");
    checkSizes(table);
}

H5CacheSize h5CacheOf(const H5Table& table) {
    const H5Chunks& chunks = table.chunks;
    if (chunks.size[0] <= 1) return {};
    H5CacheSize cache;
    // The library numbers the slot by the chunk's place in each dimension, a power of two apart.
    for (std::size_t k = 1; k < static_cast<std::size_t>(table.rank); ++k)
        cache.slots = std::min(cache.slots * std::bit_ceil(std::min<std::uint64_t>(chunks.across[k], MOST_CACHE_SLOTS)),
                               MOST_CACHE_SLOTS);
    const std::uint64_t available = AVAILABLE_MEMORY();
    const std::uint64_t most = available > 0 ? std::min(LARGEST_CHUNK, available / 2) : LARGEST_CHUNK;
    const std::uint64_t chunksThatFit = std::max<std::uint64_t>(1, most / chunks.bytes);
    cache.bytes = std::min(chunks.inRow(), chunksThatFit) * chunks.bytes;
    return cache;
}

void h5CheckStored(H5Table& table) {
    if (table.checked) return;
    if (table.chunks.bytes > 0) {
        checkChunks(table);
    } else {
        table.holes = H5Dget_storage_size(table.data.id()) == 0;  // nothing was ever written
    }
    table.dryFill = table.holes && ownFillIsDry(table);
    table.checked = true;
}

H5Stored h5RowStored(const H5Table& table, hsize_t step) {
    if (!table.holes) return H5Stored::Written;
    const H5Stored hole = table.dryFill ? H5Stored::Filled : H5Stored::Missing;
    if (table.chunks.bytes == 0) return hole;
    std::array<hsize_t, 3> start{(step - 1) / table.chunks.size[0] * table.chunks.size[0], 0, 0};
    for (start[1] = 0; table.rank < 2 || start[1] < table.extent[1]; start[1] += table.chunks.size[1]) {
        for (start[2] = 0; table.rank < 3 || start[2] < table.extent[2]; start[2] += table.chunks.size[2]) {
            if (bytesAt(table, start) == 0) return hole;
            if (table.rank < 3) break;
        }
        if (table.rank < 2) break;
    }
    return H5Stored::Written;
}
