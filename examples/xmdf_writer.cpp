#include "xmdf_writer.h"

#include <hdf5.h>

#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace {

template <auto Close>
class H5Handle {
public:
    explicit H5Handle(hid_t id) : id_(id) {
        if (id_ < 0) throw std::runtime_error("HDF5 refused");
    }
    H5Handle(H5Handle&& other) noexcept : id_(std::exchange(other.id_, H5I_INVALID_HID)) {}
    H5Handle(const H5Handle&) = delete;
    H5Handle& operator=(const H5Handle&) = delete;
    H5Handle& operator=(H5Handle&&) = delete;
    ~H5Handle() {
        if (id_ >= 0) Close(id_);
    }
    hid_t id() const { return id_; }
    void close() { check(Close(std::exchange(id_, H5I_INVALID_HID))); }
    static void check(herr_t status) {
        if (status < 0) throw std::runtime_error("HDF5 refused");
    }

private:
    hid_t id_;
};
using H5File = H5Handle<H5Fclose>;
using H5Group = H5Handle<H5Gclose>;
using H5Data = H5Handle<H5Dclose>;
using H5Space = H5Handle<H5Sclose>;
using H5Type = H5Handle<H5Tclose>;
using H5Attribute = H5Handle<H5Aclose>;
using H5List = H5Handle<H5Pclose>;

void check(herr_t status) { H5File::check(status); }

H5Type fixedText(std::string_view text) {
    H5Type type(H5Tcopy(H5T_C_S1));
    check(H5Tset_size(type.id(), text.size()));
    check(H5Tset_strpad(type.id(), H5T_STR_NULLPAD));
    return type;
}

void writeText(const H5Group& group, const char* name, std::string_view text) {
    const H5Type type = fixedText(text);
    const H5Space scalar(H5Screate(H5S_SCALAR));
    const H5Attribute attribute(H5Acreate2(group.id(), name, type.id(), scalar.id(), H5P_DEFAULT, H5P_DEFAULT));
    check(H5Awrite(attribute.id(), type.id(), text.data()));
}

/// Extents are outermost first. Compressed lightly, one chunk a time.
void createTable(const H5Group& group, const char* name, hid_t type, std::vector<hsize_t> extents) {
    const H5Space space(H5Screate_simple(static_cast<int>(extents.size()), extents.data(), nullptr));
    const H5List creation(H5Pcreate(H5P_DATASET_CREATE));
    extents.front() = 1;
    check(H5Pset_chunk(creation.id(), static_cast<int>(extents.size()), extents.data()));
    check(H5Pset_deflate(creation.id(), 1));
    H5Data(H5Dcreate2(group.id(), name, type, space.id(), H5P_DEFAULT, creation.id(), H5P_DEFAULT)).close();
}

void writeRow(const H5Group& group, const char* name, hid_t memoryType, std::size_t step, const void* values) {
    H5Data data(H5Dopen2(group.id(), name, H5P_DEFAULT));
    const H5Space space(H5Dget_space(data.id()));
    std::array<hsize_t, 3> start{};
    std::array<hsize_t, 3> count{};
    const int dimensions = H5Sget_simple_extent_dims(space.id(), count.data(), nullptr);
    check(dimensions);
    start[0] = step;
    count[0] = 1;
    check(H5Sselect_hyperslab(space.id(), H5S_SELECT_SET, start.data(), nullptr, count.data(), nullptr));
    const H5Space memory(H5Screate_simple(dimensions, count.data(), nullptr));
    check(H5Dwrite(data.id(), memoryType, memory.id(), space.id(), H5P_DEFAULT, values));
    data.close();
}

/// The group, made if it is not there.
H5Group folderOf(hid_t parent, const std::string& name) {
    if (H5Lexists(parent, name.c_str(), H5P_DEFAULT) > 0) return H5Group(H5Gopen2(parent, name.c_str(), H5P_DEFAULT));
    H5Group group(H5Gcreate2(parent, name.c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
    writeText(group, "Grouptype", "Generic");
    return group;
}

}  // namespace

struct XmdfWriter::File {
    std::string name;
    std::string run;
    std::size_t nodes;
    std::size_t cells;
    H5File handle;

    /// Does the step; what HDF5 refuses is reported with the file's name.
    template <typename Step>
    void guarded(Step&& step) {
        try {
            step();
        } catch (const std::runtime_error&) {
            throw std::runtime_error("ERROR - Could not write all of " + name);
        }
    }
};

XmdfWriter::XmdfWriter(const std::filesystem::path& name, std::string run, std::size_t nodes, std::size_t cells) {
    check(H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr));  // failures are reported in one line of our own
    const hid_t created = H5Fcreate(name.string().c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
    if (created < 0) throw std::runtime_error("ERROR - Could not create " + name.string());
    file_ = std::make_unique<File>(File{name.string(), std::move(run), nodes, cells, H5File(created)});
    file_->guarded([&] {
        const std::string_view kind = "Xmdf";
        const float version = 2.1F;
        const hsize_t one = 1;
        const H5Type text = fixedText(kind);
        const H5Space scalar(H5Screate(H5S_SCALAR));
        const H5Space single(H5Screate_simple(1, &one, nullptr));
        const H5Data type(
            H5Dcreate2(created, "File Type", text.id(), scalar.id(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
        check(H5Dwrite(type.id(), text.id(), H5S_ALL, H5S_ALL, H5P_DEFAULT, kind.data()));
        const H5Data number(
            H5Dcreate2(created, "File Version", H5T_IEEE_F32LE, single.id(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
        check(H5Dwrite(number.id(), H5T_NATIVE_FLOAT, H5S_ALL, H5S_ALL, H5P_DEFAULT, &version));
    });
}

XmdfWriter::~XmdfWriter() = default;

void XmdfWriter::create(const std::string& dataset, bool vector, std::size_t times) {
    file_->guarded([&] {
        const std::size_t slash = dataset.find('/');
        const H5Group run = folderOf(file_->handle.id(), file_->run);
        const H5Group folder = folderOf(run.id(), dataset.substr(0, slash));
        const H5Group group(
            H5Gcreate2(folder.id(), dataset.substr(slash + 1).c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
        writeText(group, "Grouptype", vector ? "DATASET VECTOR" : "DATASET SCALAR");
        writeText(group, "TimeUnits", "Hours");
        std::vector<hsize_t> extents = {times, file_->nodes};
        if (vector) extents.push_back(2);
        createTable(group, "Times", H5T_IEEE_F64LE, {times});
        createTable(group, "Values", H5T_IEEE_F32LE, extents);
        createTable(group, "Active", H5T_STD_U8LE, {times, file_->cells});
    });
}

void XmdfWriter::write(const std::string& dataset, std::size_t step, double hours, std::span<const float> values,
                       std::span<const std::uint8_t> wet) {
    file_->guarded([&] {
        const H5Group group(H5Gopen2(file_->handle.id(), (file_->run + "/" + dataset).c_str(), H5P_DEFAULT));
        writeRow(group, "Times", H5T_NATIVE_DOUBLE, step, &hours);
        writeRow(group, "Values", H5T_NATIVE_FLOAT, step, values.data());
        writeRow(group, "Active", H5T_NATIVE_UINT8, step, wet.data());
    });
}

void XmdfWriter::close() {
    file_->guarded([&] { file_->handle.close(); });
}
