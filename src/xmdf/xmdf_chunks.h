// How a table is stored: the sizes of its chunks, and what of it was ever written.
#pragma once

#include "xmdf/xmdf_table.h"

/// Fills table.chunks (blank for storage without chunks). An XmdfFailure tells of chunks of no size,
/// longer than a dimension of fixed length, or too large to hold. The library believes any size in a damaged header.
void h5ReadChunkSizes(H5Table& table);

/// Bytes and slots of a cache that holds one row of chunks; no bytes where every chunk holds one time, since it is read
/// once in any case, and straight to its place.
struct H5CacheSize {
    std::uint64_t bytes = 0;
    std::uint64_t slots = 1;
};
H5CacheSize h5CacheOf(const H5Table& table);

/// Looks once at what is stored, when the first row is read: never more chunks than the shape holds, each at a place of
/// its own, uncompressed ones of their full size. Others are an XmdfFailure: the library would read beyond them.
void h5CheckStored(H5Table& table);

enum class H5Stored : std::uint8_t {
    Written,
    Filled,  ///< never written, in a table whose own fill value is -99999: a time without a wet value
    Missing
};
/// Row `step`, numbered from 1, of a checked table.
H5Stored h5RowStored(const H5Table& table, hsize_t step);
