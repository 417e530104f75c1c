// Chunks of a table as the library's filters leave them in the file, the bytes of each number's ranks together and then
// deflated, made and opened outside the library: it does all its work on one thread.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Numbers that fill one chunk.
struct PlainChunk {
    const void* numbers = nullptr;  ///< in the byte order of this machine
    std::size_t count = 0;
    std::size_t width = 1;  ///< bytes of each: 1 or 4
};

/// Packs the chunks, on the threads of the run: each becomes one zlib stream over its bytes in the file's order, lowest
/// first. The streams do not depend on the number of threads.
std::vector<std::vector<unsigned char>> PACK_CHUNKS(std::span<const PlainChunk> chunks);

/// Whether the bytes of each number's ranks were put together before a chunk was deflated.
enum class ChunkOrder : bool { AsInMemory, ByRank };

/// Opens one chunk of `count` numbers into the first of them, as many as `to` has room for; in the byte order of this
/// machine. False for whatever is no zlib stream of exactly that many bytes.
template <typename Number>
bool UNPACK_CHUNK(std::span<const unsigned char> packed, ChunkOrder order, std::size_t count, std::span<Number> to);
