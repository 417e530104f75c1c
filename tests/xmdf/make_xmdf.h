// Small .xmdf files for tests, written through the HDF5 library itself.
#pragma once

#include "xmdf/h5_handles.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

enum class TextForm { FixedNul, FixedBlank, OneElementArray, Variable };

/// A dataset group. A member whose list stays empty is left out.
struct TestDataset {
    std::string path;
    std::vector<double> times;
    std::vector<float> values;                 ///< time after time
    std::vector<hsize_t> shape;                ///< of values
    std::vector<std::uint8_t> flags;           ///< time after time
    std::size_t flaggedTimes = 0;              ///< of flags; as many as of values unless given
    std::string units = "Hours";               ///< blank: no attribute
    std::string groupType = "DATASET SCALAR";  ///< blank: no attribute
    TextForm text = TextForm::FixedNul;
    hid_t storedAs = -1;         ///< type of Values in the file; a 32-bit float unless given
    std::vector<hsize_t> chunk;  ///< of Values; compressed then
    bool compressed = true;
    hsize_t written = 1000;       ///< times of Values that are written, of those in its shape
    std::optional<float> fill{};  ///< value of Values that it declares for what is never written
};

class TestXmdf {
public:
    explicit TestXmdf(const std::string& name);
    TestXmdf& add(const TestDataset& dataset);
    hid_t id() const { return file_.id(); }

private:
    H5File file_;
};

/// Writes a file of the given datasets, and whatever `more` adds.
void makeXmdf(const std::string& name, const std::vector<TestDataset>& datasets,
              const std::function<void(hid_t file)>& more = {});

/// Replaces the first such bytes of a file: damage at a place that is known by what stands there.
void replaceBytes(const std::string& name, const std::string& bytes, const std::string& by);
/// Numbers as an .xmdf holds the sizes of its chunks: four bytes each, the lowest first.
std::string littleEndian(const std::vector<unsigned>& numbers);

void writeText(hid_t object, const char* attribute, const std::string& text, TextForm form);
/// Identifiers of any kind that the library still holds open.
std::int64_t openHandles();
