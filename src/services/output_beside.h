// An open output that one other thread writes to, while the calling one works on something else.
#pragma once

#include <cstdio>
#include <string_view>

class OutputBeside {
public:
    /// handle: of services/files.h, as OPEN_FILE gives it. It stays open, and is written by nobody else, until
    /// finish().
    explicit OutputBeside(int handle);
    /// Appends; nothing once the disk has refused something. For any one thread at a time.
    void write(std::string_view bytes);
    /// On the calling thread, behind the last write: what the disk has refused stops the run, as WRITE_OR_STOP does.
    void finish() const;

private:
    int handle_;
    std::FILE* stream_;
    int error_ = 0;  ///< errno of the first refusal
};
