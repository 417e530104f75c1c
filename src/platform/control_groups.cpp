#include "platform/control_groups.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <functional>
#include <system_error>

namespace {

/// First whole number in a one-line system file; false when it is absent or holds a word such as "max".
bool readNumber(const std::string& name, std::uint64_t& value) {
    std::ifstream file(name);
    std::string text;
    if (!(file >> text)) return false;
    return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc{};
}

bool listed(const std::string& controllers, const std::string& wanted) {
    return ("," + controllers + ",").find("," + wanted + ",") != std::string::npos;
}

/// Calls look(folder, second) for the folder of each group that the process is in, and of those above it. second: of
/// the second version, where one folder has all controllers.
void forGroups(const std::string& root, const std::string& controller,
               const std::function<void(const std::string& folder, bool second)>& look) {
    const std::string mount = root + "/sys/fs/cgroup";
    const auto upwards = [&look](const std::string& top, std::string path, bool second) {
        for (; path.size() > 1; path.erase(path.rfind('/'))) look(top + path, second);
        look(top, second);
    };
    std::ifstream groups(root + "/proc/self/cgroup");  // "4:cpu,cpuacct:/path", and "0::/path" of the second version
    std::string line;
    bool found = false;
    while (std::getline(groups, line)) {
        const std::size_t first = line.find(':');
        const std::size_t last = line.find(':', first + 1);
        if (first == std::string::npos || last == std::string::npos) continue;
        const std::string controllers = line.substr(first + 1, last - first - 1);
        const bool second = controllers.empty();
        if (!second && !listed(controllers, controller)) continue;
        upwards(second ? mount : mount + "/" + controller, line.substr(last + 1), second);
        found = true;
    }
    if (found) return;
    look(mount, true);
    look(mount + "/" + controller, false);
}

/// What a group leaves.
std::uint64_t left(const std::string& limitFile, const std::string& usedFile, const std::string& statFile,
                   const std::string& cacheName) {
    std::uint64_t limit = 0, used = 0;
    if (!readNumber(limitFile, limit) || !readNumber(usedFile, used)) return NO_MEMORY_LIMIT;
    used -= std::min(used, NUMBER_BEHIND(statFile, cacheName));
    return limit > used ? limit - used : 1;
}

}  // namespace

std::uint64_t NUMBER_BEHIND(const std::string& fileName, const std::string& name) {
    std::ifstream file(fileName);
    std::string word;
    std::uint64_t value = 0;
    while (file >> word)
        if (word == name && file >> value) return value;
    return 0;
}

double PROCESSORS_OF_CONTROL_GROUPS(const std::string& root) {
    double least = NO_PROCESSOR_LIMIT;
    forGroups(root, "cpu", [&least](const std::string& folder, bool second) {
        // Microseconds of time per period; "max", or -1, where there is no limit.
        double quota = 0.0, period = 0.0;
        std::ifstream quotaFile(folder + (second ? "/cpu.max" : "/cpu.cfs_quota_us"));
        std::ifstream periodFile(second ? std::string{} : folder + "/cpu.cfs_period_us");
        if (!(quotaFile >> quota) || !((second ? quotaFile : periodFile) >> period)) return;
        if (quota > 0.0 && period > 0.0) least = std::min(least, quota / period);
    });
    return least;
}

std::uint64_t MEMORY_OF_CONTROL_GROUPS(const std::string& root) {
    std::uint64_t least = NO_MEMORY_LIMIT;
    forGroups(root, "memory", [&least](const std::string& folder, bool second) {
        const std::string start = folder + "/memory.";
        least = std::min(least, second ? left(start + "max", start + "current", start + "stat", "inactive_file")
                                       : left(start + "limit_in_bytes", start + "usage_in_bytes", start + "stat",
                                              "total_inactive_file"));
    });
    return least;
}
