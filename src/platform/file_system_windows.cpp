#include "platform/file_system.h"
#include "platform/wide_text.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>

namespace {

/// errno for the system's reason.
int reasonOf(DWORD reason) {
    switch (reason) {
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION: return EBUSY;
        case ERROR_ACCESS_DENIED: return EACCES;
        case ERROR_WRITE_PROTECT: return EROFS;
        case ERROR_DISK_FULL: return ENOSPC;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND: return ENOENT;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS: return EEXIST;
        default: return EIO;
    }
}

/// Where an existing file or folder really stands; blank when it cannot be opened.
std::wstring finalName(std::string_view name) {
    const HANDLE file =
        CreateFileW(SYSTEM_NAME(name).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::wstring final(32768, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file, final.data(), static_cast<DWORD>(final.size()), 0);
    CloseHandle(file);
    final.resize(length < final.size() ? length : 0);
    return final;
}

}  // namespace

std::filesystem::path PATH_OF(std::string_view name) { return {WIDE_TEXT(name)}; }
std::string NAME_OF(const std::filesystem::path& path) { return NARROW_TEXT(path.native()); }

FileKind KIND_OF_FILE(std::string_view name) {
    const DWORD attributes = GetFileAttributesW(SYSTEM_NAME(name).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::Nothing;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::Folder : FileKind::File;
}

std::FILE* OPEN_STREAM(std::string_view name, const char* mode) {
    return _wfopen(SYSTEM_NAME(name).c_str(), WIDE_TEXT(mode).c_str());
}

std::FILE* CREATE_STREAM(std::string_view name) {
    const HANDLE file =
        CreateFileW(SYSTEM_NAME(name).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                    FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        errno = reasonOf(GetLastError());
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_RDWR | _O_BINARY);
    std::FILE* const stream = descriptor >= 0 ? _fdopen(descriptor, "w+b") : nullptr;
    if (stream == nullptr) CloseHandle(file);
    return stream;
}

std::int64_t STREAM_LENGTH(std::FILE* stream) { return std::max<std::int64_t>(_filelengthi64(_fileno(stream)), 0); }

bool IS_DEVICE(std::string_view name) {
    const HANDLE file = CreateFileW(SYSTEM_NAME(name).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool device = GetFileType(file) != FILE_TYPE_DISK;
    CloseHandle(file);
    return device;
}

std::string LINK_TARGET(std::string_view name) {
    const DWORD attributes = GetFileAttributesW(SYSTEM_NAME(name).c_str());
    const bool link = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    const std::wstring target = link ? finalName(name) : std::wstring{};
    return target.empty() ? std::string(name) : NARROW_TEXT(target);
}

int MOVE_FILE(const std::string& from, const std::string& to) noexcept {
    constexpr DWORD HOW = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (MoveFileExW(SYSTEM_NAME(from).c_str(), SYSTEM_NAME(to).c_str(), HOW) != 0) return 0;
    const DWORD reason = GetLastError();
    // Over a file that another program holds, the system tells of a refused access.
    const bool held = reason == ERROR_ACCESS_DENIED && KIND_OF_FILE(to) == FileKind::File;
    return held ? EBUSY : reasonOf(reason);
}

bool REMOVE_TREE(const std::string& name) {
    if (DeleteFileW(SYSTEM_NAME(name).c_str()) != 0 || GetLastError() == ERROR_FILE_NOT_FOUND) return true;
    std::error_code error;
    std::filesystem::remove_all(PATH_OF(name), error);
    return !error;
}

void TAKE_OVER_PERMISSIONS(const std::string&, const std::string&) {}  // those of the folder hold
std::size_t LONGEST_NAME_IN(const std::string&) { return 255; }

std::error_code MAKE_FOLDERS(std::string_view name) {
    const FileKind kind = KIND_OF_FILE(name);
    if (kind == FileKind::Folder) return {};
    if (kind == FileKind::File) return std::make_error_code(std::errc::not_a_directory);
    const std::filesystem::path parent = PATH_OF(name).parent_path();
    if (!parent.empty() && parent != PATH_OF(name))
        if (const std::error_code error = MAKE_FOLDERS(NAME_OF(parent))) return error;
    if (CreateDirectoryW(SYSTEM_NAME(name).c_str(), nullptr) != 0) return {};
    const DWORD reason = GetLastError();
    if (KIND_OF_FILE(name) == FileKind::Folder) return {};  // the name ends in a separator, or another run was faster
    return {static_cast<int>(reason), std::system_category()};
}

std::vector<std::string> NAMES_IN_FOLDER(std::string_view folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(SYSTEM_NAME(NAME_OF(PATH_OF(folder) / L"*")).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L"..") names.push_back(NARROW_TEXT(name));
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
    return names;
}

std::string ABSOLUTE_NAME(std::string_view name) { return NARROW_TEXT(FULL_NAME(WIDE_TEXT(name))); }

std::string COMPARABLE_FILE_NAME(std::string_view name) {
    // What exists of the name is asked of the disk; what does not follows as it was given.
    std::filesystem::path head = PATH_OF(ABSOLUTE_NAME(name));
    std::filesystem::path tail;
    std::wstring found = finalName(NAME_OF(head));
    while (found.empty() && head.has_relative_path()) {
        tail = tail.empty() ? head.filename() : head.filename() / tail;
        head = head.parent_path();
        found = finalName(NAME_OF(head));
    }
    std::filesystem::path whole = found.empty() ? head : std::filesystem::path(found);
    if (!tail.empty()) whole /= tail;
    std::wstring folded = whole.native();
    CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    std::replace(folded.begin(), folded.end(), L'\\', L'/');
    return NARROW_TEXT(folded);
}

std::string NAME_FOR_LIBRARY(std::string_view name) { return NARROW_TEXT(SYSTEM_NAME(name)); }

void ALLOW_MANY_OPEN_FILES() { _setmaxstdio(2048); }  // 512 before; more is refused
