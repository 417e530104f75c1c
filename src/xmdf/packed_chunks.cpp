#include "xmdf/packed_chunks.h"

#include "services/workers.h"
#include "text_utils/bytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

#ifdef HAVE_LIBDEFLATE
#include <libdeflate.h>
#endif
#include <zlib.h>

namespace {

constexpr int LEVEL = 1;                             // the fastest: higher ones gain little on floats
constexpr std::size_t PIECE = std::size_t{1} << 17;  // bytes; a stream begins anew with each, which costs it 1 %
constexpr std::array<unsigned char, 2> STREAM_HEAD = {0x78, 0x01};  // deflated with the fastest level

/// Bytes `from` to `end` of a chunk in the order of the file.
struct Piece {
    const PlainChunk* chunk;
    std::size_t from, end;
    std::vector<unsigned char> packed = {};
    uLong checksum = 0;
};

/// The bytes of rank `rank` of `count` numbers, from number `first` on.
template <std::size_t Width>
void gatherRank(const unsigned char* numbers, std::size_t rank, std::size_t first, std::size_t count,
                unsigned char* to) {
    const unsigned char* at =
        numbers + first * Width + (std::endian::native == std::endian::little ? rank : Width - 1 - rank);
    for (std::size_t i = 0; i < count; ++i) to[i] = at[i * Width];
}

std::vector<unsigned char> plainBytes(const Piece& piece) {
    const PlainChunk& chunk = *piece.chunk;
    const auto* numbers = static_cast<const unsigned char*>(chunk.numbers);
    std::vector<unsigned char> bytes(piece.end - piece.from);
    for (std::size_t at = piece.from; at < piece.end;) {
        const std::size_t rank = at / chunk.count, first = at % chunk.count;
        const std::size_t count = std::min(chunk.count - first, piece.end - at);
        const auto gather = chunk.width == 4 ? gatherRank<4> : gatherRank<1>;
        gather(numbers, rank, first, count, bytes.data() + (at - piece.from));
        at += count;
    }
    return bytes;
}

/// Without head and checksum; whole bytes, so that the next piece goes on behind it.
void pack(Piece& piece) {
    constexpr int NO_HEAD = -15, MOST_MEMORY = 9;  // the largest window and tables: an eighth less time
    std::vector<unsigned char> plain = plainBytes(piece);
    z_stream stream{};
    if (deflateInit2(&stream, LEVEL, Z_DEFLATED, NO_HEAD, MOST_MEMORY, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
    constexpr std::size_t FLUSH = 16;
    piece.packed.resize(deflateBound(&stream, static_cast<uLong>(plain.size())) + FLUSH);
    stream.next_in = plain.data();
    stream.avail_in = static_cast<uInt>(plain.size());
    stream.next_out = piece.packed.data();
    stream.avail_out = static_cast<uInt>(piece.packed.size());
    const bool last = piece.end == piece.chunk->count * piece.chunk->width;
    deflate(&stream, last ? Z_FINISH : Z_SYNC_FLUSH);
    piece.packed.resize(stream.total_out);
    deflateEnd(&stream);
    piece.checksum = adler32(adler32(0, nullptr, 0), plain.data(), static_cast<uInt>(plain.size()));
}

/// Pieces of one chunk, one behind the other.
std::vector<unsigned char> join(std::span<const Piece> pieces) {
    std::vector<unsigned char> stream(STREAM_HEAD.begin(), STREAM_HEAD.end());
    uLong checksum = adler32(0, nullptr, 0);
    for (const Piece& piece : pieces) {
        stream.insert(stream.end(), piece.packed.begin(), piece.packed.end());
        checksum = adler32_combine(checksum, piece.checksum, static_cast<z_off_t>(piece.end - piece.from));
    }
    for (int shift = 24; shift >= 0; shift -= 8) stream.push_back(static_cast<unsigned char>(checksum >> shift));
    return stream;
}

/// False unless the stream is whole and fills `bytes`.
#ifdef HAVE_LIBDEFLATE
bool inflateWhole(std::span<const unsigned char> packed, std::span<unsigned char> bytes) {
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> tables(
        libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    if (tables == nullptr) throw std::bad_alloc();
    std::size_t taken = 0;
    return libdeflate_zlib_decompress_ex(tables.get(), packed.data(), packed.size(), bytes.data(), bytes.size(), &taken,
                                         nullptr) == LIBDEFLATE_SUCCESS;
}
#else
bool inflateWhole(std::span<const unsigned char> packed, std::span<unsigned char> bytes) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
    stream.next_in = const_cast<unsigned char*>(packed.data());  // the library only reads them
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = bytes.data();
    stream.avail_out = static_cast<uInt>(bytes.size());
    const int status = inflate(&stream, Z_FINISH);
    const bool whole = status == Z_STREAM_END && stream.avail_out == 0;
    inflateEnd(&stream);
    return whole;
}
#endif

/// ranks: the bytes of each rank, `count` of them, one rank behind the other.
template <typename Number>
void fromRanks(const unsigned char* ranks, std::size_t count, std::span<Number> to) {
    for (std::size_t i = 0; i < to.size(); ++i) {
        std::uint32_t bits = 0;
        for (std::size_t rank = 0; rank < sizeof(Number); ++rank)
            bits |= static_cast<std::uint32_t>(ranks[rank * count + i]) << (8 * rank);
        if constexpr (sizeof(Number) == 1) to[i] = static_cast<Number>(bits);
        else to[i] = std::bit_cast<Number>(bits);
    }
}

}  // namespace

template <typename Number>
bool UNPACK_CHUNK(std::span<const unsigned char> packed, ChunkOrder order, std::size_t count, std::span<Number> to) {
    constexpr std::size_t MOST = std::numeric_limits<uInt>::max();  // bytes that the library takes at once
    const std::size_t bytes = count * sizeof(Number);
    if (packed.size() > MOST || bytes > MOST) return false;
    const bool straight = sizeof(Number) == 1 && to.size() == count;
    std::unique_ptr<unsigned char[]> plain;
    if (!straight) plain = std::make_unique_for_overwrite<unsigned char[]>(bytes);
    unsigned char* const at = straight ? reinterpret_cast<unsigned char*>(to.data()) : plain.get();
    if (!inflateWhole(packed, {at, bytes})) return false;
    if (straight) return true;
    if (order == ChunkOrder::ByRank) fromRanks(at, count, to);
    else
        for (std::size_t i = 0; i < to.size(); ++i)
            if constexpr (sizeof(Number) == 1) to[i] = at[i];
            else to[i] = littleFloat(at + i * sizeof(Number));
    return true;
}

template bool UNPACK_CHUNK(std::span<const unsigned char>, ChunkOrder, std::size_t, std::span<float>);
template bool UNPACK_CHUNK(std::span<const unsigned char>, ChunkOrder, std::size_t, std::span<std::uint8_t>);

std::vector<std::vector<unsigned char>> PACK_CHUNKS(std::span<const PlainChunk> chunks) {
    std::vector<Piece> pieces;
    for (const PlainChunk& chunk : chunks)
        for (std::size_t from = 0, end = chunk.count * chunk.width; from < end; from += PIECE)
            pieces.push_back({&chunk, from, std::min(from + PIECE, end)});
    DO_PIECES(pieces.size(), [&](std::size_t piece) { pack(pieces[piece]); });
    std::vector<std::vector<unsigned char>> streams;
    for (const PlainChunk& chunk : chunks) {
        const auto own = [&](const Piece& piece) { return piece.chunk == &chunk; };
        const auto first = std::find_if(pieces.begin(), pieces.end(), own);
        streams.push_back(join({first, std::find_if_not(first, pieces.end(), own)}));
    }
    return streams;
}
