// Bytes on their way to a file: records are built in place at the end of a large block, which goes to the disk when it
// is full.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

class OutputBlock {
public:
    static constexpr std::size_t BYTES = 1U << 18;

    /// file: an open output of the file service.
    explicit OutputBlock(int file = 0) : file_(file) {}
    /// Room for `count` more bytes, at most BYTES, which the caller fills; they count as written. nullptr when the disk
    /// refuses the block.
    char* room(std::size_t count) {
        if (bytes_.empty()) bytes_.resize(BYTES);
        if (used_ + count > BYTES && !flush()) return nullptr;
        char* at = bytes_.data() + used_;
        used_ += count;
        return at;
    }
    /// Writes behind what is there, without a copy. False when the disk refuses it.
    [[nodiscard]] bool append(std::string_view bytes);
    /// Hands what is there to the file service. False when the disk refuses it.
    [[nodiscard]] bool flush();

private:
    int file_;
    std::vector<char> bytes_;
    std::size_t used_ = 0;
};
