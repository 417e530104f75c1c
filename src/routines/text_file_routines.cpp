// Reading a text file line by line, for the C interface: a small table of open files of the library's own.
#include "platform/file_system.h"
#include "routines/texts.h"
#include "text_utils/text.h"

#include "vorant_routines.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <mutex>
#include <system_error>

namespace {

constexpr std::size_t MOST_OPEN = 1000;
constexpr std::size_t LONGEST_LINE = 100000;

enum LineStatus : std::int32_t { LINE_READ = 0, END_OF_FILE = -1, READ_ERROR = 1 };

struct TextFile {
    std::FILE* stream = nullptr;
    std::string name;
};

/// The open files, handle 1 in entry 0. The lock is for opening, closing and looking up, not for reading.
struct TextFiles {
    std::mutex lock;
    std::array<TextFile, MOST_OPEN> files;
};
TextFiles& textFiles() {
    static TextFiles table;
    return table;
}

/// The open file of a handle, or null.
TextFile* find(TextFiles& table, std::int32_t handle) {
    if (handle < 1 || static_cast<std::size_t>(handle) > MOST_OPEN) return nullptr;
    TextFile& file = table.files[static_cast<std::size_t>(handle) - 1];
    return file.stream != nullptr ? &file : nullptr;
}

/// A folder opens like a file on some systems, and fails at the first line only.
std::FILE* openForReading(const std::string& name) {
    return KIND_OF_FILE(name) == FileKind::Folder ? nullptr : OPEN_STREAM(name, "rb");
}

std::int32_t open(std::string name) {
    TextFiles& table = textFiles();
    const std::lock_guard guard(table.lock);
    for (std::size_t i = 0; i < MOST_OPEN; ++i) {
        TextFile& file = table.files[i];
        if (file.stream != nullptr) continue;
        file.name = std::move(name);
        file.stream = openForReading(file.name);
        return file.stream != nullptr ? static_cast<std::int32_t>(i) + 1 : 0;
    }
    return 0;
}

LineStatus readLine(TextFile& file, std::string& line) {
    errno = 0;
    std::size_t length = 0;
    int c = std::getc(file.stream);
    for (; c != EOF && c != '\n'; c = std::getc(file.stream))
        if (++length <= LONGEST_LINE) line += static_cast<char>(c);
    if (std::ferror(file.stream) != 0) {
        const std::string reason = std::generic_category().message(errno != 0 ? errno : EIO);
        std::fprintf(stderr, "ERROR - Could not read %s: %s\n", file.name.c_str(), reason.c_str());
        return READ_ERROR;
    }
    if (c == EOF && length == 0) return END_OF_FILE;
    if (length <= LONGEST_LINE && line.ends_with('\r')) line.pop_back();
    line.erase(0, std::min(line.find_first_not_of(" \t"), line.size()));
    return LINE_READ;
}

}  // namespace

std::int32_t OPENTEXT(const char* name, const std::int32_t* length) {
    try {
        return open(std::string(TRIMMED(textAt(name, length))));
    } catch (...) {
        return 0;
    }
}

std::int32_t CLOSETEXT(const std::int32_t* handle) {
    return guardedTruth([&] {
        TextFiles& table = textFiles();
        const std::lock_guard guard(table.lock);
        TextFile* file = find(table, at(handle));
        if (file == nullptr) return false;
        std::fclose(file->stream);  // nothing was written
        *file = {};
        return true;
    });
}

std::int32_t READLINE(const std::int32_t* handle, char* line, const std::int32_t* length) {
    LineStatus status = READ_ERROR;
    result(line, length, [&] {
        TextFiles& table = textFiles();
        TextFile* file = nullptr;
        {
            const std::lock_guard guard(table.lock);
            file = find(table, at(handle));
        }
        std::string text;
        if (file != nullptr) status = readLine(*file, text);
        return status == LINE_READ ? text : std::string{};
    });
    return status;
}
