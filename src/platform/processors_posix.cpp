#include "platform/processors.h"

#include "platform/control_groups.h"

#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <thread>

int PROCESSORS_ALLOWED() {
    int count = static_cast<int>(std::thread::hardware_concurrency());
#ifdef __linux__
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(0, sizeof set, &set) == 0) count = CPU_COUNT(&set);
#endif
    return std::max(1,
                    static_cast<int>(std::min(static_cast<double>(count), std::ceil(PROCESSORS_OF_CONTROL_GROUPS()))));
}

bool READ_FROM(std::FILE* file, std::int64_t offset, void* to, std::size_t count) {
    auto* at = static_cast<char*>(to);
    while (count > 0) {
        const ssize_t got = pread(fileno(file), at, count, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        at += got;
        offset += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}
