#include "platform/process.h"
#include "platform/wide_text.h"

#include <windows.h>

#include <array>

std::string HOST_NAME() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD length = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &length) != 0 ? NARROW_TEXT({name.data(), length}) : std::string{};
}

std::uint64_t PROCESS_NUMBER() { return GetCurrentProcessId(); }

bool PROCESS_IS_GONE(std::uint64_t number) {
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(number));
    if (process == nullptr) return GetLastError() == ERROR_INVALID_PARAMETER;
    DWORD status = 0;
    const bool ended = GetExitCodeProcess(process, &status) != 0 && status != STILL_ACTIVE;
    CloseHandle(process);
    return ended;
}

namespace {

void (*cleanUpBeforeEnd)() = nullptr;

/// The system calls it in a thread of its own. The status is that of a process which the system itself ends so; not
/// every system that runs these programs gives it (wine: 0).
BOOL WINAPI cleanUpAndEnd(DWORD) {
    cleanUpBeforeEnd();
    TerminateProcess(GetCurrentProcess(), STATUS_CONTROL_C_EXIT);
    return TRUE;
}

}  // namespace

void CLEAN_UP_BEFORE_SIGNALS_END(void (*cleanUp)()) {
    cleanUpBeforeEnd = cleanUp;
    SetConsoleCtrlHandler(cleanUpAndEnd, TRUE);
}
