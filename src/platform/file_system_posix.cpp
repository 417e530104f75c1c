#include "platform/file_system.h"

#include <sys/stat.h>

#include <algorithm>

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

std::int64_t STREAM_LENGTH(std::FILE* stream) {
    struct stat facts {};
    return fstat(fileno(stream), &facts) == 0 && S_ISREG(facts.st_mode) ? facts.st_size : 0;
}

std::error_code MAKE_FOLDERS(std::string_view name) {
    std::error_code error;
    fs::create_directories(name, error);
    return error;
}

std::vector<std::string> NAMES_IN_FOLDER(std::string_view folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        names.push_back(it->path().filename().string());
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
