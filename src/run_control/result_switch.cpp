#include "run_control/switches.h"

#include "platform/file_system.h"
#include "services/files.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <span>

namespace {

/// The keywords that do not shape the values of an output: how the run goes, what files are called, which times there
/// are beside the one at hand.
constexpr std::string_view NOT_SHAPING[] = {"b",       "verbose", "jobs", "mem",   "out",    "into", "sgs",
                                            "prjwarn", "help",    "t",    "tAll",  "max",    "min",  "tmax",
                                            "from",    "until",   "nth",  "dttol", "version"};
/// Those whose next argument is a file.
constexpr std::string_view TAKING_FILES[] = {"2dm", "cp", "lp", "like", "crs", "dif", "mesh2"};

bool isOneOf(std::string_view keyword, std::span<const std::string_view> keywords) {
    return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

}  // namespace

std::string RESULT_SWITCH(const Switch& row, const SwitchArgument& given) {
    if (isOneOf(row.keyword, NOT_SHAPING)) return {};
    const std::string text = "-" + std::string(row.keyword) + given.behind;
    if (!row.takesNext) return text;
    const bool file =
        isOneOf(row.keyword, TAKING_FILES) && (row.keyword != "crs" || KIND_OF_FILE(given.next) == FileKind::File);
    const std::string next = file ? FILENAMEEXT(given.next) : given.next;
    return text + (next.find(' ') == std::string::npos ? " " + next : " \"" + next + "\"");
}
