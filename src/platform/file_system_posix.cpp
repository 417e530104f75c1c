#include "platform/file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace fs = std::filesystem;

fs::path PATH_OF(std::string_view name) { return {name}; }
std::string NAME_OF(const fs::path& path) { return path.string(); }

FileKind KIND_OF_FILE(std::string_view name) {
    std::error_code error;
    const fs::file_status status = fs::status(name, error);
    if (error || !fs::exists(status)) return FileKind::Nothing;
    return fs::is_directory(status) ? FileKind::Folder : FileKind::File;
}

std::FILE* OPEN_STREAM(std::string_view name, const char* mode) { return std::fopen(std::string(name).c_str(), mode); }

std::FILE* CREATE_STREAM(std::string_view name) {
    const int file = open(std::string(name).c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return nullptr;
    std::FILE* const stream = fdopen(file, "w+b");
    if (stream != nullptr) return stream;
    const int error = errno;
    close(file);
    unlink(std::string(name).c_str());
    errno = error;
    return nullptr;
}

std::int64_t STREAM_LENGTH(std::FILE* stream) {
    struct stat facts {};
    return fstat(fileno(stream), &facts) == 0 && S_ISREG(facts.st_mode) ? facts.st_size : 0;
}

bool IS_DEVICE(std::string_view name) {
    std::error_code error;
    const fs::file_status status = fs::status(name, error);
    return !error && fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

std::string LINK_TARGET(std::string_view name) {
    constexpr int MOST_LINKS = 40;  // as the system; a longer chain is a ring
    fs::path path = name;
    for (int i = 0; i < MOST_LINKS; ++i) {
        const std::string& text = path.native();
        if (text.starts_with("/proc/") || text.starts_with("/dev/fd/")) return {};
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error) return text;
        path = path.parent_path() / target;
    }
    return {};
}

int MOVE_FILE(const std::string& from, const std::string& to) noexcept {
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

bool REMOVE_TREE(const std::string& name) {
    if (unlink(name.c_str()) == 0 || errno == ENOENT) return true;
    std::error_code error;
    fs::remove_all(name, error);
    return !error;
}

void TAKE_OVER_PERMISSIONS(const std::string& from, const std::string& to) {
    struct stat facts {};
    // A disk that knows no permissions refuses, and needs none.
    if (stat(from.c_str(), &facts) == 0 && chmod(to.c_str(), facts.st_mode & 07777U) != 0) errno = 0;
}

std::size_t LONGEST_NAME_IN(const std::string& folder) {
    const long longest = pathconf(folder.empty() ? "." : folder.c_str(), _PC_NAME_MAX);
    return longest > 0 ? static_cast<std::size_t>(longest) : 255;
}

std::error_code MAKE_FOLDERS(std::string_view name) {
    std::error_code error;
    fs::create_directories(name, error);
    return error;
}

std::vector<std::string> NAMES_IN_FOLDER(std::string_view folder) {
    // The standard library's iterator ends the process when there is no memory.
    struct Close {
        void operator()(DIR* open) const { closedir(open); }
    };
    std::vector<std::string> names;
    const std::unique_ptr<DIR, Close> open(opendir(std::string(folder).c_str()));
    while (const dirent* const entry = open ? readdir(open.get()) : nullptr) {
        const std::string_view name = static_cast<const char*>(entry->d_name);
        if (name != "." && name != "..") names.emplace_back(name);
    }
    return names;
}

std::string ABSOLUTE_NAME(std::string_view name) {
    std::error_code error;
    const fs::path absolute = fs::absolute(name, error);
    return error ? std::string(name) : absolute.lexically_normal().string();
}

std::string COMPARABLE_FILE_NAME(std::string_view name) {
    std::error_code error;
    fs::path path = fs::weakly_canonical(name, error);
    if (error || path.empty()) path = name;
    if (!path.is_absolute()) path = fs::absolute(path, error);
    std::string text = path.generic_string();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

std::string NAME_FOR_LIBRARY(std::string_view name) { return std::string(name); }

void ALLOW_MANY_OPEN_FILES() {}
