// Owners of HDF5 identifiers. An identifier is closed once, by its handle, however its scope is left.
#pragma once

#include <hdf5.h>

#include <utility>

template <auto Close>
class H5Handle {
public:
    H5Handle() = default;
    explicit H5Handle(hid_t id) : id_(id) {}
    H5Handle(H5Handle&& other) noexcept : id_(std::exchange(other.id_, H5I_INVALID_HID)) {}
    H5Handle& operator=(H5Handle&& other) noexcept {
        std::swap(id_, other.id_);
        return *this;
    }
    ~H5Handle() { close(); }
    hid_t id() const { return id_; }
    bool valid() const { return id_ >= 0; }
    /// False when the library could not close it; the handle is empty afterwards in any case.
    bool close() { return id_ < 0 || Close(std::exchange(id_, H5I_INVALID_HID)) >= 0; }

private:
    hid_t id_ = H5I_INVALID_HID;
};

using H5File = H5Handle<H5Fclose>;
using H5Group = H5Handle<H5Gclose>;
using H5Dataset = H5Handle<H5Dclose>;
using H5Space = H5Handle<H5Sclose>;
using H5Type = H5Handle<H5Tclose>;
using H5Attribute = H5Handle<H5Aclose>;
using H5Properties = H5Handle<H5Pclose>;
