// Writes a binary .dat results file: one dataset, time after time, as inputs/dat_reader.h reads it.
#pragma once

#include "inputs/results.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What every output time of the file has in common.
struct DatShape {
    std::string quantity;  ///< name in the header; what is beyond 40 characters is cut
    bool vector = false;
    std::int32_t values = 0;  ///< per time
    std::int32_t cells = 0;   ///< of the mesh, whether a time has flags or not
};

/// Stored minimums are to come first and stored maximums last: readers look for those behind the ordinary times.
class DatWriter {
public:
    /// Creates the file, of hours and 8-bit flags. Each member stops the run when the disk refuses.
    DatWriter(const std::string& name, const DatShape& shape);

    /// Times of peak take the number that marks times of maximum; other markers stay. flags: one per cell, numbered
    /// from 0, or none.
    void write(const Results& results, std::span<const std::uint8_t> flags);
    void close();

private:
    int file_;
    std::vector<char> block_;
};
