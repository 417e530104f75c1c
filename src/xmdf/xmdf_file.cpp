#include "platform/file_system.h"
#include "text_utils/text.h"
#include "xmdf/h5_text.h"
#include "xmdf/xmdf_state.h"

namespace {
constexpr float LAYOUT_VERSION = 2.1F;

/// A model that still writes its results holds a lock on them.
H5File openUnlocked(const std::string& name) {
#if H5_VERSION_GE(1, 12, 1) || (H5_VERSION_GE(1, 10, 7) && !H5_VERSION_GE(1, 12, 0))
    const H5Properties access(H5Pcreate(H5P_FILE_ACCESS));
    if (H5Pset_file_locking(access.id(), false, true) >= 0)
        return H5File(H5Fopen(name.c_str(), H5F_ACC_RDONLY, access.id()));
#endif
    return H5File();
}
}  // namespace

void XmdfFileCloser::operator()(XmdfFileState* state) const { delete state; }
void XmdfGroupCloser::operator()(XmdfGroupState* state) const { delete state; }

XmdfStatus xfopenfile_f(const std::string& name, XmdfFile& file) {
    h5Silence();
    file.reset(new XmdfFileState);
    file->name = name;
    file->file = H5File(H5Fopen(NAME_FOR_LIBRARY(name).c_str(), H5F_ACC_RDONLY, H5P_DEFAULT));
    if (file->file.valid()) return {};
    std::string reason = "\"" + name + "\" could not be opened" + h5Reason();
    file->file = openUnlocked(name);
    file->unlocked = file->file.valid();
    if (file->unlocked) return {};
    file.reset();
    return {-1, std::move(reason)};
}

bool XMDF_UNLOCKED(const XmdfFileState& file) { return file.unlocked; }

XmdfStatus xfclosefile_f(XmdfFile& file) {
    const XmdfFile closing = std::move(file);
    if (closing == nullptr || closing->file.close()) return {};
    return {-1, "\"" + closing->name + "\" could not be closed" + h5Reason()};
}

std::string HDF5_VERSION() {
    unsigned major = 0, minor = 0, release = 0;
    if (H5get_libversion(&major, &minor, &release) < 0) return {};
    return std::to_string(major) + '.' + std::to_string(minor) + '.' + std::to_string(release);
}

XmdfStatus xfgetlibraryversion_f(float& version) {
    version = LAYOUT_VERSION;
    return {};
}

XmdfGroupKind xmdfGroupKind(hid_t group) {
    std::string type;
    if (!h5ReadText(group, "Grouptype", type)) return XmdfGroupKind::Folder;
    if (ASAME(type, "DATASET SCALAR")) return XmdfGroupKind::Scalar;
    if (ASAME(type, "DATASET VECTOR")) return XmdfGroupKind::Vector;
    return XmdfGroupKind::Folder;
}

XmdfStatus xfopengroup_f(XmdfFileState& file, const std::string& path, XmdfGroup& group) {
    XmdfGroup opened(new XmdfGroupState);
    opened->name = "\"" + file.name + "\": " + path;
    const H5Properties access = h5WithinFile(H5P_GROUP_ACCESS);
    opened->group = H5Group(H5Gopen2(file.file.id(), path.c_str(), access.id()));
    if (!opened->group.valid()) return {-1, opened->name + " could not be opened" + h5Reason()};
    const XmdfGroupKind kind = xmdfGroupKind(opened->group.id());
    if (kind == XmdfGroupKind::Folder) return {-1, opened->name + " has no Grouptype of a dataset"};
    opened->vector = kind == XmdfGroupKind::Vector;
    group = std::move(opened);
    return {};
}

XmdfStatus xfclosegroup_f(XmdfGroup& group) {
    const XmdfGroup closing = std::move(group);
    if (closing == nullptr || closing->group.close()) return {};
    return {-1, closing->name + " could not be closed" + h5Reason()};
}
