#include "xmdf/h5_text.h"

#include "text_utils/text.h"

#include <algorithm>
#include <memory>
#include <string_view>

namespace {

// bytes; no unit or group type comes near, so a longer one is no text of this layout
constexpr std::size_t LONGEST_TEXT = 65536;

herr_t keepFirst(unsigned n, const H5E_error2_t* entry, void* text) {
    if (n == 0 && entry->desc != nullptr) *static_cast<const char**>(text) = entry->desc;
    return 0;
}

bool readVariable(hid_t attribute, hid_t fileType, std::string& text) {
    const H5Type type(H5Tcopy(H5T_C_S1));
    if (H5Tset_size(type.id(), H5T_VARIABLE) < 0 || H5Tset_cset(type.id(), H5Tget_cset(fileType)) < 0) return false;
    char* read = nullptr;
    const bool success = H5Aread(attribute, type.id(), static_cast<void*>(&read)) >= 0;
    const std::unique_ptr<char, herr_t (*)(void*)> owner(read, [](void* memory) { return H5free_memory(memory); });
    if (!success || read == nullptr) return false;
    text = read;
    return true;
}

bool readFixed(hid_t attribute, hid_t fileType, std::string& text) {
    const std::size_t size = H5Tget_size(fileType);
    if (size == 0 || size > LONGEST_TEXT) return false;
    text.assign(size, '\0');
    if (H5Aread(attribute, fileType, text.data()) < 0) return false;
    text.resize(std::min(text.find('\0'), size));
    return true;
}

}  // namespace

void h5Silence() {
    // What a full disk refused cannot be written at the exit either, and libraries crash over it.
    static const bool leavesNothing = H5dont_atexit() >= 0;
    static_cast<void>(leavesNothing);
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
}

std::string h5Reason() {
    const char* innermost = nullptr;
    H5Ewalk2(H5E_DEFAULT, H5E_WALK_UPWARD, keepFirst, static_cast<void*>(&innermost));
    if (innermost == nullptr) return {};
    // Of the system's own reason that alone, without addresses and the time of day: "... error message = 'No space left
    // on device', buf = 0x55..."
    constexpr std::string_view SYSTEM = "error message = '";
    std::string_view text = innermost;
    if (const std::size_t at = text.find(SYSTEM); at != std::string_view::npos) {
        text.remove_prefix(at + SYSTEM.size());
        text = text.substr(0, text.find('\''));
    }
    return std::string(" (HDF5: ").append(text) + ")";
}

bool h5ReadText(hid_t object, const char* name, std::string& text) {
    if (H5Aexists(object, name) <= 0) return false;
    const H5Attribute attribute(H5Aopen(object, name, H5P_DEFAULT));
    if (!attribute.valid()) return false;
    const H5Type type(H5Aget_type(attribute.id()));
    const H5Space space(H5Aget_space(attribute.id()));
    if (H5Tget_class(type.id()) != H5T_STRING || H5Sget_simple_extent_npoints(space.id()) != 1) return false;
    const bool read = H5Tis_variable_str(type.id()) > 0 ? readVariable(attribute.id(), type.id(), text)
                                                        : readFixed(attribute.id(), type.id(), text);
    if (read) text = TRIMF(text);
    return read;
}
