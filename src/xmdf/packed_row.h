// One time of a table as it is stored, read through the library and then opened without it, on any thread.
#pragma once

#include "xmdf/packed_chunks.h"
#include "xmdf/xmdf_table.h"

#include <cstdint>
#include <span>
#include <vector>

/// The chunks of one time, each of which holds a run of its values.
struct PackedRow {
    std::vector<std::vector<unsigned char>> chunks;
    std::size_t chunkLength = 0;  ///< values of a chunk; the last may reach beyond the row
    ChunkOrder order = ChunkOrder::AsInMemory;
    std::size_t count() const { return chunks.size(); }
};

/// Row `step`, numbered from 1, of a table that h5CheckStored has passed and that holds it whole. Empty where the table
/// is stored in any other way than chunks of one time, of the very numbers wanted, deflated, shuffled before that or
/// not: then the library has to read it. wanted: values in a row.
template <typename Number>
PackedRow h5ReadPacked(const H5Table& table, hsize_t step, std::size_t wanted);

/// Opens chunk `number`, from 0, to its place in a row. False where the chunk is damaged, which the library then tells.
template <typename Number>
bool h5Unpack(const PackedRow& packed, std::size_t number, std::span<Number> row);
