#include "xmdf/make_xmdf.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

H5Properties withParents() {
    H5Properties links(H5Pcreate(H5P_LINK_CREATE));
    H5Pset_create_intermediate_group(links.id(), 1);
    return links;
}

void writeTable(hid_t group, const char* name, hid_t storedAs, hid_t inMemory, const std::vector<hsize_t>& shape,
                const void* data, const TestDataset& as = {}) {
    const H5Space space(H5Screate_simple(static_cast<int>(shape.size()), shape.data(), nullptr));
    const H5Properties layout(H5Pcreate(H5P_DATASET_CREATE));
    if (!as.chunk.empty()) H5Pset_chunk(layout.id(), static_cast<int>(as.chunk.size()), as.chunk.data());
    if (!as.chunk.empty() && as.compressed) H5Pset_deflate(layout.id(), 1);
    if (as.fill) H5Pset_fill_value(layout.id(), H5T_NATIVE_FLOAT, &*as.fill);
    const H5Dataset table(H5Dcreate2(group, name, storedAs, space.id(), H5P_DEFAULT, layout.id(), H5P_DEFAULT));
    const std::vector<hsize_t> start(shape.size(), 0);
    std::vector<hsize_t> written = shape;
    written[0] = std::min(shape[0], as.written);
    if (written[0] == 0) return;
    const H5Space memory(H5Screate_simple(static_cast<int>(shape.size()), written.data(), nullptr));
    H5Sselect_hyperslab(space.id(), H5S_SELECT_SET, start.data(), nullptr, written.data(), nullptr);
    H5Dwrite(table.id(), inMemory, memory.id(), space.id(), H5P_DEFAULT, data);
}

}  // namespace

void writeText(hid_t object, const char* attribute, const std::string& text, TextForm form) {
    const H5Type type(H5Tcopy(H5T_C_S1));
    const hsize_t one = 1;
    const H5Space space(form == TextForm::OneElementArray ? H5Screate_simple(1, &one, nullptr) : H5Screate(H5S_SCALAR));
    std::string padded = text;
    if (form == TextForm::Variable) {
        H5Tset_size(type.id(), H5T_VARIABLE);
    } else {
        padded.resize(text.size() + 3, form == TextForm::FixedBlank ? ' ' : '\0');
        H5Tset_size(type.id(), padded.size());
        H5Tset_strpad(type.id(), form == TextForm::FixedBlank ? H5T_STR_SPACEPAD : H5T_STR_NULLPAD);
    }
    const char* first = padded.data();
    const H5Attribute made(H5Acreate2(object, attribute, type.id(), space.id(), H5P_DEFAULT, H5P_DEFAULT));
    H5Awrite(made.id(), type.id(),
             form == TextForm::Variable ? static_cast<const void*>(&first) : static_cast<const void*>(first));
}

TestXmdf::TestXmdf(const std::string& name) : file_(H5Fcreate(name.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)) {}

TestXmdf& TestXmdf::add(const TestDataset& d) {
    const H5Group group(H5Gcreate2(file_.id(), d.path.c_str(), withParents().id(), H5P_DEFAULT, H5P_DEFAULT));
    if (!d.groupType.empty()) writeText(group.id(), "Grouptype", d.groupType, d.text);
    if (!d.units.empty()) writeText(group.id(), "TimeUnits", d.units, d.text);
    if (!d.times.empty())
        writeTable(group.id(), "Times", H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, {d.times.size()}, d.times.data());
    if (!d.values.empty())
        writeTable(group.id(), "Values", d.storedAs < 0 ? H5T_IEEE_F32LE : d.storedAs, H5T_NATIVE_FLOAT, d.shape,
                   d.values.data(), d);
    const hsize_t flagged = d.flaggedTimes > 0 ? d.flaggedTimes : d.shape[0];
    if (!d.flags.empty())
        writeTable(group.id(), "Active", H5T_STD_U8LE, H5T_NATIVE_UINT8, {flagged, d.flags.size() / flagged},
                   d.flags.data());
    return *this;
}

void makeXmdf(const std::string& name, const std::vector<TestDataset>& datasets,
              const std::function<void(hid_t)>& more) {
    TestXmdf file(name);
    for (const TestDataset& d : datasets) file.add(d);
    if (more) more(file.id());
}

void replaceBytes(const std::string& name, const std::string& bytes, const std::string& by) {
    std::fstream file(name, std::ios::binary | std::ios::in | std::ios::out);
    const std::string all{std::istreambuf_iterator<char>(file), {}};
    file.seekp(static_cast<std::streamoff>(all.find(bytes)));
    file.write(by.data(), static_cast<std::streamsize>(by.size()));
}

std::string littleEndian(const std::vector<unsigned>& numbers) {
    std::string bytes;
    for (const unsigned number : numbers)
        for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 255U);
    return bytes;
}

std::int64_t openHandles() { return H5Fget_obj_count(H5F_OBJ_ALL, H5F_OBJ_ALL); }
