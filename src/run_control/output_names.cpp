#include "run_control/output_names.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>

namespace {

constexpr int MOST_TIME_DECIMALS = 6;
constexpr std::size_t HOUR_DIGITS = 3;  // before the point: names sort by time up to 999 hours
constexpr std::size_t SECOND_DIGITS = 6;

int timeDecimals = 2;

double shownTime(float time, bool seconds) {
    return static_cast<double>(time) * (seconds && !IS_TIME_MARKER(time) ? 3600.0 : 1.0);
}

/// Zeros in front until `digits` stand before the point; the sign stays first.
std::string padded(const std::string& text, std::size_t digits) {
    const std::size_t start = text.starts_with('-') ? 1 : 0;
    const std::size_t have = std::min(text.find('.'), text.size()) - start;
    const std::string zeros(have < digits ? digits - have : 0, '0');
    return text.substr(0, start) + zeros + text.substr(start);
}

std::string timeText(float time, bool seconds, int decimals) {
    std::string text = AREALD8(shownTime(time, seconds), decimals);
    if (text.ends_with('.')) text.pop_back();  // whole seconds: a point at the end would read as an empty extension
    return padded(text, seconds ? SECOND_DIGITS : HOUR_DIGITS);
}

/// A threshold behind its marker's offset, with the fewest decimals that single precision tells apart there: 100005 ->
/// "5", and 200000.1, which is stored as 200000.09375, -> "0.1".
std::string thresholdText(float time, float offset) {
    std::string text;
    for (int decimals = 0; decimals <= MOST_TIME_DECIMALS; ++decimals) {
        text = AREALD8(static_cast<double>(time) - static_cast<double>(offset), decimals);
        double shown = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), shown);
        if (static_cast<float>(static_cast<double>(offset) + shown) == time) break;
    }
    if (text.ends_with('.')) text.pop_back();
    return text;
}

bool near(float time, float marker) {
    return std::abs(static_cast<double>(time) - static_cast<double>(marker)) <= 0.001;
}
bool between(float time, float from, float to) { return time >= from && time < to; }

std::string withUnderscore(std::string text) {
    if (!text.ends_with('_')) text += '_';
    return text;
}

/// Base and time part together, since threshold outputs change the base.
std::string timedBase(const OutputLabel& label, bool seconds) {
    if (!label.timed) return label.base;
    const bool threshold = between(label.time, TIME_EXCEEDANCE, TIME_DURATION + 100000.0F) &&
                           !near(label.time, TIME_MAX_VALUE) && !near(label.time, TIME_MAX_SOURCE);
    // The name has lost its extension already; a dot inside it must not be taken for another one.
    const std::string base = threshold && label.thresholdCutsBase ? FILENAMEPATHNO_(label.base + ".dat") : label.base;
    std::string tag = TIME_TAG(label.time, seconds);
    if (tag.starts_with('_')) tag.erase(0, 1);
    return withUnderscore(base) + tag;
}

std::string componentTag(const RunOptions& options) {
    if (options.vx) return "_Vx";
    if (options.vy) return "_Vy";
    return options.vdir ? "_Vdir" : "";
}

bool inUse(const std::string& name, const std::vector<std::string_view>& extensions) {
    for (const std::string_view extension : extensions)
        if (NAME_IN_USE(name + std::string(extension))) return true;
    return false;
}

}  // namespace

void SET_TIME_PRECISION(const std::vector<float>& times, bool seconds) {
    for (timeDecimals = seconds ? 0 : 2; timeDecimals < MOST_TIME_DECIMALS; ++timeDecimals) {
        std::set<std::string> texts;
        std::set<float> distinct;
        for (const float time : times) {
            if (IS_TIME_MARKER(time) || !distinct.insert(time).second) continue;
            texts.insert(timeText(time, seconds, timeDecimals));
        }
        if (texts.size() == distinct.size()) return;
    }
}

std::string TIME_TAG(float time, bool seconds) {
    constexpr struct {
        float time;
        const char* tag;
    } TAGS[] = {
        {TIME_MAXIMUM, "Max"},
        {TIME_MINIMUM, "Min"},
        {TIME_OF_PEAK_LEVEL, "_time_hMax"},
        {TIME_OF_PEAK_VELOCITY, "_time_VMax"},
        {TIME_MAX_VALUE, "_MaxValue"},  // before the threshold ranges, which hold it
        {TIME_MAX_SOURCE, "_MaxSource"},
    };
    for (const auto& row : TAGS)
        if (near(time, row.time)) return row.tag;
    if (between(time, TIME_EXCEEDANCE, TIME_DURATION)) return "time_exceed_" + thresholdText(time, TIME_EXCEEDANCE);
    if (between(time, TIME_DURATION, TIME_DURATION + 100000.0F))
        return "durn_above_" + thresholdText(time, TIME_DURATION);
    return "_t" + timeText(time, seconds, timeDecimals);
}

std::string GRID_TAG(double cellSize) {
    std::array<char, 400> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), cellSize, std::chars_format::fixed).ptr;
    return "_g" + padded(std::string(buffer.data(), end), 3);
}

std::string WITHOUT_EXTENSION(const std::string& name, std::string_view extension) {
    return !extension.empty() && FILEEXT(name) == extension ? FILENAMEPATH(TRIMF(name)) : std::string(TRIMF(name));
}

std::string OUTPUT_EXTENSION(const RunOptions& options) {
    if (options.mif) return ".mif";
    if (options.shp) return ".shp";
    if (options.asc) return ".asc";
    if (options.flt) return ".flt";
    if (options.cp || options.lp || options.txt) return "";
    STOP_RUN("ERROR - Should not be here [adding extension type], contact " + std::string(SUPPORT_CONTACT));
}

void IGNORE_OUTPUT_NAME() {
    if (!OPTIONS().outputNameGiven) return;
    DMESSAGE("WARNING - Several outputs are written, output filename (-out) ignored.");
    DROP_OUTPUT_NAME();
}

std::string OUTPUT_NAME(const OutputLabel& label, const std::vector<std::string_view>& extensions) {
    const RunOptions& options = OPTIONS();
    std::string name;
    if (options.outputNameGiven && !options.allTimes) {
        name = WITHOUT_EXTENSION(options.outputName, extensions.empty() ? std::string_view{} : extensions.front());
    } else {
        name = timedBase(label, options.seconds);
        if (label.vector) name += componentTag(options);
        if (label.gridSize > 0.0 && !options.suppressGridSize) name += GRID_TAG(label.gridSize);
    }
    if (!inUse(name, extensions)) return name;
    std::string free;
    for (int copy = 2; free.empty() || inUse(free, extensions); ++copy) free = name + "_" + AINTEGER(copy);
    const std::string extension(extensions.empty() ? std::string_view{} : extensions.front());
    DMESSAGE("WARNING - " + name + extension + " has been read or written by this run; writing " + free + extension +
             " instead.");
    return free;
}
