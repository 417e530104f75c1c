// A binary .dat results file of one quantity: little-endian cards without record markers, in the manner of SMS.
#pragma once

#include "output_file.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

class DatWriter {
public:
    /// Creates the file and writes its header. vector: two components per node, x then y. quantity: up to 40
    /// characters.
    DatWriter(const std::filesystem::path& name, bool vector, std::size_t nodes, std::size_t cells,
              std::string_view quantity);
    /// One output time. values: per node; wet: per cell, 1 wet and 0 dry, or empty for a time without flags.
    void write(double hours, std::span<const float> values, std::span<const std::uint8_t> wet);
    void close();

private:
    OutputFile file_;
};
