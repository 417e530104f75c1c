// A text file in blocks that several threads read, each block the lines that begin in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

/// The lines of one block, without their line ends (LF or CR LF).
class LinesOfBlock {
public:
    /// text: from the first line's first character to behind the last line.
    explicit LinesOfBlock(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}
    /// False behind the last line.
    bool next(std::string_view& line);

private:
    const char* at_;
    const char* end_;
};

class MeshBlocks {
public:
    /// The lines from `offset` on, where a line begins.
    MeshBlocks(int file, std::int64_t offset);

    /// With one job, or a file of a single block, reading in order costs less.
    static bool WORTH_WHILE(int file);
    std::size_t count() const { return count_; }
    /// Hands every block (from 0) to `read` on the threads of the run, several at a time. False when one of them said
    /// false, a read failed, or a line is longer than a block: then the file is to be read in order, from where it
    /// stands, which is not changed.
    bool readAll(const std::function<bool(std::size_t block, LinesOfBlock& lines)>& read) const;

private:
    bool load(std::size_t block, std::vector<char>& buffer, LinesOfBlock& lines) const;

    int file_;
    std::int64_t offset_;
    std::int64_t length_;
    std::size_t count_;
};
