#include "run_control/files.h"

#include "platform/platform.h"
#include "run_control/console.h"
#include "run_control/exits.h"
#include "run_control/file_names.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

namespace {

constexpr std::size_t BLOCK_SIZE = 1U << 18;

struct FixedSlot {
    bool open = false;
    std::string mode;
    std::string name;
};

/// One general handle. Input: `buffer` holds bytes of the file from `next` to `end`. Output: `buffer` holds bytes not yet written.
struct OpenFile {
    std::FILE* stream = nullptr;
    std::string name;
    bool output = false;
    bool atEnd = false;       ///< the system has no more bytes
    std::vector<char> buffer;
    std::size_t next = 0;
    std::size_t end = 0;
    std::string lineCut;      ///< a line that spans blocks
    int error = 0;            ///< errno of the last failure
};

struct FileTable {
    std::array<FixedSlot, FIXED_SLOTS + 1> slots;
    std::vector<OpenFile> files;  ///< entry 0 unused
    bool closing = false;         ///< guard: EXITS closes once
};
FileTable table;

OpenFile& fileOf(int handle) {
    if (handle < 1 || static_cast<std::size_t>(handle) >= table.files.size() || table.files[static_cast<std::size_t>(handle)].stream == nullptr)
        STOP_AT_ONCE("Invalid file number - GETNAM");
    return table.files[static_cast<std::size_t>(handle)];
}

std::string reason(int error) { return error == 0 ? "unknown reason" : std::generic_category().message(error); }

int lowestFreeHandle() {
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream == nullptr) return static_cast<int>(i);
    if (table.files.size() > static_cast<std::size_t>(MOST_OPEN_FILES)) STOP_AT_ONCE("No free file numbers.");
    table.files.emplace_back();
    return static_cast<int>(table.files.size()) - 1;
}

/// Writes the buffered bytes; false when the disk refuses them.
bool flushBuffer(OpenFile& file) {
    const std::size_t count = file.end;
    file.end = 0;
    errno = 0;
    if (count == 0 || std::fwrite(file.buffer.data(), 1, count, file.stream) == count) return true;
    file.error = errno;
    return false;
}

/// Refills an input's empty buffer. False at the end of the file or after an error.
bool fillBuffer(OpenFile& file) {
    if (file.atEnd) return false;
    file.buffer.resize(BLOCK_SIZE);
    file.next = 0;
    errno = 0;
    file.end = std::fread(file.buffer.data(), 1, BLOCK_SIZE, file.stream);
    if (file.end < BLOCK_SIZE) {
        file.atEnd = true;
        if (std::ferror(file.stream) != 0) file.error = errno == 0 ? EIO : errno;
    }
    return file.end > 0;
}

/// An open file of this name that an output would collide with, or that an input would read half written.
int conflictingHandle(std::string_view name, bool output) {
    const std::string wanted = COMPARABLE_NAME(name);
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream != nullptr && (output || table.files[i].output) && COMPARABLE_NAME(table.files[i].name) == wanted)
            return static_cast<int>(i);
    return 0;
}

void createFolderFor(const std::string& name) {
    const std::filesystem::path folder = std::filesystem::path(name).parent_path();
    std::error_code error;
    if (folder.empty() || std::filesystem::exists(folder, error)) return;
    REPORT(folder.string());
    REPORT("Above folder does not exist!  Create?");
    REPORT("Either create the folder yourself and press No,");
    if (!ASK_YES("or press Yes to have the folder created for you.")) return;
    std::filesystem::create_directories(folder, error);
    if (!error) return;
    REPORT("Could not create folder:");
    REPORT(folder.string());
    REPORT("Check permissions and/or sufficient disk space.");
    STOP_RUN("ERROR - Could not create folder " + folder.string() + ": " + error.message());
}

[[noreturn]] void cannotOpen(const std::string& name, int error) {
    REPORT("Can't open:");
    REPORT(name);
    REPORT("Another application or user maybe using it,");
    REPORT("or the file's folder does not exist.");
    REPORT("If so, close the file or create file path.");
    STOP_RUN("ERROR - Could not open " + name + ": " + reason(error));
}

/// Asks whether to try a locked file again; without a person to ask the answer is no.
bool retryLocked(const std::string& name, int error) {
    if ((error != EACCES && error != EBUSY) || !INPUT_IS_TERMINAL()) return false;
    REPORT(name);
    REPORT("Above file is locked by another application.");
    REPORT("Close the file in the other application and press Retry.");
    const std::string answer = ASK("Retry (y/n)? ");
    return !answer.empty() && (answer[0] == 'y' || answer[0] == 'Y' || answer[0] == 'r' || answer[0] == 'R');
}

std::FILE* openStream(const std::string& name, bool output) {
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) cannotOpen(name, EISDIR);
    for (;;) {
        errno = 0;
        std::FILE* stream = std::fopen(name.c_str(), output ? "w+b" : "rb");
        if (stream != nullptr) return stream;
        const int error = errno;
        if (!retryLocked(name, error)) cannotOpen(name, error);
    }
}

bool knownKind(std::string_view kind) {
    constexpr std::string_view KINDS[] = {"2dm", "dat", "xmdf", "tab", "wld", "txt", "asc", "flt", "hdr", "prj", "mif", "mid",
                                          "shp", "shx", "dbf",  "cpg", "csv", "wor"};
    return std::find(std::begin(KINDS), std::end(KINDS), kind) != std::end(KINDS);
}

/// The input's name as it exists, asking until one does.
std::string existingName(std::string name, std::string_view kind) {
    for (;;) {
        if (std::optional<std::string> found = FIND_FILE(name)) return *found;
        std::error_code ignored;
        if (std::filesystem::is_directory(name, ignored)) return name;  // refused with its reason when it is opened
        REPORT("FILE and/or path " + name + " does not exist.");
        name = ASK("What is the " + std::string(kind) + " file name? ");
    }
}

/// Puts back what was read ahead, so that the stream stands where the caller thinks it does.
std::int64_t position(const OpenFile& file) {
    const std::int64_t streamAt = TELL_64(file.stream);
    return file.output ? streamAt + static_cast<std::int64_t>(file.end) : streamAt - static_cast<std::int64_t>(file.end - file.next);
}

}  // namespace

void INITIALISE_FILES() {
    for (OpenFile& file : table.files)
        if (file.stream != nullptr) std::fclose(file.stream);
    table = FileTable{};
    table.files.resize(1);
    FORGET_FILE_NAMES();
    OPENER(5, "input", "I ");
    OPENER(6, "output", "F ");
}

void OPENER(int slot, std::string_view name, std::string_view mode) {
    if (slot < 1 || slot > FIXED_SLOTS) STOP_AT_ONCE("Incorrect file number - OPENER");
    FixedSlot& entry = table.slots[static_cast<std::size_t>(slot)];
    if (entry.open) STOP_AT_ONCE("File already opened - OPENER");
    entry = {true, std::string(mode), std::string(name)};
}

const std::string& GETNAM(int handle) { return fileOf(handle).name; }

int OPEN_FILE(std::string_view requested, std::string_view mode, std::string_view kind) {
    if (table.files.empty()) table.files.resize(1);
    if (requested.empty()) STOP_RUN("Empty filename specified.  Bailing out.  Please contact " + std::string(SUPPORT_CONTACT));
    if (!knownKind(kind)) STOP_AT_ONCE("Unrecognised file type");
    const bool output = mode == "O ";
    const std::string name = output ? std::string(requested) : existingName(std::string(requested), kind);
    if (const int other = conflictingHandle(name, output); other != 0) {
        if (!ASK_YES(name + " is already open.  Close it?")) cannotOpen(name, EBUSY);
        CLOSE_FILE(other);
    }
    if (output) createFolderFor(name);
    const int handle = lowestFreeHandle();
    std::FILE* stream = openStream(name, output);
    std::setvbuf(stream, nullptr, _IONBF, 0);  // the blocks below are the only buffer
    OpenFile& file = table.files[static_cast<std::size_t>(handle)];
    file = OpenFile{};
    file.stream = stream;
    file.name = name;
    file.output = output;
    NOTE_FILE_USED(name);
    return handle;
}

bool TRY_CLOSE_FILE(int handle) {
    OpenFile& file = fileOf(handle);
    const bool written = !file.output || flushBuffer(file);
    errno = 0;
    const bool closed = std::fclose(file.stream) == 0;
    if (!closed) file.error = errno;
    file.stream = nullptr;
    file.buffer = {};
    return written && closed;
}

void CLOSE_FILE(int handle) {
    if (TRY_CLOSE_FILE(handle)) return;
    const OpenFile& file = table.files[static_cast<std::size_t>(handle)];
    REPORT("Unable to close file.");
    STOP_RUN("ERROR - Could not write " + file.name + ": " + reason(file.error) + ". The file is incomplete.");
}

void CLOSE_ALL_FILES() {
    REPORT("Closing all file units...");
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream != nullptr) CLOSE_FILE(static_cast<int>(i));
}

void CLOSE_FILES_ON_EXIT() {
    if (table.closing) return;
    table.closing = true;
    for (FixedSlot& slot : table.slots) slot.open = false;
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream != nullptr && !TRY_CLOSE_FILE(static_cast<int>(i))) {
            REPORT("Unable to close file.");
            DMESSAGE("ERROR - Could not write " + table.files[i].name + ": " + reason(table.files[i].error) + ". The file is incomplete.");
        }
}

LineStatus READ_LINE(int handle, std::string_view& line) {
    OpenFile& file = fileOf(handle);
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
        DMESSAGE("ERROR - Could not read " + file.name + ": " + reason(file.error));
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
    OpenFile& file = fileOf(handle);
    auto* out = static_cast<char*>(to);
    std::size_t done = std::min(count, file.end - file.next);
    if (done > 0) std::memcpy(out, file.buffer.data() + file.next, done);
    file.next += done;
    while (done < count && !file.atEnd) {
        const std::size_t wanted = count - done;
        if (wanted >= BLOCK_SIZE) {  // large tables go straight to the caller
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

std::int64_t FILE_LENGTH(int handle) {
    std::error_code error;
    const auto length = std::filesystem::file_size(fileOf(handle).name, error);
    return error ? 0 : static_cast<std::int64_t>(length);
}

std::int64_t FILE_POSITION(int handle) { return position(fileOf(handle)); }

bool SEEK_FILE(int handle, std::int64_t offset) {
    OpenFile& file = fileOf(handle);
    if (file.output) {
        if (!flushBuffer(file)) return false;
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
    OpenFile& file = fileOf(handle);
    if (file.buffer.empty()) file.buffer.resize(BLOCK_SIZE);
    if (file.end + bytes.size() > BLOCK_SIZE && !flushBuffer(file)) return false;
    if (bytes.size() >= BLOCK_SIZE) {
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
    STOP_RUN("ERROR - Could not write " + GETNAM(handle) + ": " + LAST_FILE_ERROR(handle) + ". The file is incomplete.");
}

std::string LAST_FILE_ERROR(int handle) {
    const bool known = handle >= 1 && static_cast<std::size_t>(handle) < table.files.size();
    return reason(known ? table.files[static_cast<std::size_t>(handle)].error : 0);
}
