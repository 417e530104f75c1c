#include "run_control/output_names.h"

#include "inputs/output_types.h"
#include "platform/file_system.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr int MOST_THRESHOLD_DECIMALS = 6;
constexpr int FEWEST_HOUR_DECIMALS = 2;
constexpr std::size_t HOUR_DIGITS = 3;  // before the point: names sort by time up to 999 hours
constexpr std::size_t SECOND_DIGITS = 6;

/// Zeros in front until `digits` stand before the point; the sign stays first.
std::string padded(const std::string& text, std::size_t digits) {
    const std::size_t start = text.starts_with('-') ? 1 : 0;
    const std::size_t have = std::min(text.find('.'), text.size()) - start;
    const std::string zeros(have < digits ? digits - have : 0, '0');
    return text.substr(0, start) + zeros + text.substr(start);
}

std::string timeText(const OutputTime& time, bool seconds, int decimals) {
    std::string text = AREALD8(SHOWN_TIME(time, seconds), decimals);
    if (text.ends_with('.')) text.pop_back();  // whole seconds: a point at the end would read as an empty extension
    return padded(text, seconds ? SECOND_DIGITS : HOUR_DIGITS);
}

/// A threshold behind its marker's start, with the fewest decimals that single precision tells apart there: 100005 ->
/// "5", and 200000.1, which may be stored as 200000.09375, -> "0.1".
std::string thresholdText(const OutputTime& time, double start) {
    std::string text;
    for (int decimals = 0; decimals <= MOST_THRESHOLD_DECIMALS; ++decimals) {
        text = AREALD8(time.number - start, decimals);
        double shown = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), shown);
        if (static_cast<float>(start + shown) == static_cast<float>(time.number)) break;
    }
    if (text.ends_with('.')) text.pop_back();
    return text;
}

std::string withUnderscore(std::string text) {
    if (!text.ends_with('_')) text += '_';
    return text;
}

/// Arrows show a direction by themselves, and ignore the switches that ask for it alone.
std::string componentTag(const RunOptions& options) {
    if (options.vx) return "_Vx";
    if (options.vy) return "_Vy";
    return (options.va || options.vdir) && !options.vector ? "_Vdir" : "";
}

bool inUse(const std::string& name, const std::vector<std::string_view>& extensions, std::string_view beside) {
    for (const std::string_view extension : extensions) {
        const std::string ending(extension);
        if (NAME_IN_USE(name + ending) || (!beside.empty() && NAME_IN_USE(name + std::string(beside) + ending)))
            return true;
    }
    return false;
}

/// Two names in one can be longer than either.
void checkLength(const std::string& name, const std::vector<std::string_view>& extensions, std::string_view beside) {
    constexpr std::size_t LONGEST_FILE_NAME = 255;  // bytes without the folder, on every usual file system
    std::size_t longest = 0;
    for (const std::string_view extension : extensions) longest = std::max(longest, extension.size());
    const std::size_t length = FILENAMEEXT(name).size() + beside.size() + longest;
    if (length > LONGEST_FILE_NAME)
        STOP_RUN("ERROR - The name of the output is longer than the " + AINTEGER(LONGEST_FILE_NAME) +
                 " characters of file names; -out gives it another: " + name);
}

}  // namespace

int NAME_DECIMALS(const std::vector<OutputTime>& times, bool seconds) {
    return std::max(TIME_DECIMALS(times, seconds), seconds ? 0 : FEWEST_HOUR_DECIMALS);
}

std::string TIME_TAG(const OutputLabel& label, bool seconds) {
    const OutputTime& time = label.time;
    switch (time.kind) {
        case TimeKind::Ordinary: break;
        case TimeKind::Maximum: return "Max";
        case TimeKind::Minimum: return "Min";
        case TimeKind::TimeOfMaximum:
            return IS_WATER_LEVEL(label.quantity) ? "time_hMax" : IS_VELOCITY(label.quantity) ? "time_VMax" : "tmax";
        case TimeKind::PeakLevel: return "time_hMax";
        case TimeKind::PeakVelocity: return "time_VMax";
        case TimeKind::MaxValue: return "MaxValue";
        case TimeKind::MaxSource: return "MaxSource";
        case TimeKind::Exceedance: return "time_exceed_" + thresholdText(time, TIME_EXCEEDANCE);
        case TimeKind::Duration: return "durn_above_" + thresholdText(time, TIME_DURATION);
    }
    return "t" + timeText(time, seconds, label.timeDecimals);
}

std::string GRID_TAG(double cellSize) {
    std::array<char, 400> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), cellSize, std::chars_format::fixed).ptr;
    return "_g" + padded(std::string(buffer.data(), end), 3);
}

std::string OUTPUT_BASE(const std::string& input) {
    const std::string& folder = OPTIONS().outputFolder;
    const std::string name = FILENAMEPATH(input);
    return folder.empty() ? name : NAME_OF(PATH_OF(folder) / PATH_OF(FILENAMEEXT(name)));
}

std::string WITHOUT_EXTENSION(const std::string& name, std::string_view extension) {
    return !extension.empty() && FILEEXT(name) == extension ? FILENAMEPATH(TRIMF(name)) : std::string(TRIMF(name));
}

bool MAY_WRITE_SEVERAL(const RunOptions& options) {
    return options.allTimes || options.allTypes || options.folderGiven;
}

void IGNORE_OUTPUT_NAME() {
    if (!OPTIONS().outputNameGiven) return;
    DMESSAGE("WARNING - Several outputs are written, output filename (-out) ignored.");
    DROP_OUTPUT_NAME();
}

std::string OUTPUT_STEM(const std::string& base) {
    return OPTIONS().outputNameGiven ? FILENAMEPATH(OPTIONS().outputName) : base;
}

std::string USUAL_NAME(const OutputLabel& label) {
    const RunOptions& options = OPTIONS();
    std::string name = label.base;
    if (label.timed) name = withUnderscore(name) + TIME_TAG(label, options.seconds);
    if (label.vector) name += componentTag(options);
    if (label.gridSize > 0.0 && !options.suppressGridSize) name += GRID_TAG(label.gridSize);
    return name;
}

std::string OUTPUT_NAME(const OutputLabel& label, const std::vector<std::string_view>& extensions,
                        std::string_view beside) {
    const RunOptions& options = OPTIONS();
    std::string name;
    if (options.outputNameGiven) {
        name = WITHOUT_EXTENSION(options.outputName, extensions.empty() ? std::string_view{} : extensions.front());
    } else {
        name = USUAL_NAME(label);
    }
    checkLength(name, extensions, beside);
    if (!inUse(name, extensions, beside)) return name;
    std::string free;
    for (int copy = 2; free.empty() || inUse(free, extensions, beside); ++copy) free = name + "_" + AINTEGER(copy);
    const std::string extension(extensions.empty() ? std::string_view{} : extensions.front());
    DMESSAGE("WARNING - " + name + extension + " has been read or written by this run; writing " + free + extension +
             " instead.");
    return free;
}
