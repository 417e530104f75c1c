// Bytes under construction: an object on its way into a file, or many.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// Room is asked for ahead, so that numbers are formatted in place.
class GrowingBytes {
public:
    void clear() { used_ = 0; }
    /// At least `count` writable characters behind the text; end(p) takes those before p in.
    char* room(std::size_t count) {
        if (bytes_.size() - used_ < count) bytes_.resize(2 * bytes_.size() + count);
        return bytes_.data() + used_;
    }
    void end(const char* behind) { used_ = static_cast<std::size_t>(behind - bytes_.data()); }
    void add(std::string_view text) {
        char* at = room(text.size());
        end(at + text.copy(at, text.size()));
    }
    std::string_view text() const { return {bytes_.data(), used_}; }
    char* begin() { return bytes_.data(); }
    std::size_t size() const { return used_; }

private:
    std::vector<char> bytes_;
    std::size_t used_ = 0;
};
