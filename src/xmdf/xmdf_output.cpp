#include "xmdf/xmdf_output.h"

#include "platform/file_system.h"
#include "xmdf/h5_text.h"
#include "xmdf/packed_chunks.h"
#include "xmdf/xmdf_failure.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr float LAYOUT_VERSION = 2.1F;
constexpr unsigned COMPRESSION =
    1;  // what the table says of its chunks, which are packed before they reach the library

/// One table whose first dimension grows by a chunk a time.
struct GrowingTable {
    H5Dataset data;
    std::size_t width = 1;  ///< bytes of a number
    int rank = 0;
    std::array<hsize_t, 3> row{1, 1, 1};  ///< extent of one time
};

/// Keeps the library's reason before the closing of any handle, of properties too, empties its error stack.
bool done(bool good) {
    if (!good) xmdfFailed(h5Reason());
    return true;
}
bool done(herr_t status) { return done(status >= 0); }

/// Creation properties without the time of day, so that equal runs give equal files.
H5Properties timeless(hid_t propertyClass) {
    H5Properties made(H5Pcreate(propertyClass));
    H5Pset_obj_track_times(made.id(), false);
    return made;
}

H5Type textType(std::string_view text) {
    H5Type type(H5Tcopy(H5T_C_S1));
    H5Tset_size(type.id(), text.size());
    H5Tset_strpad(type.id(), H5T_STR_NULLPAD);
    return type;
}

bool writeText(hid_t group, const char* name, std::string_view text) {
    const H5Type type = textType(text);
    const H5Space scalar(H5Screate(H5S_SCALAR));
    H5Attribute attribute(H5Acreate2(group, name, type.id(), scalar.id(), H5P_DEFAULT, H5P_DEFAULT));
    return done(attribute.valid()) && done(H5Awrite(attribute.id(), type.id(), text.data())) && done(attribute.close());
}

/// A table of fixed size, written whole. extent: blank for a single value.
bool writeTable(hid_t group, const char* name, hid_t fileType, hid_t memoryType, const std::vector<hsize_t>& extent,
                const void* values) {
    const H5Space space(extent.empty() ? H5Screate(H5S_SCALAR)
                                       : H5Screate_simple(static_cast<int>(extent.size()), extent.data(), nullptr));
    const H5Properties made = timeless(H5P_DATASET_CREATE);
    H5Dataset data(H5Dcreate2(group, name, fileType, space.id(), H5P_DEFAULT, made.id(), H5P_DEFAULT));
    return done(data.valid()) && done(H5Dwrite(data.id(), memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, values)) &&
           done(data.close());
}

template <typename Number>
bool writeList(hid_t group, const char* name, hid_t fileType, hid_t memoryType, const std::vector<Number>& list) {
    return writeTable(group, name, fileType, memoryType, {list.size()}, list.data());
}

bool createTable(hid_t group, const char* name, hid_t fileType, GrowingTable& table) {
    std::array<hsize_t, 3> none = table.row, most = table.row;
    none[0] = 0;
    most[0] = H5S_UNLIMITED;
    const H5Space space(H5Screate_simple(table.rank, none.data(), most.data()));
    const H5Properties made = timeless(H5P_DATASET_CREATE);
    // Bytes of one rank stand together before they are compressed, which takes half the time and half the room.
    if (!done(H5Pset_chunk(made.id(), table.rank, table.row.data())) || !done(H5Pset_shuffle(made.id())) ||
        !done(H5Pset_deflate(made.id(), COMPRESSION)))
        return false;
    table.data = H5Dataset(H5Dcreate2(group, name, fileType, space.id(), H5P_DEFAULT, made.id(), H5P_DEFAULT));
    return done(table.data.valid());
}

PlainChunk chunkOf(const GrowingTable& table, const void* numbers) {
    return {numbers, static_cast<std::size_t>(table.row[1] * table.row[2]), table.width};
}

/// step: numbered from 0.
bool addRow(const GrowingTable& table, hsize_t step, const std::vector<unsigned char>& packed) {
    constexpr std::uint32_t EVERY_FILTER = 0;  // a mask of those left out
    std::array<hsize_t, 3> extent = table.row;
    extent[0] = step + 1;
    const std::array<hsize_t, 3> start{step, 0, 0};
    return done(H5Dset_extent(table.data.id(), extent.data())) &&
           done(H5Dwrite_chunk(table.data.id(), H5P_DEFAULT, EVERY_FILTER, start.data(), packed.size(), packed.data()));
}

H5Group createGroup(hid_t parent, const std::string& name) {
    const H5Properties made = timeless(H5P_GROUP_CREATE);
    H5Group group(H5Gcreate2(parent, name.c_str(), H5P_DEFAULT, made.id(), H5P_DEFAULT));
    done(group.valid());
    return group;
}

/// The group, made as a folder if it is not there.
H5Group folderOf(hid_t parent, const std::string& name) {
    if (H5Lexists(parent, name.c_str(), H5P_DEFAULT) > 0) return H5Group(H5Gopen2(parent, name.c_str(), H5P_DEFAULT));
    H5Group group = createGroup(parent, name);
    return group.valid() && writeText(group.id(), "Grouptype", "Generic") ? std::move(group) : H5Group();
}

}  // namespace

struct XmdfOutputState {
    H5File file;
    std::string name;
    H5Group group;  ///< of the dataset being written; closed while there is none
    GrowingTable values, active;
    std::vector<double> times;
    std::vector<float> mins, maxs;
};

namespace {

template <typename Step>
XmdfStatus outcome(const XmdfOutputState& file, Step step) {
    XmdfStatus status = xmdfOperation([&] { done(step()); });
    if (status < 0) status.reason = "\"" + file.name + "\" could not be written" + status.reason;
    return status;
}

bool endDataset(XmdfOutputState& file) {
    if (!file.group.valid()) return true;
    const hid_t group = file.group.id();
    return done(file.values.data.close()) && done(file.active.data.close()) &&
           writeList(group, "Times", H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, file.times) &&
           writeList(group, "Mins", H5T_IEEE_F32LE, H5T_NATIVE_FLOAT, file.mins) &&
           writeList(group, "Maxs", H5T_IEEE_F32LE, H5T_NATIVE_FLOAT, file.maxs) && done(file.group.close());
}

bool createMembers(XmdfOutputState& file, const XmdfNewDataset& dataset) {
    const hid_t group = file.group.id();
    const auto nodes = static_cast<hsize_t>(dataset.values);
    file.values.width = sizeof(float);
    file.values.rank = dataset.vector ? 3 : 2;
    file.values.row = {1, nodes, dataset.vector ? hsize_t{2} : hsize_t{1}};
    if (!createTable(group, "Values", H5T_IEEE_F32LE, file.values)) return false;
    file.active.rank = 2;
    file.active.row = {1, static_cast<hsize_t>(dataset.flags), 1};
    return dataset.flags == 0 || createTable(group, "Active", H5T_STD_U8LE, file.active);
}

bool beginDataset(XmdfOutputState& file, const XmdfNewDataset& dataset) {
    if (!endDataset(file)) return false;
    file.times.clear();
    file.mins.clear();
    file.maxs.clear();
    const H5Group run = folderOf(file.file.id(), dataset.run);
    if (!run.valid()) return false;
    const H5Group folder = folderOf(run.id(), dataset.folder);
    if (!folder.valid()) return false;
    file.group = createGroup(folder.id(), dataset.name);
    return file.group.valid() &&
           writeText(file.group.id(), "Grouptype", dataset.vector ? "DATASET VECTOR" : "DATASET SCALAR") &&
           writeText(file.group.id(), "TimeUnits", "Hours") &&
           writeText(file.group.id(), "DatasetUnits", dataset.units.empty() ? "None" : dataset.units) &&
           createMembers(file, dataset);
}

bool writeRoot(hid_t root) {
    constexpr std::string_view KIND = "Xmdf";
    const H5Type text = textType(KIND);
    return writeTable(root, "File Type", text.id(), text.id(), {}, KIND.data()) &&
           writeTable(root, "File Version", H5T_IEEE_F32LE, H5T_NATIVE_FLOAT, {1}, &LAYOUT_VERSION);
}

}  // namespace

void XmdfOutputCloser::operator()(XmdfOutputState* state) const { delete state; }

XmdfStatus XMDF_CREATE(const std::string& name, XmdfOutput& file) {
    h5Silence();
    file.reset(new XmdfOutputState);
    file->name = name;
    const H5Properties made = timeless(H5P_FILE_CREATE);
    file->file = H5File(H5Fcreate(NAME_FOR_LIBRARY(name).c_str(), H5F_ACC_TRUNC, made.id(), H5P_DEFAULT));
    return outcome(*file, [&] { return done(file->file.valid()) && writeRoot(file->file.id()); });
}

bool XMDF_HAS_DATASET(XmdfOutputState& file, const XmdfNewDataset& dataset) {
    std::string path;
    for (const std::string& part : {dataset.run, dataset.folder, dataset.name}) {
        path += "/" + part;
        if (H5Lexists(file.file.id(), path.c_str(), H5P_DEFAULT) <= 0) return false;
    }
    return true;
}

XmdfStatus XMDF_BEGIN_DATASET(XmdfOutputState& file, const XmdfNewDataset& dataset) {
    return outcome(file, [&] { return beginDataset(file, dataset); });
}

XmdfStatus XMDF_ADD_TIME(XmdfOutputState& file, const XmdfNewTime& time) {
    const hsize_t step = file.times.size();
    file.times.push_back(time.hours);
    file.mins.push_back(time.least);
    file.maxs.push_back(time.most);
    std::vector<PlainChunk> chunks = {chunkOf(file.values, time.values.data())};
    if (file.active.data.valid()) chunks.push_back(chunkOf(file.active, time.flags.data()));
    const std::vector<std::vector<unsigned char>> packed = PACK_CHUNKS(chunks);
    return outcome(file, [&] {
        return addRow(file.values, step, packed.front()) &&
               (packed.size() == 1 || addRow(file.active, step, packed.back()));
    });
}

XmdfStatus XMDF_FINISH(XmdfOutput& file) {
    const XmdfOutput closing = std::move(file);
    return outcome(*closing, [&] { return endDataset(*closing) && done(closing->file.close()); });
}
