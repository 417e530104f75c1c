#include "run_control/help.h"

#include "gdal_outputs/gdal_module.h"
#include "run_control/nearest_switch.h"
#include "run_control/usage.h"
#include "run_control/usage_entries.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/version.h"
#include "text_utils/text.h"
#include "xmdf/xmdf.h"

#include <algorithm>
#include <string>

namespace {

constexpr std::string_view HELP = "help", VERSION = "version";
constexpr std::string_view WORDS[] = {HELP, "-help", "h", "?", VERSION, "-version"};

void tellOf(std::string_view word) {
    const std::vector<UsageEntry> entries = USAGE_ABOUT(word);
    for (const UsageEntry& entry : entries)
        for (const std::string& line : entry.lines) REPORT(line);
    if (!entries.empty()) return;
    const std::string nearest = NEAREST_SWITCH(word.substr(word.starts_with('-') ? 1 : 0));
    REPORT("Nothing is said of " + std::string(word) + (nearest.empty() ? "." : "; did you mean -" + nearest + "?"));
}

void tellVersion() {
    const std::string hdf5 = HDF5_VERSION();
    std::string reason;
    const std::string gdal = GDAL_VERSION(reason);
    REPORT("VORANT_to_GIS " + std::string(VERSION_TEXT));
    REPORT("Build " + std::string(BUILD_TEXT));
    REPORT(hdf5.empty() ? "HDF5 none: .xmdf files are refused" : "HDF5 " + hdf5);
    REPORT("GDAL " + (gdal.empty() ? "none: " + reason : gdal));
}

}  // namespace

std::span<const std::string_view> TELLING_SWITCHES() { return WORDS; }

void TELL_WHEN_ASKED(std::string_view text, std::string_view next) {
    const auto word =
        std::find_if(std::begin(WORDS), std::end(WORDS), [&](std::string_view w) { return ASAME(w, text); });
    if (word == std::end(WORDS)) return;
    if (word->ends_with(VERSION)) tellVersion();
    else if (*word == HELP && !TRIMMED(next).empty()) tellOf(TRIMMED(next));
    else PRINT_USAGE();
    END_AT_ONCE();
}
