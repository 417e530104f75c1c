#include "platform/control_groups.h"

#include "scratch_folder.h"
#include "testing.h"

#include <fstream>

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

struct GroupCase {
    const char* what;
    Files files;
    double processors;
    std::uint64_t memory;
};

const std::string GROUPS = "sys/fs/cgroup/";
const std::string OF_PROCESS = "proc/self/cgroup";

const GroupCase CASES[] = {
    {"no groups", {}, NO_PROCESSOR_LIMIT, NO_MEMORY_LIMIT},
    {"a container, whose own group is the top",
     {{OF_PROCESS, "0::/\n"},
      {GROUPS + "cpu.max", "150000 100000\n"},
      {GROUPS + "memory.max", "1000\n"},
      {GROUPS + "memory.current", "600\n"},
      {GROUPS + "memory.stat", "anon 1\ninactive_file 250\n"}},
     1.5,
     650},
    {"a job below a service: the narrower of each",
     {{OF_PROCESS, "0::/system.slice/job.scope\n"},
      {GROUPS + "cpu.max", "max 100000\n"},
      {GROUPS + "system.slice/cpu.max", "400000 100000\n"},
      {GROUPS + "system.slice/job.scope/cpu.max", "max 100000\n"},
      {GROUPS + "system.slice/memory.max", "5000\n"},
      {GROUPS + "system.slice/memory.current", "1000\n"},
      {GROUPS + "system.slice/job.scope/memory.max", "4500\n"},
      {GROUPS + "system.slice/job.scope/memory.current", "200\n"}},
     4.0,
     4000},
    {"the first version, a folder for each controller, more used than allowed",
     {{OF_PROCESS, "5:cpu,cpuacct:/slurm/job_7\n3:memory:/slurm/job_7\n1:name=systemd:/other\n"},
      {GROUPS + "cpu/slurm/job_7/cpu.cfs_quota_us", "50000\n"},
      {GROUPS + "cpu/slurm/job_7/cpu.cfs_period_us", "100000\n"},
      {GROUPS + "cpu/cpu.cfs_quota_us", "-1\n"},
      {GROUPS + "cpu/cpu.cfs_period_us", "100000\n"},
      {GROUPS + "memory/slurm/memory.limit_in_bytes", "900\n"},
      {GROUPS + "memory/slurm/memory.usage_in_bytes", "1900\n"},
      {GROUPS + "memory/slurm/memory.stat", "total_inactive_file 100\n"}},
     0.5,
     1},
};

}  // namespace

TEST_CASE("The narrowest of the control groups above a process counts") {
    for (const GroupCase& row : CASES) {
        CAPTURE(row.what);
        const ScratchFolder folder;
        for (const auto& [name, text] : row.files) {
            std::filesystem::create_directories(std::filesystem::path(folder.name(name)).parent_path());
            std::ofstream(folder.name(name)) << text;
        }
        std::string root = folder.name("x");
        root.resize(root.size() - 2);
        CHECK(PROCESSORS_OF_CONTROL_GROUPS(root) == row.processors);
        CHECK(MEMORY_OF_CONTROL_GROUPS(root) == row.memory);
    }
}
