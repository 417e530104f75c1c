#include "platform/platform.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#include <csignal>
#endif

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#ifdef _WIN32

namespace {
/// Other devices, such as NUL, are terminals to the C library.
bool isConsole(DWORD which) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}
}  // namespace

bool INPUT_IS_TERMINAL() { return isConsole(STD_INPUT_HANDLE); }
bool OUTPUT_IS_TERMINAL() { return isConsole(STD_OUTPUT_HANDLE); }
void SURVIVE_REFUSED_WRITES() {}
bool HELD_BY_ANOTHER_PROGRAM(int) { return _doserrno == ERROR_SHARING_VIOLATION || _doserrno == ERROR_LOCK_VIOLATION; }
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
void SURVIVE_REFUSED_WRITES() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
bool HELD_BY_ANOTHER_PROGRAM(int error) { return error == EBUSY || error == ETXTBSY; }
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

/// The number behind `name` in a file of "name number" lines; 0 when absent.
std::uint64_t numberBehind(const char* fileName, std::string_view name) {
    std::ifstream file(fileName);
    std::string word;
    std::uint64_t value = 0;
    while (file >> word)
        if (word == name && file >> value) return value;
    return 0;
}

/// What a container leaves. File caches that the system drops on demand count as used there, but not here.
std::uint64_t leftInControlGroup(const char* limitFile, const char* usedFile, const char* statFile,
                                 std::string_view cacheName) {
    std::uint64_t limit = 0;
    std::uint64_t used = 0;
    if (!readNumber(limitFile, limit) || !readNumber(usedFile, used)) return std::numeric_limits<std::uint64_t>::max();
    used -= std::min(used, numberBehind(statFile, cacheName));
    return limit > used ? limit - used : 1;
}

}  // namespace

std::uint64_t AVAILABLE_MEMORY() {
    constexpr const char* V2 = "/sys/fs/cgroup/memory.stat";
    constexpr const char* V1 = "/sys/fs/cgroup/memory/memory.stat";
    const std::uint64_t inContainer =
        std::min(leftInControlGroup("/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory.current", V2, "inactive_file"),
                 leftInControlGroup("/sys/fs/cgroup/memory/memory.limit_in_bytes",
                                    "/sys/fs/cgroup/memory/memory.usage_in_bytes", V1, "total_inactive_file"));
    // kilobytes; counts reclaimable caches
    const std::uint64_t onMachine = numberBehind("/proc/meminfo", "MemAvailable:") * 1024;
    if (onMachine != 0) return std::min(onMachine, inContainer);
    return inContainer == std::numeric_limits<std::uint64_t>::max() ? 0 : inContainer;
}

#endif
