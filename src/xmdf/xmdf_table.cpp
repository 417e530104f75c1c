#include "xmdf/xmdf_table.h"

#include "xmdf/h5_layout.h"
#include "xmdf/h5_text.h"
#include "xmdf/xmdf_chunks.h"
#include "xmdf/xmdf_failure.h"

namespace {

herr_t refuseExternalLink(const char*, const char*, const char*, const char*, unsigned*, hid_t, void*) { return -1; }

constexpr std::size_t WIDEST_NUMBER = 16;  // bytes
constexpr std::size_t EXTENDED_BITS = 80;  // of a long double in 16 bytes

/// The library believes any width in a damaged header, and reads beyond the values that are stored. Numbers fill
/// theirs.
bool fillsItsWidth(hid_t type) {
    const std::size_t width = H5Tget_size(type);
    const std::size_t bits = H5Tget_precision(type);
    return width > 0 && width <= WIDEST_NUMBER &&
           (bits == 8 * width || (bits == EXTENDED_BITS && width == WIDEST_NUMBER));
}

bool holdsNumbers(const H5Dataset& data) {
    const H5Type type(H5Dget_type(data.id()));
    const H5T_class_t kind = H5Tget_class(type.id());
    if (kind == H5T_INTEGER || kind == H5T_FLOAT) return fillsItsWidth(type.id());
    // flags are often an enumeration of FALSE and TRUE
    return kind == H5T_ENUM && H5Tget_size(type.id()) <= WIDEST_NUMBER &&
           fillsItsWidth(H5Type(H5Tget_super(type.id())).id());
}

void readExtent(H5Table& table, int rank) {
    const H5Space space(H5Dget_space(table.data.id()));
    table.rank = H5Sget_simple_extent_ndims(space.id());
    if (table.rank != rank)
        xmdfFailed(table.name + " has " + std::to_string(table.rank) + " dimensions, expecting " +
                   std::to_string(rank));
    H5Sget_simple_extent_dims(space.id(), table.extent.data(), table.most.data());
}

/// Storage without chunks must have room for the whole table; the library itself believes a damaged header and reads
/// beyond it.
void checkStorage(const H5Table& table) {
    const H5Properties layout(H5Dget_create_plist(table.data.id()));
    const H5D_layout_t kind = H5Pget_layout(layout.id());
    if (kind != H5D_COMPACT && kind != H5D_CONTIGUOUS) return;
    const H5Type type(H5Dget_type(table.data.id()));
    std::uint64_t bytes = H5Tget_size(type.id());
    for (int i = 0; i < table.rank; ++i) bytes *= table.extent[static_cast<std::size_t>(i)];
    const std::uint64_t stored = H5Dget_storage_size(table.data.id());
    // 0: nothing written yet, so that fill values are read
    if (stored >= bytes || (kind == H5D_CONTIGUOUS && stored == 0)) return;
    xmdfFailed(table.name + " is damaged: " + std::to_string(stored) + " of " + std::to_string(bytes) +
               " bytes are stored");
}

void openWithCache(hid_t group, const char* member, const H5CacheSize& cache, H5Table& table) {
    const H5Properties access = h5WithinFile(H5P_DATASET_ACCESS);
    H5Pset_chunk_cache(access.id(), static_cast<std::size_t>(cache.slots) + 1, static_cast<std::size_t>(cache.bytes),
                       1.0);
    table.data = H5Dataset(H5Dopen2(group, member, access.id()));
    if (!table.data.valid()) xmdfFailed(table.name + " could not be opened" + h5Reason());
}

void openTable(hid_t group, const char* member, int rank, H5Table& table) {
    if (!h5HasMember(group, member)) xmdfFailed(table.name + " does not exist");
    if (!h5LayoutIsSound(group, member)) xmdfFailed(table.name + " is damaged: chunks of no size");
    openWithCache(group, member, H5CacheSize{}, table);
    if (!holdsNumbers(table.data)) xmdfFailed(table.name + " does not hold numbers");
    readExtent(table, rank);
    checkStorage(table);
    h5ReadChunkSizes(table);
    const H5CacheSize cache = h5CacheOf(table);
    if (cache.bytes == 0) return;
    table.data.close();  // the cache of a dataset is settled when it is first opened
    openWithCache(group, member, cache, table);
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

H5Table h5OpenTable(hid_t group, const std::string& groupName, const char* member, int rank) {
    H5Table table;
    table.name = groupName + "/" + member;
    openTable(group, member, rank, table);
    return table;
}

void h5ReadRows(const H5Table& table, H5Rows wanted, hid_t memoryType, void* to, std::size_t count) {
    if (wanted.first < 1 || wanted.first > table.extent[0] || wanted.rows > table.extent[0] - wanted.first + 1)
        xmdfFailed(table.name + " has " + std::to_string(table.extent[0]) + " times, asked for number " +
                   std::to_string(wanted.first));
    const std::array<hsize_t, 3> start{wanted.first - 1, 0, 0};
    const std::array<hsize_t, 3> size{wanted.rows, table.extent[1], table.extent[2]};
    const hsize_t elements = size[0] * size[1] * size[2];
    if (elements != count)
        xmdfFailed(table.name + " has " + std::to_string(size[1] * size[2]) + " values per time, expecting " +
                   std::to_string(count));
    const H5Space inFile(H5Dget_space(table.data.id()));
    const H5Space inMemory(H5Screate_simple(1, &elements, nullptr));
    if (H5Sselect_hyperslab(inFile.id(), H5S_SELECT_SET, start.data(), nullptr, size.data(), nullptr) < 0 ||
        H5Dread(table.data.id(), memoryType, inMemory.id(), inFile.id(), H5P_DEFAULT, to) < 0)
        xmdfFailed(table.name + ", time number " + std::to_string(wanted.first) + ", could not be read" + h5Reason());
}
