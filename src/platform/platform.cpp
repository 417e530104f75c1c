#include "platform/platform.h"

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/control_groups.h"

#include <sys/resource.h>
#include <unistd.h>
#include <csignal>
#endif

#include <algorithm>
#include <cerrno>

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

/// What the process may still map (ulimit -v).
std::uint64_t leftOfAddresses() {
    struct rlimit limit {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return NO_MEMORY_LIMIT;
    const std::uint64_t used = NUMBER_BEHIND("/proc/self/status", "VmSize:") * 1024;
    return limit.rlim_cur > used ? limit.rlim_cur - used : 1;
}

}  // namespace

std::uint64_t AVAILABLE_MEMORY() {
    const std::uint64_t allowed = std::min(MEMORY_OF_CONTROL_GROUPS(), leftOfAddresses());
    // kilobytes; counts reclaimable caches
    const std::uint64_t onMachine = NUMBER_BEHIND("/proc/meminfo", "MemAvailable:") * 1024;
    if (onMachine != 0) return std::min(onMachine, allowed);
    return allowed == NO_MEMORY_LIMIT ? 0 : allowed;
}

#endif
