#include "platform/processors.h"

#include <windows.h>

#include <io.h>

#include <algorithm>
#include <bit>
#include <limits>

int PROCESSORS_ALLOWED() {
    DWORD_PTR own = 0, all = 0;
    if (GetProcessAffinityMask(GetCurrentProcess(), &own, &all) == 0) return 1;
    // On machines of several groups of processors the mask is empty, and all of them may be used.
    if (own == 0) return std::max(1, static_cast<int>(GetActiveProcessorCount(ALL_PROCESSOR_GROUPS)));
    return std::popcount(static_cast<unsigned long long>(own));
}

namespace {

bool readAll(HANDLE handle, std::int64_t offset, char* at, std::size_t count) {
    while (count > 0) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
        DWORD got = 0;
        if (ReadFile(handle, at, wanted, &got, &place) == 0 || got == 0) return false;
        at += got;
        offset += got;
        count -= got;
    }
    return true;
}

}  // namespace

/// A read through the stream's own handle would move where that stands, whatever place it names.
bool READ_FROM(std::FILE* file, std::int64_t offset, void* to, std::size_t count) {
    const HANDLE handle = ReOpenFile(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, 0);
    if (handle == INVALID_HANDLE_VALUE) return false;
    const bool good = readAll(handle, offset, static_cast<char*>(to), count);
    CloseHandle(handle);
    return good;
}
