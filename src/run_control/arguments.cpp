#include "run_control/arguments.h"

#include "platform/file_system.h"
#include "run_control/help.h"
#include "run_control/nearest_switch.h"
#include "run_control/switches.h"
#include "services/console.h"
#include "services/options.h"
#include "services/version.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::string_view HYPHEN = "-";
// code page 1252 and UTF-8: word processors put them into batch files
constexpr std::string_view EN_DASHES[] = {"\x96", "\xE2\x80\x93"};
// the first of these where Windows reads a batch file by another page: as U+0096, or as the letter that pages 437 and
// 850 have in its place. They count in front of known switches only, and names may begin with the letter.
constexpr std::string_view MISREAD_DASHES[] = {"\xC2\x96", "\xC3\xBB"};
constexpr std::string_view KNOWN_INPUTS[] = {".2dm", ".dat", ".xmdf", ".h5", ".tab", ".txt"};

bool isExistingFile(std::string_view name) { return KIND_OF_FILE(name) == FileKind::File; }

bool hasInputExtension(std::string_view name) {
    return std::find(std::begin(KNOWN_INPUTS), std::end(KNOWN_INPUTS), FILEEXT(name)) != std::end(KNOWN_INPUTS);
}

/// "/asc" is a switch, "/data/x_h.dat" is not.
bool isAbsolutePath(std::string_view argument) {
    return (argument.find('/', 1) != std::string_view::npos && hasInputExtension(argument)) || isExistingFile(argument);
}

/// Characters in front of a switch's text; 0 for an argument that is no switch.
std::size_t dashLength(std::string_view argument) {
    if (argument.starts_with(HYPHEN)) return HYPHEN.size();
    for (const std::string_view dash : EN_DASHES)
        if (argument.starts_with(dash)) return dash.size();
    for (const std::string_view dash : MISREAD_DASHES)
        if (argument.starts_with(dash) && FIND_SWITCH(argument.substr(dash.size())) && !hasInputExtension(argument) &&
            !isExistingFile(argument))
            return dash.size();
    return argument.starts_with('/') && !isAbsolutePath(argument) ? 1 : 0;
}

std::string fittedArgument(std::string_view argument) {
    if (argument.size() > FILE_NAME_WIDTH)
        DMESSAGE("WARNING - Argument cut to " + AINTEGER(FILE_NAME_WIDTH) + " characters: " + FITTED(argument, 60) +
                 "...");
    return FITTED(argument, FILE_NAME_WIDTH);
}

void takeInputFile(const std::string& name) {
    if (TRIMMED(name).empty()) return;
    if (!OPTIONS().inputFile.empty())
        DMESSAGE("WARNING - Only one input file is converted: " + name + " replaces " + OPTIONS().inputFile);
    SET_INPUT_FILE(name);
}

/// A lone letter may be another program's flag in an old batch file.
void reportUnknown(const SwitchArgument& given) {
    const auto isLetter = [](char c) { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); };
    if (std::count_if(given.text.begin(), given.text.end(), isLetter) < 2) return;
    const std::string nearest = NEAREST_SWITCH(given.text);
    DMESSAGE("Check - " + given.argument + " is not known and ignored" +
             (nearest.empty() ? "." : "; did you mean -" + nearest + "?"));
}

/// Applies the switch at `at` and returns the position of the next argument to look at.
std::size_t takeSwitch(const std::vector<std::string>& arguments, std::size_t at, std::size_t dash) {
    SwitchArgument given{arguments[at], {}, arguments[at].substr(dash), {}, {}};
    const bool hasNext = at + 1 < arguments.size();
    if (hasNext) given.next = arguments[at + 1];
    TELL_WHEN_ASKED(given.text, given.next);
    const std::optional<Switch> row = FIND_SWITCH(given.text);
    if (!row) {
        reportUnknown(given);
        return at + 1;
    }
    given.keyword = row->keyword;
    given.behind = given.text.substr(row->keyword.size());
    row->apply(OPTIONS_TO_FILL(), given);
    if (row->takesNext && TRIMMED(given.next).empty()) DMESSAGE("WARNING - Nothing specified after " + given.argument);
    const std::string told = RESULT_SWITCH(*row, given);
    if (!told.empty()) OPTIONS_TO_FILL().resultSwitches.push_back(told);
    return at + (row->takesNext && hasNext ? 2 : 1);
}

/// Hours inside, always. Done last, so that -sec may stand anywhere on the command line.
void convertTimesToHours(RunOptions& options) {
    const double unitsPerHour = options.seconds ? SECONDS_PER_HOUR : 1.0;
    options.outputTime.hours = static_cast<double>(options.outputTime.typed) / unitsPerHour;
    for (std::optional<double>* time : {&options.timeTolerance, &options.subset.from, &options.subset.until})
        if (*time) **time /= unitsPerHour;
}

/// -out and -into may stand in either order.
void placeOutputName(RunOptions& options) {
    if (!options.outputNameGiven || options.outputFolder.empty()) return;
    options.outputName = NAME_OF(PATH_OF(options.outputFolder) / PATH_OF(options.outputName));
}

}  // namespace

void READ_ARGUMENTS(int argc, const char* const argv[]) {
    REPORT("Build " + std::string(BUILD_TEXT));
    REPORT("Found " + AINTEGER(std::max(argc - 1, 0)) + " arguments");
    REPORT("Initialising input structure...");
    INITIALISE_OPTIONS();
    REPORT("Done.");
    if (argc < 2) {
        OPTIONS_TO_FILL().inputError = true;
        return;
    }
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(fittedArgument(argv[i]));
    for (std::size_t at = 0; at < arguments.size();) {
        if (const std::size_t dash = dashLength(arguments[at]); dash > 0) {
            at = takeSwitch(arguments, at, dash);
        } else {
            takeInputFile(arguments[at]);
            ++at;
        }
    }
    convertTimesToHours(OPTIONS_TO_FILL());
    placeOutputName(OPTIONS_TO_FILL());
}
