// The handles behind the file service, shared by its opening and its reading side. Everybody else uses
// services/files.h.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

constexpr std::size_t FILE_BLOCK_SIZE = 1U << 18;  ///< bytes read or written at a time

/// One general handle. Input: `buffer` holds bytes of the file from `next` to `end`. Output: `buffer` holds bytes not
/// yet written.
struct OpenFile {
    std::FILE* stream = nullptr;
    std::string name;
    bool output = false;
    bool atEnd = false;  ///< the system has no more bytes
    std::vector<char> buffer;
    std::size_t next = 0;
    std::size_t end = 0;
    std::string lineCut;  ///< a line that spans blocks
    int error = 0;        ///< errno of the last failure
};

/// The record of an open handle; any other number stops the run at once.
OpenFile& OPEN_HANDLE(int handle);
/// Writes the buffered bytes of an output; false when the disk refuses them.
bool FLUSH_FILE(OpenFile& file);
/// "No space left on device"
std::string SYSTEM_REASON(int error);
/// "ERROR - Could not read <name>: <reason>"
std::string CANNOT_READ(std::string_view name, std::string_view reason);
/// The ERROR that says an output is not whole, and why.
std::string INCOMPLETE_OUTPUT(const OpenFile& file);
/// Stops the run: the file cannot be opened, for the reason that errno gives.
[[noreturn]] void CANNOT_OPEN(const std::string& name, bool output, int error);
/// True when whoever was asked has closed the file in the other program.
bool RETRY_LOCKED(const std::string& name);
/// Opens an output for OPEN_FILE and OPEN_COMPANION; null when it is left out.
std::FILE* OPEN_OUTPUT_STREAM(const std::string& name, bool optional);
/// Removes outputs under way and forgets their count.
void FORGET_OUTPUTS();
