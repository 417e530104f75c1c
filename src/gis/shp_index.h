// The .shx file: where each object of the .shp file lies. Edited sets keep the remains of older objects in their .shp
// file, and changed ones at its end, so that only this list tells what a layer holds.
// Layout: ESRI Shapefile Technical Description, July 1998, "Organization of the Index File".
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// One record of the list, in bytes.
struct ShxEntry {
    std::int64_t offset = 0;        ///< of the object's record header in the .shp file
    std::int64_t contentBytes = 0;  ///< of the record behind that header
};

/// The entries of an open .shx input, handed out in order and read a block at a time.
class ShxIndex {
public:
    /// Stops the run with an ERROR that names the file when it has no header of its own, when the length in it is no
    /// whole number of records, or when the file ends before that length.
    void open(int file);
    void rewind();
    /// False behind the last. Stops the run when the file cannot be read.
    bool next(ShxEntry& entry);

private:
    int file_ = 0;
    std::int64_t count_ = 0;  ///< entries of the file
    std::int64_t read_ = 0;   ///< of them, those in blocks read so far
    std::vector<char> block_;
    std::size_t used_ = 0;  ///< bytes of the block that have been handed out
};
