// One member of a dataset group (Values, Times or Active), with its shape.
#pragma once

#include "xmdf/h5_handles.h"

#include <array>
#include <string>

struct H5Table {
    H5Dataset data;
    std::string name;  ///< for messages: "x.xmdf": /run/Temporal/Depth/Values
    int rank = 0;
    std::array<hsize_t, 3> extent{};  ///< the first `rank` entries count: times, nodes or cells, components
    bool isOpen() const { return data.valid(); }
};

/// True when the group has a link of that name that leads to something.
bool h5HasMember(hid_t group, const char* member);

/// Opens a member that holds numbers in `rank` dimensions. Storage in chunks that span several times gets a cache of
/// one row of chunks, so that each chunk is read once while the times are taken in order. False leaves the reason in
/// XMDF_REASON: absent, behind an external link, no numbers, another number of dimensions, nothing in one of them, or
/// chunks too large to hold.
bool h5OpenTable(hid_t group, const std::string& groupName, const char* member, int rank, H5Table& table);

/// Reads row `step` (numbered from 1) of the first dimension, converted to `memoryType`. `count`: elements that `to`
/// has room for; a row of another size is refused.
bool h5ReadRow(const H5Table& table, hsize_t step, hid_t memoryType, void* to, std::size_t count);

/// Link access that refuses external links, for whatever is opened by name.
H5Properties h5WithinFile(hid_t propertyClass);
