// An open input for other threads, while the calling one opens and closes others; it has to stay open as long.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

class InputBeside {
public:
    /// handle: of services/files.h, as OPEN_FILE gives it.
    explicit InputBeside(int handle);
    /// Bytes from `offset` on, wherever the file stands. False when they are not all there or cannot be read.
    [[nodiscard]] bool read(std::int64_t offset, void* to, std::size_t count) const;

private:
    std::FILE* stream_;
};
