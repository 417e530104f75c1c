// Files and folders by name. Names are UTF-8 on every system; on Windows they may be longer than 260 characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// The two ways between names and paths: the constructors of std::filesystem::path, and its string(), take another
/// code page than UTF-8 on Windows.
std::filesystem::path PATH_OF(std::string_view name);
std::string NAME_OF(const std::filesystem::path& path);

enum class FileKind : std::uint8_t { Nothing, File, Folder };

/// Nothing when there is none of that name, or when the system does not tell; a device counts as a file.
FileKind KIND_OF_FILE(std::string_view name);
/// As std::fopen: null, with errno set, when the file cannot be opened.
std::FILE* OPEN_STREAM(std::string_view name, const char* mode);
/// The same for writing and reading back, of a file that must not exist yet. It can be removed while it is open.
std::FILE* CREATE_STREAM(std::string_view name);
/// Bytes of an open file; 0 of what has no length, such as a pipe.
std::int64_t STREAM_LENGTH(std::FILE* stream);
/// True of what is neither file nor folder: a pipe, a terminal, the null device.
bool IS_DEVICE(std::string_view name);
/// Where a link to a file leads, which need not exist; the name itself when it is none. Blank when that has no name of
/// its own to put another file under: the files that a shell opened for this process, and a ring of links.
std::string LINK_TARGET(std::string_view name);
/// Moves a file or a folder within its disk, over a file of that name. 0, else errno; EBUSY when another program holds
/// one of them. Takes no memory where the system takes names as they are.
int MOVE_FILE(const std::string& from, const std::string& to) noexcept;
/// Removes a file, or a folder with everything in it, when it is there. False when it stays.
bool REMOVE_TREE(const std::string& name);
/// Gives a file the permissions of another, where the disk knows any.
void TAKE_OVER_PERMISSIONS(const std::string& from, const std::string& to);
constexpr std::size_t SHORTEST_NAME_LIMIT = 140;  ///< bytes; every disk takes a name of these
/// Bytes that a name in the folder can have (blank: the current one).
std::size_t LONGEST_NAME_IN(const std::string& folder);
/// Makes a folder and those above it that are missing. No error when it is there already.
std::error_code MAKE_FOLDERS(std::string_view name);
/// The names of what stands in a folder, in no order; none when it cannot be read.
std::vector<std::string> NAMES_IN_FOLDER(std::string_view folder);

/// The absolute form of a name, without "." and "..".
std::string ABSOLUTE_NAME(std::string_view name);
/// Equal for two names of one file, which need not exist: links are followed, "/" stands between the parts, and letter
/// case is folded as the disk folds it. Elsewhere than on Windows disks differ in that, and A to Z are folded.
std::string COMPARABLE_FILE_NAME(std::string_view name);
/// The name to give to a library that opens files by UTF-8 names itself.
std::string NAME_FOR_LIBRARY(std::string_view name);

/// Raises the number of files that may be open at once to that of the file service's handles.
void ALLOW_MANY_OPEN_FILES();
