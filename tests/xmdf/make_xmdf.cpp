#include "xmdf/make_xmdf.h"

namespace {

H5Properties withParents() {
    H5Properties links(H5Pcreate(H5P_LINK_CREATE));
    H5Pset_create_intermediate_group(links.id(), 1);
    return links;
}

void writeTable(hid_t group, const char* name, hid_t storedAs, hid_t inMemory, const std::vector<hsize_t>& shape,
                const void* data, const std::vector<hsize_t>& chunk = {}) {
    const H5Space space(H5Screate_simple(static_cast<int>(shape.size()), shape.data(), nullptr));
    const H5Properties layout(H5Pcreate(H5P_DATASET_CREATE));
    if (!chunk.empty()) {
        H5Pset_chunk(layout.id(), static_cast<int>(chunk.size()), chunk.data());
        H5Pset_deflate(layout.id(), 1);
    }
    const H5Dataset table(H5Dcreate2(group, name, storedAs, space.id(), H5P_DEFAULT, layout.id(), H5P_DEFAULT));
    H5Dwrite(table.id(), inMemory, H5S_ALL, H5S_ALL, H5P_DEFAULT, data);
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
                   d.values.data(), d.chunk);
    if (!d.flags.empty())
        writeTable(group.id(), "Active", H5T_STD_U8LE, H5T_NATIVE_UINT8, {d.shape[0], d.flags.size() / d.shape[0]},
                   d.flags.data());
    return *this;
}

void makeXmdf(const std::string& name, const std::vector<TestDataset>& datasets,
              const std::function<void(hid_t)>& more) {
    TestXmdf file(name);
    for (const TestDataset& d : datasets) file.add(d);
    if (more) more(file.id());
}

std::int64_t openHandles() { return H5Fget_obj_count(H5F_OBJ_ALL, H5F_OBJ_ALL); }
