#include "platform/platform.h"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <unistd.h>
#endif

#include <algorithm>
#include <charconv>
#include <fstream>
#include <string>
#include <system_error>

#ifdef _WIN32

bool INPUT_IS_TERMINAL() { return _isatty(_fileno(stdin)) != 0; }
bool OUTPUT_IS_TERMINAL() { return _isatty(_fileno(stdout)) != 0; }
void SURVIVE_CLOSED_PIPES() {}
bool SEEK_64(std::FILE* file, std::int64_t offset) { return _fseeki64(file, offset, SEEK_SET) == 0; }
std::int64_t TELL_64(std::FILE* file) { return _ftelli64(file); }

std::uint64_t AVAILABLE_MEMORY() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) != 0 ? std::min(status.ullAvailPhys, status.ullAvailVirtual) : 0;
}

#else

bool INPUT_IS_TERMINAL() { return isatty(STDIN_FILENO) != 0; }
bool OUTPUT_IS_TERMINAL() { return isatty(STDOUT_FILENO) != 0; }
void SURVIVE_CLOSED_PIPES() { std::signal(SIGPIPE, SIG_IGN); }
bool SEEK_64(std::FILE* file, std::int64_t offset) { return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0; }
std::int64_t TELL_64(std::FILE* file) { return ftello(file); }

namespace {

/// First whole number in a one-line system file; false when it is absent or holds a word such as "max".
bool readNumber(const char* name, std::uint64_t& value) {
    std::ifstream file(name);
    std::string text;
    if (!(file >> text)) return false;
    return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc{};
}

/// "MemAvailable" of /proc/meminfo in bytes, which counts reclaimable caches; 0 when absent.
std::uint64_t availableOnMachine() {
    std::ifstream file("/proc/meminfo");
    std::string word;
    std::uint64_t kilobytes = 0;
    while (file >> word)
        if (word == "MemAvailable:" && file >> kilobytes) return kilobytes * 1024;
    return 0;
}

}  // namespace

std::uint64_t AVAILABLE_MEMORY() {
    std::uint64_t available = availableOnMachine();
    constexpr const char* CONTROL_GROUPS[][2] = {
        {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory.current"},                                       // version 2
        {"/sys/fs/cgroup/memory/memory.limit_in_bytes", "/sys/fs/cgroup/memory/memory.usage_in_bytes"},       // version 1
    };
    for (const auto& group : CONTROL_GROUPS) {
        std::uint64_t limit = 0;
        std::uint64_t used = 0;
        if (!readNumber(group[0], limit) || !readNumber(group[1], used)) continue;
        const std::uint64_t left = limit > used ? limit - used : 1;
        available = available == 0 ? left : std::min(available, left);
    }
    return available;
}

#endif
