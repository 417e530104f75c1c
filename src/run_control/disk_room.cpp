#include "run_control/disk_room.h"

#include "platform/file_system.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

constexpr double MEGABYTE = 1.0e6, GIGABYTE = 1.0e9;
constexpr double WORTH_SAYING = 4.0 * GIGABYTE;

bool hasEnding(std::string_view name) {
    const std::vector<const OutputFormat*> formats = FORMATS_GIVEN(OPTIONS());
    return std::any_of(formats.begin(), formats.end(), [&](const OutputFormat* format) {
        return std::any_of(format->files.begin(), format->files.end(),
                           [&](std::string_view ending) { return name.ends_with(ending); });
    });
}

/// True for a name of the run's outputs: the start, a time or other mark behind "_", the ending.
bool mayBeOutput(std::string_view name, std::string_view start) {
    return name.starts_with(start) && name.find_first_of("._", start.size()) == start.size() && hasEnding(name);
}

/// Bytes that are free again while the run replaces outputs one by one: of all but the largest, beside which the new
/// one grows. Nothing when one of them is a pipe, a device or a link, which may lead to another disk.
std::optional<double> replaceable(const std::filesystem::path& folder, const std::string& start) {
    double bytes = 0.0, largest = 0.0;
    for (const std::string& name : NAMES_IN_FOLDER(NAME_OF(folder))) {
        if (!mayBeOutput(name, start)) continue;
        std::error_code error;
        const std::filesystem::path path = folder / PATH_OF(name);
        if (IS_DEVICE(NAME_OF(path)) || std::filesystem::is_symlink(path, error)) return {};
        const std::uintmax_t size = std::filesystem::file_size(path, error);
        if (error) continue;
        bytes += static_cast<double>(size);
        largest = std::max(largest, static_cast<double>(size));
    }
    return bytes - largest;
}

std::string sizeText(double bytes) {
    return bytes < GIGABYTE ? AREALD8(bytes / MEGABYTE, 1) + " MB" : AREALD8(bytes / GIGABYTE, 1) + " GB";
}

/// A pipe that -out names is there before the run; one of another name is refused when its turn comes.
void refusePipes(const std::string& stem) {
    if (!OPTIONS().outputNameGiven) return;
    for (const OutputFormat* format : FORMATS_GIVEN(OPTIONS()))
        if (!format->driver.empty() || format->keyword == "xmdf")
            REFUSE_PIPE(stem + std::string(format->files.front()));
}

}  // namespace

void CHECK_DISK_ROOM(const DiskUse& use, const std::string& stem) {
    refusePipes(stem);
    if (use.bytes == 0.0) return;
    const std::filesystem::path path = PATH_OF(ABSOLUTE_NAME(stem));
    std::filesystem::path folder = path.parent_path();
    const std::optional<double> replaced = replaceable(folder, NAME_OF(path.filename()));
    if (!replaced) return;
    std::error_code error;
    while (folder.has_relative_path() && !std::filesystem::exists(folder, error)) folder = folder.parent_path();
    const std::filesystem::space_info space = std::filesystem::space(folder, error);
    if (!error && use.certain > static_cast<double>(space.available) + *replaced)
        STOP_RUN("ERROR - The outputs need " + sizeText(use.certain) + " on the disk, and " +
                 sizeText(static_cast<double>(space.available)) + " are free in " + NAME_OF(folder) + ".");
    if (use.bytes > WORTH_SAYING)
        DMESSAGE("Check - The outputs will take " + std::string(use.bytes > use.certain ? "at most " : "") +
                 sizeText(use.bytes) + " on the disk.");
}
