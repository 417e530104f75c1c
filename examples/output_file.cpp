#include "output_file.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace {
constexpr std::size_t BLOCK = 1U << 22;

std::runtime_error refused(const char* what, const std::filesystem::path& name) {
    return std::runtime_error("ERROR - Could not " + std::string(what) + " " + name.string());
}
}  // namespace

OutputFile::OutputFile(std::filesystem::path name)
    : name_(std::move(name)), file_(name_, std::ios::binary | std::ios::trunc) {
    if (!file_) throw refused("create", name_);
    buffer_.reserve(BLOCK + 1024);
}

void OutputFile::text(std::string_view characters) {
    buffer_ += characters;
    flushWhenFull();
}

void OutputFile::number(std::int64_t value) {
    std::array<char, 24> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    buffer_ += ' ';
    text({digits.data(), static_cast<std::size_t>(end - digits.data())});
}

void OutputFile::number(double value, int decimals) {
    std::array<char, 400> digits{};  // the largest double has 309 digits before its point
    const char* end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals).ptr;
    buffer_ += ' ';
    text({digits.data(), static_cast<std::size_t>(end - digits.data())});
}

void OutputFile::byte(std::uint8_t value) {
    buffer_ += static_cast<char>(value);
    flushWhenFull();
}

void OutputFile::bits32(std::uint32_t bits) {
    const std::array<char, 4> bytes = {static_cast<char>(bits & 0xFFU), static_cast<char>(bits >> 8 & 0xFFU),
                                       static_cast<char>(bits >> 16 & 0xFFU), static_cast<char>(bits >> 24)};
    buffer_.append(bytes.data(), bytes.size());
    flushWhenFull();
}

void OutputFile::flushWhenFull() {
    if (buffer_.size() >= BLOCK) flush();
}

void OutputFile::flush() {
    if (!file_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size())))
        throw refused("write all of", name_);
    buffer_.clear();
}

void OutputFile::close() {
    flush();
    file_.close();
    if (!file_) throw refused("write all of", name_);
}
