// The file service: every file of the run is opened here by name and used through a small integer handle.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

constexpr int FIXED_SLOTS = 8;         ///< files kept open for the whole run; 5 is the console input, 6 its output
constexpr int MOST_OPEN_FILES = 1000;  ///< general handles, numbered from 1
constexpr std::size_t LONGEST_LINE = 100000;  ///< characters; what a longer line holds behind them is skipped

enum class LineStatus : std::uint8_t { Read, EndOfFile, Error };

/// How a library makes its file: only where there is none, or over one too.
enum class LibraryMakes : std::uint8_t { Anew, OverOld };

/// What to do where opening a file meets something that a person can clear away. Set by whoever talks to that person;
/// the answer of one that is not set is no.
struct FileQuestions {
    /// Another name for an input that does not exist; blank: none.
    std::function<std::string(const std::string& name, const std::string& kind)> missingInput;
    std::function<bool(const std::string& folder)> createFolder;  ///< for an output
    std::function<bool(const std::string& name)> retryLocked;     ///< another program holds the file
    std::function<bool(const std::string& name)> closeOpen;       ///< the run itself has it open
};

/// Forgets every open file, every name, the count of outputs and the questions: the start of a run and of a test. Opens
/// the two console slots.
void INITIALISE_FILES();
void SET_FILE_QUESTIONS(FileQuestions questions);

// ---- names ----
/// The name under which a file exists: as given, else with "\" read as "/" (off Windows), else the one file of its
/// folder that differs in letter case only. Nothing when there is none. A folder is not a file.
std::optional<std::string> FIND_FILE(std::string_view name);
/// True when this run has already opened the file, for reading or for writing. Letter case is ignored and the path is
/// made absolute, so that an output can never replace an input or an earlier output.
bool NAME_IN_USE(std::string_view name);
/// Counts a file that was read by other means (a library of its own) as used.
void NOTE_FILE_USED(std::string_view name);

// ---- outputs: a file or a set of files, said under the name of the main one ----
// An output is written under other names, beside its place, and stands there when all of it is whole. What is written
// outside of a set stands there when it is closed. When the run stops, what does not stand there yet is removed.
/// Before anything is written: "Check - Replacing <name>." when the file exists and this run has not written it. The
/// set takes every file of that name with another extension; several can be under way.
void BEGIN_OUTPUT(std::string_view name);
/// When everything is written and closed: moves the set to its place and says "Wrote <name>". Counted. A file that
/// cannot be moved stops the run, with the earlier set as it was.
void FINISH_OUTPUT(std::string_view name);
int OUTPUTS_WRITTEN();
/// Where a library that writes a file itself (HDF5, GDAL) puts what is to stand under `finalName`: a name in the same
/// folder, with the same extension. To be asked between BEGIN_OUTPUT and FINISH_OUTPUT of the output, for the main file
/// and for each companion alike; FINISH_OUTPUT moves what stands there to its final name, and a stop removes it.
/// Everybody else opens files by their final names. A pipe or a device stops the run, and so does a folder that takes
/// no new file where the library makes its file anew.
std::string WORKING_NAME(std::string_view finalName, LibraryMakes makes);
/// The first of these, long before the work: libraries go to and fro in a file.
void REFUSE_PIPE(const std::string& finalName);

// ---- opening and closing ----
/// Opens fixed slot 1 to 8. A slot above 8 or already open is a fault of the program and stops the run at once.
void OPENER(int slot, std::string_view name, std::string_view mode);
/// Name held by a general handle; an invalid handle stops the run at once.
const std::string& GETNAM(int handle);

/// True when the folder exists, or has been made because the answer to FileQuestions::createFolder is yes. One that
/// cannot be made stops the run.
bool CREATE_FOLDER(const std::string& folder);
/// Stops the run when the folder takes no new file.
void CHECK_FOLDER_TAKES_FILES(const std::string& folder);
/// Opens a file and returns the lowest free handle. mode: "I " reads (the bytes as they are), "O " creates or replaces
/// and allows reading back. kind: the extension without its dot ("2dm", "dat", "mif"), used in questions. An input that
/// is missing, a folder of an output that is, and a file that something else holds are brought before the
/// FileQuestions. A file that cannot be opened stops the run, naming it and the reason.
int OPEN_FILE(std::string_view name, std::string_view mode, std::string_view kind);
/// An output that the others of its set can do without, such as the .prj: 0 when its folder takes no new file, which a
/// WARNING tells.
int OPEN_COMPANION(std::string_view name, std::string_view kind);
/// Writes out what is buffered and closes. A failure means lost output: "Unable to close file.", an ERROR naming it,
/// and the run stops.
void CLOSE_FILE(int handle);
/// The same, but false and no message on failure, for callers with a message of their own. Also false when an earlier
/// write failed.
[[nodiscard]] bool TRY_CLOSE_FILE(int handle);
/// "Closing all file units...", then every open file.
void CLOSE_ALL_FILES();
/// What EXITS does: closes everything once per run, quietly, and removes outputs under way; never stops the run. False
/// when an output lost its last bytes, which is said.
bool CLOSE_FILES_ON_EXIT();

// ---- reading ----
/// Next line of an input without its line end (LF or CR LF). The view is valid until the next call for this handle.
/// A read error is reported as an ERROR that names the file, and returned.
LineStatus READ_LINE(int handle, std::string_view& line);
/// READ_LINE with leading blanks and tabs removed, into a text of the caller's.
LineStatus READLINE(int handle, std::string& line);
/// Reads up to `count` bytes, of an output too. Fewer come back only at the end of the file; -1 after a read error
/// (LAST_FILE_ERROR tells why).
std::int64_t READ_BYTES(int handle, void* to, std::size_t count);
/// Bytes of an input from `offset` on, wherever it stands; the one call here that several threads may make at the same
/// time. False when they are not all there or cannot be read.
[[nodiscard]] bool READ_AT(int handle, std::int64_t offset, void* to, std::size_t count);
/// Length of an open input in bytes.
std::int64_t FILE_LENGTH(int handle);
/// Offset of the next byte that READ_BYTES or READ_LINE hands out, or that WRITE_BYTES writes.
std::int64_t FILE_POSITION(int handle);
/// Moves to a byte offset from the start (64-bit). False when that fails; moving beyond the end of an input succeeds
/// and reads nothing.
[[nodiscard]] bool SEEK_FILE(int handle, std::int64_t offset);

// ---- writing ----
/// Appends bytes at the current position, in large blocks. False when the disk refuses them (LAST_FILE_ERROR tells
/// why).
[[nodiscard]] bool WRITE_BYTES(int handle, std::string_view bytes);
/// WRITE_BYTES; a refusal stops the run with "ERROR - Could not write <name>: <reason>. The file is incomplete.".
void WRITE_OR_STOP(int handle, std::string_view bytes);
/// The system's reason for the last failure on this handle, such as "No space left on device".
std::string LAST_FILE_ERROR(int handle);
/// "ERROR - Could not read <name>: <reason>", the system's reason unless another is given, and the end of the run.
[[noreturn]] void STOP_UNREADABLE(int handle, std::string_view reason = {});
