#include "services/files.h"

#include "platform/file_system.h"
#include "platform/platform.h"
#include "platform/processors.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/file_table.h"
#include "services/input_beside.h"
#include "services/output_beside.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

/// Refills an input's empty buffer. False at the end of the file or after an error.
bool fillBuffer(OpenFile& file) {
    if (file.atEnd) return false;
    file.buffer.resize(FILE_BLOCK_SIZE);
    file.next = 0;
    errno = 0;
    file.end = std::fread(file.buffer.data(), 1, FILE_BLOCK_SIZE, file.stream);
    if (file.end < FILE_BLOCK_SIZE) {
        file.atEnd = true;
        if (std::ferror(file.stream) != 0) file.error = errno == 0 ? EIO : errno;
    }
    return file.end > 0;
}

/// Where the caller thinks the stream stands: without what was read ahead, with what is not yet written.
std::int64_t position(const OpenFile& file) {
    const std::int64_t streamAt = TELL_64(file.stream);
    return file.output ? streamAt + static_cast<std::int64_t>(file.end)
                       : streamAt - static_cast<std::int64_t>(file.end - file.next);
}

/// An output holds unwritten bytes in its buffer, so reading back goes straight to the file.
std::int64_t readBack(OpenFile& file, void* to, std::size_t count) {
    if (!FLUSH_FILE(file)) return -1;
    const std::int64_t at = TELL_64(file.stream);
    errno = 0;
    bool good = at >= 0 && SEEK_64(file.stream, at);  // C wants a move between writing and reading, both ways
    const std::size_t got = good ? std::fread(to, 1, count, file.stream) : 0;
    good = good && std::ferror(file.stream) == 0 && SEEK_64(file.stream, at + static_cast<std::int64_t>(got));
    if (good) return static_cast<std::int64_t>(got);
    file.error = errno == 0 ? EIO : errno;
    return -1;
}

}  // namespace

LineStatus READ_LINE(int handle, std::string_view& line) {
    OpenFile& file = OPEN_HANDLE(handle);
    file.lineCut.clear();
    bool spans = false;
    for (;;) {
        if (file.next == file.end && !fillBuffer(file)) break;
        const char* start = file.buffer.data() + file.next;
        const std::size_t left = file.end - file.next;
        const auto* lineEnd = static_cast<const char*>(std::memchr(start, '\n', left));
        const std::size_t length = lineEnd != nullptr ? static_cast<std::size_t>(lineEnd - start) : left;
        file.next += lineEnd != nullptr ? length + 1 : length;
        if (lineEnd != nullptr && !spans) {
            line = {start, std::min(length, LONGEST_LINE)};
        } else {
            spans = true;
            file.lineCut.append(start, std::min(length, LONGEST_LINE - file.lineCut.size()));
            line = file.lineCut;
        }
        if (lineEnd == nullptr) continue;
        if (line.ends_with('\r')) line.remove_suffix(1);
        return LineStatus::Read;
    }
    if (file.error != 0) {
        DMESSAGE(CANNOT_READ(file.name, SYSTEM_REASON(file.error)));
        return LineStatus::Error;
    }
    if (!spans) return LineStatus::EndOfFile;
    if (line.ends_with('\r')) line.remove_suffix(1);
    return LineStatus::Read;
}

LineStatus READLINE(int handle, std::string& line) {
    std::string_view view;
    const LineStatus status = READ_LINE(handle, view);
    line.clear();
    if (status != LineStatus::Read) return status;
    const std::size_t first = view.find_first_not_of(" \t");
    if (first != std::string_view::npos) line = view.substr(first);
    return status;
}

std::int64_t READ_BYTES(int handle, void* to, std::size_t count) {
    OpenFile& file = OPEN_HANDLE(handle);
    if (file.output) return readBack(file, to, count);
    auto* out = static_cast<char*>(to);
    std::size_t done = std::min(count, file.end - file.next);
    if (done > 0) std::memcpy(out, file.buffer.data() + file.next, done);
    file.next += done;
    while (done < count && !file.atEnd) {
        const std::size_t wanted = count - done;
        if (wanted >= FILE_BLOCK_SIZE) {  // large tables go straight to the caller
            errno = 0;
            const std::size_t got = std::fread(out + done, 1, wanted, file.stream);
            done += got;
            if (got == wanted) break;
            file.atEnd = true;
            if (std::ferror(file.stream) != 0) file.error = errno == 0 ? EIO : errno;
        } else if (fillBuffer(file)) {
            const std::size_t part = std::min(wanted, file.end);
            std::memcpy(out + done, file.buffer.data(), part);
            file.next = part;
            done += part;
        }
    }
    return file.error != 0 ? -1 : static_cast<std::int64_t>(done);
}

bool READ_AT(int handle, std::int64_t offset, void* to, std::size_t count) {
    return READ_FROM(OPEN_HANDLE(handle).stream, offset, to, count);
}

InputBeside::InputBeside(int handle) : stream_(OPEN_HANDLE(handle).stream) {}

bool InputBeside::read(std::int64_t offset, void* to, std::size_t count) const {
    return READ_FROM(stream_, offset, to, count);
}

OutputBeside::OutputBeside(int handle) : handle_(handle), stream_(OPEN_HANDLE(handle).stream) {
    if (!FLUSH_FILE(OPEN_HANDLE(handle))) STOP_RUN(INCOMPLETE_OUTPUT(OPEN_HANDLE(handle)));
}

void OutputBeside::write(std::string_view bytes) {
    if (error_ != 0) return;
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream_) != bytes.size()) error_ = errno == 0 ? EIO : errno;
}

void OutputBeside::finish() const {
    if (error_ == 0) return;
    OPEN_HANDLE(handle_).error = error_;
    STOP_RUN(INCOMPLETE_OUTPUT(OPEN_HANDLE(handle_)));
}

std::int64_t FILE_LENGTH(int handle) { return STREAM_LENGTH(OPEN_HANDLE(handle).stream); }

std::int64_t FILE_POSITION(int handle) { return position(OPEN_HANDLE(handle)); }

bool SEEK_FILE(int handle, std::int64_t offset) {
    OpenFile& file = OPEN_HANDLE(handle);
    if (file.output) {
        if (!FLUSH_FILE(file)) return false;
    } else {
        // A short step ahead stays in the block already read.
        const std::int64_t ahead = offset - position(file);
        if (ahead >= 0 && ahead <= static_cast<std::int64_t>(file.end - file.next)) {
            file.next += static_cast<std::size_t>(ahead);
            return true;
        }
        file.next = file.end = 0;
        file.atEnd = false;
        std::clearerr(file.stream);
    }
    errno = 0;
    if (offset >= 0 && SEEK_64(file.stream, offset)) return true;
    file.error = errno;
    return false;
}

bool WRITE_BYTES(int handle, std::string_view bytes) {
    OpenFile& file = OPEN_HANDLE(handle);
    if (file.buffer.empty()) file.buffer.resize(FILE_BLOCK_SIZE);
    if (file.end + bytes.size() > FILE_BLOCK_SIZE && !FLUSH_FILE(file)) return false;
    if (bytes.size() >= FILE_BLOCK_SIZE) {
        errno = 0;
        if (std::fwrite(bytes.data(), 1, bytes.size(), file.stream) == bytes.size()) return true;
        file.error = errno;
        return false;
    }
    std::copy(bytes.begin(), bytes.end(), file.buffer.begin() + static_cast<std::ptrdiff_t>(file.end));
    file.end += bytes.size();
    return true;
}

void WRITE_OR_STOP(int handle, std::string_view bytes) {
    if (WRITE_BYTES(handle, bytes)) return;
    STOP_RUN(INCOMPLETE_OUTPUT(OPEN_HANDLE(handle)));
}
