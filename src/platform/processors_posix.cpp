#include "platform/processors.h"

#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <string>
#include <thread>

namespace {

constexpr double NO_QUOTA = 1e9;  // processors

double quotient(double quota, double period) { return quota > 0.0 && period > 0.0 ? quota / period : NO_QUOTA; }

/// Processors' worth of time that a control group leaves; its files hold microseconds of time per period, or "max".
double quotaOfControlGroup() {
    double quota = 0.0, period = 0.0;
    std::ifstream second("/sys/fs/cgroup/cpu.max");
    if (second >> quota >> period) return quotient(quota, period);
    std::ifstream firstQuota("/sys/fs/cgroup/cpu/cpu.cfs_quota_us"),
        firstPeriod("/sys/fs/cgroup/cpu/cpu.cfs_period_us");
    if (firstQuota >> quota && firstPeriod >> period) return quotient(quota, period);
    return NO_QUOTA;
}

}  // namespace

int PROCESSORS_ALLOWED() {
    int count = static_cast<int>(std::thread::hardware_concurrency());
#ifdef __linux__
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(0, sizeof set, &set) == 0) count = CPU_COUNT(&set);
#endif
    return std::max(1, static_cast<int>(std::min(static_cast<double>(count), std::ceil(quotaOfControlGroup()))));
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
