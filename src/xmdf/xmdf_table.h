// One member of a dataset group (Values, Times or Active), with its shape.
#pragma once

#include "xmdf/h5_handles.h"

#include <array>
#include <cstdint>
#include <string>

/// Sizes in elements, counts of chunks. Dimensions that the table has not are of one element in one chunk.
struct H5Chunks {
    std::uint64_t bytes = 0;  ///< of one chunk; 0 for storage without chunks
    std::array<hsize_t, 3> size{1, 1, 1};
    std::array<hsize_t, 3> across{1, 1, 1};
    std::uint64_t inRow() const { return across[1] * across[2]; }  ///< chunks that hold one time
};

struct H5Table {
    H5Dataset data;
    std::string name;  ///< for messages: "x.xmdf": /run/Temporal/Depth/Values
    int rank = 0;
    std::array<hsize_t, 3> extent{1, 1, 1};  ///< the first `rank` entries count: times, nodes or cells, components
    std::array<hsize_t, 3> most{1, 1, 1};    ///< to which the extent may grow; H5S_UNLIMITED
    H5Chunks chunks;
    // filled by h5CheckStored
    bool checked = false;
    bool holes = false;    ///< something was never written
    bool dryFill = false;  ///< and has a fill value of -99999 of its own
    bool isOpen() const { return data.valid(); }
};

/// True when the group has a link of that name that leads to something.
bool h5HasMember(hid_t group, const char* member);

/// Opens a member that holds numbers in `rank` dimensions. Storage in chunks that span several times gets a cache of
/// one row of chunks, so that each chunk is read once while the times are taken in order. An XmdfFailure tells: absent,
/// behind an external link, no numbers, another number of dimensions, or chunks that do not fit them or the memory.
H5Table h5OpenTable(hid_t group, const std::string& groupName, const char* member, int rank);

/// Rows `first` (numbered from 1) to `first` + `rows` - 1 of the first dimension.
struct H5Rows {
    hsize_t first = 1, rows = 1;
};
/// Reads rows of a table that h5CheckStored has passed, converted to `memoryType`. `count`: elements that `to` has room
/// for; rows of another size are an XmdfFailure.
void h5ReadRows(const H5Table& table, H5Rows wanted, hid_t memoryType, void* to, std::size_t count);

/// Link access that refuses external links, for whatever is opened by name.
H5Properties h5WithinFile(hid_t propertyClass);
