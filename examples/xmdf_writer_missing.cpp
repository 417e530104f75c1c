// Stands in for xmdf_writer.cpp where HDF5 is not installed.
#include "xmdf_writer.h"

#include <stdexcept>

struct XmdfWriter::File {};

XmdfWriter::XmdfWriter(const std::filesystem::path& name, std::string, std::size_t, std::size_t) {
    throw std::runtime_error("ERROR - Could not create " + name.string() + ": this program was built without HDF5");
}
XmdfWriter::~XmdfWriter() = default;
void XmdfWriter::create(const std::string&, bool, std::size_t) {}
void XmdfWriter::write(const std::string&, std::size_t, double, std::span<const float>, std::span<const std::uint8_t>) {
}
void XmdfWriter::close() {}
