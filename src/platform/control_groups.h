// What the control groups that a Linux process is in leave it: of a container, a service or a job of a cluster. A limit
// of any group above it counts. Sources: the kernel's documents on both versions of control groups.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

constexpr double NO_PROCESSOR_LIMIT = 1.0e9;
constexpr std::uint64_t NO_MEMORY_LIMIT = std::numeric_limits<std::uint64_t>::max();

/// Processors' worth of time; NO_PROCESSOR_LIMIT where no group limits it. root: stands before /proc and /sys.
double PROCESSORS_OF_CONTROL_GROUPS(const std::string& root = {});
/// Bytes, file caches that the system drops on demand counted as free; NO_MEMORY_LIMIT where no group limits it.
std::uint64_t MEMORY_OF_CONTROL_GROUPS(const std::string& root = {});
/// The number behind `name` in a file of "name number" lines; 0 when absent.
std::uint64_t NUMBER_BEHIND(const std::string& fileName, const std::string& name);
