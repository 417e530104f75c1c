// A file that is written in large blocks; a byte that does not reach the disk is never passed over.
#pragma once

#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

class OutputFile {
public:
    /// Creates or replaces the file. Throws std::runtime_error, naming the file, when that fails.
    explicit OutputFile(std::filesystem::path name);

    void text(std::string_view characters);
    /// Free-form numbers of a card, each with one blank before it.
    void number(std::int64_t value);
    void number(double value, int decimals);
    // Binary values are little-endian.
    void byte(std::uint8_t value);
    void int32(std::int32_t value) { bits32(static_cast<std::uint32_t>(value)); }
    void float32(float value) { bits32(std::bit_cast<std::uint32_t>(value)); }

    /// Writes what is buffered and closes. Throws, as every write does, when the disk refuses it.
    void close();

private:
    void bits32(std::uint32_t bits);
    void flushWhenFull();
    void flush();

    std::filesystem::path name_;
    std::ofstream file_;
    std::string buffer_;
};
