#include "services/files.h"

#include "platform/file_system.h"
#include "platform/platform.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/file_names.h"
#include "services/file_table.h"
#include "services/pending_outputs.h"
#include "services/workers.h"

#include "text_utils/paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>
#include <vector>

namespace {

struct FixedSlot {
    bool open = false;
    std::string mode;
    std::string name;
};

struct FileTable {
    std::array<FixedSlot, FIXED_SLOTS + 1> slots;
    std::vector<OpenFile> files;  ///< entry 0 unused
    bool closing = false;         ///< guard: EXITS closes once
    FileQuestions questions;
};
FileTable table;

int lowestFreeHandle() {
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream == nullptr) return static_cast<int>(i);
    if (table.files.size() > static_cast<std::size_t>(MOST_OPEN_FILES)) STOP_AT_ONCE("No free file numbers.");
    table.files.emplace_back();
    return static_cast<int>(table.files.size()) - 1;
}

/// An open file of this name that an output would collide with, or that an input would read half written.
int conflictingHandle(std::string_view name, bool output) {
    const std::string wanted = COMPARABLE_FILE_NAME(name);
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream != nullptr && (output || table.files[i].output) &&
            COMPARABLE_FILE_NAME(table.files[i].name) == wanted)
            return static_cast<int>(i);
    return 0;
}

/// True when the answer to a question that somebody may have set is yes.
bool asked(const std::function<bool(const std::string&)>& question, const std::string& about) {
    return question && question(about);
}

[[noreturn]] void noPermission(const std::string& name, bool output) {
    const std::string folder = NAME_OF(PATH_OF(name).parent_path());
    if (output && KIND_OF_FILE(name) == FileKind::Nothing)
        STOP_RUN("ERROR - No permission to write files into folder " + (folder.empty() ? "." : folder) + " (for " +
                 name + ").");
    STOP_RUN("ERROR - No permission to " + std::string(output ? "write" : "read") + " file " + name + ".");
}

}  // namespace

[[noreturn]] void CANNOT_OPEN(const std::string& name, bool output, int error) {
    if (KIND_OF_FILE(name) == FileKind::Folder) STOP_RUN("ERROR - " + name + " is a folder, not a file.");
    if (error == EACCES || error == EPERM || error == EROFS) noPermission(name, output);
    REPORT("Can't open:");
    REPORT(name);
    REPORT("Another application or user maybe using it,");
    REPORT("or the file's folder does not exist.");
    REPORT("If so, close the file or create file path.");
    STOP_RUN("ERROR - Could not open " + name + ": " + SYSTEM_REASON(error));
}

bool RETRY_LOCKED(const std::string& name) { return asked(table.questions.retryLocked, name); }

namespace {

/// The folder of an output, made when that is wanted.
void createFolderFor(const std::string& name) {
    const std::string folder = NAME_OF(PATH_OF(name).parent_path());
    if (!folder.empty()) CREATE_FOLDER(folder);
}

std::FILE* openInput(const std::string& name) {
    if (KIND_OF_FILE(name) == FileKind::Folder) CANNOT_OPEN(name, false, EISDIR);
    for (;;) {
        errno = 0;
        std::FILE* stream = OPEN_STREAM(name, "rb");
        if (stream != nullptr) return stream;
        const int error = HELD_BY_ANOTHER_PROGRAM(errno) ? EBUSY : errno;
        if (error != EBUSY || !RETRY_LOCKED(name)) CANNOT_OPEN(name, false, error);
    }
}

/// A new format's kind is known by the name that goes with it.
bool knownKind(std::string_view kind, std::string_view name) {
    if (!kind.empty() && FILEEXT(name) == "." + std::string(kind)) return true;
    constexpr std::string_view KINDS[] = {"2dm", "dat", "xmdf", "tab", "wld", "txt", "asc", "flt", "hdr",
                                          "prj", "mif", "mid",  "shp", "shx", "dbf", "cpg", "csv", "wor"};
    return std::find(std::begin(KINDS), std::end(KINDS), kind) != std::end(KINDS);
}

/// The input's name as it exists, under other names where there are any to try.
std::string existingName(std::string name, const std::string& kind) {
    for (;;) {
        if (std::optional<std::string> found = FIND_FILE(name)) return *found;
        if (KIND_OF_FILE(name) == FileKind::Folder) return name;  // refused with its reason when it is opened
        std::string other = table.questions.missingInput ? table.questions.missingInput(name, kind) : std::string{};
        if (other.empty()) STOP_RUN("ERROR - File " + name + " does not exist.");
        name = std::move(other);
    }
}

/// Room for every handle from the start, so that opening a file never moves the lines held of another.
void prepareTable() {
    table.files.reserve(static_cast<std::size_t>(MOST_OPEN_FILES) + 1);
    table.files.resize(1);
}

}  // namespace

OpenFile& OPEN_HANDLE(int handle) {
    if (handle < 1 || static_cast<std::size_t>(handle) >= table.files.size() ||
        table.files[static_cast<std::size_t>(handle)].stream == nullptr)
        STOP_AT_ONCE("Invalid file number - GETNAM");
    return table.files[static_cast<std::size_t>(handle)];
}

bool FLUSH_FILE(OpenFile& file) {
    const std::size_t count = file.end;
    file.end = 0;
    errno = 0;
    if (count == 0 || std::fwrite(file.buffer.data(), 1, count, file.stream) == count) return true;
    file.error = errno;
    return false;
}

std::string SYSTEM_REASON(int error) { return error == 0 ? "unknown reason" : std::generic_category().message(error); }

std::string INCOMPLETE_OUTPUT(const OpenFile& file) {
    return "ERROR - Could not write " + file.name + ": " + SYSTEM_REASON(file.error) + ". The file is incomplete.";
}

void INITIALISE_FILES() {
    ALLOW_MANY_OPEN_FILES();
    for (OpenFile& file : table.files)
        if (file.stream != nullptr) std::fclose(file.stream);
    table = FileTable{};
    prepareTable();
    FORGET_FILE_NAMES();
    FORGET_OUTPUTS();
    OPENER(5, "input", "I ");
    OPENER(6, "output", "F ");
}

void SET_FILE_QUESTIONS(FileQuestions questions) { table.questions = std::move(questions); }

bool CREATE_FOLDER(const std::string& folder) {
    if (KIND_OF_FILE(folder) == FileKind::Folder) return true;
    if (!asked(table.questions.createFolder, folder)) return false;
    const std::error_code error = MAKE_FOLDERS(folder);
    if (!error) return true;
    REPORT("Could not create folder:");
    REPORT(folder);
    REPORT("Check permissions and/or sufficient disk space.");
    STOP_RUN("ERROR - Could not create folder " + folder + ": " + error.message());
}

void OPENER(int slot, std::string_view name, std::string_view mode) {
    if (slot < 1 || slot > FIXED_SLOTS) STOP_AT_ONCE("Incorrect file number - OPENER");
    FixedSlot& entry = table.slots[static_cast<std::size_t>(slot)];
    if (entry.open) STOP_AT_ONCE("File already opened - OPENER");
    entry = {true, std::string(mode), std::string(name)};
}

const std::string& GETNAM(int handle) { return OPEN_HANDLE(handle).name; }

namespace {

/// 0 for an optional output that is left out.
int openFile(std::string_view requested, bool output, std::string_view kind, bool optional) {
    if (table.files.empty()) prepareTable();
    if (requested.find_first_not_of(' ') == std::string_view::npos)
        STOP_RUN("Empty filename specified.  Bailing out.  Please contact " + std::string(SUPPORT_CONTACT));
    if (!knownKind(kind, requested)) STOP_AT_ONCE("Unrecognised file type");
    const std::string name = output ? std::string(requested) : existingName(std::string(requested), std::string(kind));
    if (const int other = conflictingHandle(name, output); other != 0) {
        if (!asked(table.questions.closeOpen, name)) CANNOT_OPEN(name, output, EBUSY);
        CLOSE_FILE(other);
    }
    if (output) createFolderFor(name);
    const int handle = lowestFreeHandle();
    std::FILE* stream = output ? OPEN_OUTPUT_STREAM(name, optional) : openInput(name);
    if (stream == nullptr) return 0;
    std::setvbuf(stream, nullptr, _IONBF, 0);  // the blocks below are the only buffer
    OpenFile& file = table.files[static_cast<std::size_t>(handle)];
    file = OpenFile{};
    file.stream = stream;
    file.name = name;
    file.output = output;
    NOTE_FILE_USED(name);
    return handle;
}

}  // namespace

int OPEN_FILE(std::string_view name, std::string_view mode, std::string_view kind) {
    return openFile(name, mode == "O ", kind, false);
}

int OPEN_COMPANION(std::string_view name, std::string_view kind) { return openFile(name, true, kind, true); }

namespace {

/// finished: else nobody came to the end of it, and it is not kept. False when an output lost anything.
bool closeFile(OpenFile& file, bool finished) {
    if (file.output && file.error == 0) FLUSH_FILE(file);
    errno = 0;
    if (std::fclose(file.stream) != 0) file.error = errno == 0 ? EIO : errno;
    file.stream = nullptr;
    file.buffer = {};
    if (!file.output) return true;
    const int error = OUTPUT_CLOSED(file.name, finished && file.error == 0);
    if (file.error == 0) file.error = error;
    return file.error == 0;
}

}  // namespace

bool TRY_CLOSE_FILE(int handle) { return closeFile(OPEN_HANDLE(handle), true); }

void CLOSE_FILE(int handle) {
    if (TRY_CLOSE_FILE(handle)) return;
    const OpenFile& file = table.files[static_cast<std::size_t>(handle)];
    REPORT("Unable to close file.");
    STOP_RUN(INCOMPLETE_OUTPUT(file));
}

void CLOSE_ALL_FILES() {
    REPORT("Closing all file units...");
    for (std::size_t i = 1; i < table.files.size(); ++i)
        if (table.files[i].stream != nullptr) CLOSE_FILE(static_cast<int>(i));
}

bool CLOSE_FILES_ON_EXIT() {
    if (table.closing) return true;
    table.closing = true;
    END_WORK_AHEAD();
    for (FixedSlot& slot : table.slots) slot.open = false;
    bool allKept = true;
    for (std::size_t i = 1; i < table.files.size(); ++i) {
        OpenFile& file = table.files[i];
        if (file.stream == nullptr) continue;
        const bool alreadySaid = file.error != 0;  // what failed before is why the run ends
        if (closeFile(file, false)) continue;
        allKept = false;
        if (alreadySaid) continue;
        REPORT("Unable to close file.");
        DMESSAGE(INCOMPLETE_OUTPUT(file));
    }
    DISCARD_OUTPUTS();
    return allKept;
}

std::string CANNOT_READ(std::string_view name, std::string_view reason) {
    return "ERROR - Could not read " + std::string(name) + ": " + std::string(reason);
}

std::string LAST_FILE_ERROR(int handle) {
    const bool known = handle >= 1 && static_cast<std::size_t>(handle) < table.files.size();
    return SYSTEM_REASON(known ? table.files[static_cast<std::size_t>(handle)].error : 0);
}

void STOP_UNREADABLE(int handle, std::string_view reason) {
    STOP_RUN(CANNOT_READ(GETNAM(handle), reason.empty() ? LAST_FILE_ERROR(handle) : std::string(reason)));
}
