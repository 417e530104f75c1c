#include "xmdf/packed_row.h"

#include <algorithm>

namespace {

template <typename Number>
bool holds(const H5Table& table) {
    const H5Type type(H5Dget_type(table.data.id()));
    return H5Tequal(type.id(), sizeof(Number) == 1 ? H5T_STD_U8LE : H5T_IEEE_F32LE) > 0;
}

/// True for deflated chunks, and how; false for any other filters.
bool filtersAre(const H5Table& table, ChunkOrder& order) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    const int filters = H5Pget_nfilters(layout.id());
    const auto filter = [&](int number) {
        unsigned flags = 0;
        std::size_t values = 0;
        return H5Pget_filter2(layout.id(), static_cast<unsigned>(number), &flags, &values, nullptr, 0, nullptr,
                              nullptr);
    };
    order = filters == 2 && filter(0) == H5Z_FILTER_SHUFFLE ? ChunkOrder::ByRank : ChunkOrder::AsInMemory;
    return filters == (order == ChunkOrder::ByRank ? 2 : 1) && filter(filters - 1) == H5Z_FILTER_DEFLATE;
}

/// Empty where there is none, or not as every filter left it.
std::vector<unsigned char> readChunk(const H5Table& table, const std::array<hsize_t, 3>& start) {
    constexpr hsize_t NOISE = 1024;  // compression adds a little to bytes of noise
    hsize_t bytes = 0;
    if (H5Dget_chunk_storage_size(table.data.id(), start.data(), &bytes) < 0 || bytes > 2 * table.chunks.bytes + NOISE)
        return {};
    std::vector<unsigned char> chunk(static_cast<std::size_t>(bytes));
    std::uint32_t filtersLeftOut = 0;
    const bool read =
        bytes > 0 && H5Dread_chunk(table.data.id(), H5P_DEFAULT, start.data(), &filtersLeftOut, chunk.data()) >= 0;
    if (!read || filtersLeftOut != 0) chunk.clear();
    return chunk;
}

}  // namespace

template <typename Number>
PackedRow h5ReadPacked(const H5Table& table, hsize_t step, std::size_t wanted) {
    const H5Chunks& chunks = table.chunks;
    PackedRow row;
    const bool runs = chunks.bytes > 0 && chunks.size[0] == 1 && chunks.size[2] == table.extent[2];
    if (!runs || step < 1 || step > table.extent[0] || table.extent[1] * table.extent[2] != wanted ||
        !holds<Number>(table) || !filtersAre(table, row.order))
        return {};
    row.chunkLength = static_cast<std::size_t>(chunks.size[1] * chunks.size[2]);
    for (hsize_t at = 0; at < table.extent[1]; at += chunks.size[1]) {
        row.chunks.push_back(readChunk(table, {step - 1, at, 0}));
        if (row.chunks.back().empty()) return {};
    }
    return row;
}

template <typename Number>
bool h5Unpack(const PackedRow& packed, std::size_t number, std::span<Number> row) {
    const std::size_t first = number * packed.chunkLength;
    const std::span<Number> own = row.subspan(first, std::min(packed.chunkLength, row.size() - first));
    return UNPACK_CHUNK(packed.chunks[number], packed.order, packed.chunkLength, own);
}

template PackedRow h5ReadPacked<float>(const H5Table&, hsize_t, std::size_t);
template PackedRow h5ReadPacked<std::uint8_t>(const H5Table&, hsize_t, std::size_t);
template bool h5Unpack(const PackedRow&, std::size_t, std::span<float>);
template bool h5Unpack(const PackedRow&, std::size_t, std::span<std::uint8_t>);
