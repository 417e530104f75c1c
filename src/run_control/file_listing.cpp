#include "run_control/file_listing.h"

#include "geometry/no_value.h"
#include "run_control/output_names.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

/// The fewest digits that give the number back, in single precision where that holds it.
std::string shortest(double value) {
    std::array<char, 32> buffer;
    char* const end = buffer.data() + buffer.size();
    const auto single = static_cast<float>(value);
    const bool isSingle = static_cast<double>(single) == value;
    return {buffer.data(),
            (isSingle ? std::to_chars(buffer.data(), end, single) : std::to_chars(buffer.data(), end, value)).ptr};
}

/// A number that marks an output is no time.
std::string hoursText(const OutputTime& time, int decimals) {
    switch (time.kind) {
        case TimeKind::Ordinary: return TIME_TEXT(time, decimals, false) + " h";
        case TimeKind::Maximum: return "maximums";
        case TimeKind::Minimum: return "minimums";
        case TimeKind::TimeOfMaximum:
        case TimeKind::PeakLevel:
        case TimeKind::PeakVelocity: return "times of maximum";
        default: return "no output time";
    }
}

}  // namespace

void Listing::line(std::string_view text) {
    REPORT(text);
    text_.append(text) += '\n';
}

void Listing::times(std::span<const OutputTime> times, std::span<const double> stored, std::string_view unit) {
    const int decimals = TIME_DECIMALS(times, false);
    const auto shown = [&](std::size_t i) {
        return hoursText(times[i], decimals) + " (stored as " + shortest(stored[i]) + ")";
    };
    line("   Unit of time: " + std::string(unit.empty() ? "not given" : unit));
    line("   Number of times: " + std::to_string(times.size()));
    if (times.empty()) return;
    line("   First time: " + shown(0));
    line("   Last time: " + shown(times.size() - 1));
    line("   Times:");
    const std::size_t listed = allTimes_ ? times.size() : std::min(times.size(), MOST_LISTED_TIMES);
    for (std::size_t i = 0; i < listed; ++i) line("      " + std::to_string(i + 1) + "  " + shown(i));
    if (times.size() > listed) line("      ... and " + std::to_string(times.size() - listed) + " more");
}

void Listing::range(const ValueRange& range, bool known) {
    const auto shown = [&](float value) {
        return !known ? "-" : IS_MISSING(value) ? "none, all missing" : shortest(static_cast<double>(value));
    };
    line("   Smallest value: " + shown(range.least));
    line("   Largest value: " + shown(range.most));
}

void LIST_FILE(const InputFiles& files, bool verbose, bool allTimes) {
    Listing listing(allTimes);
    std::string kind;
    switch (files.kind) {
        case InputKind::Xmdf:
            kind = "xmdf";
            LIST_XMDF(files.input, verbose, listing);
            break;
        case InputKind::Dat:
            kind = "dat";
            LIST_DAT(files.input, verbose, listing);
            break;
        case InputKind::Mesh:
            kind = "2dm";
            LIST_MESH(files.input, listing);
            break;
    }
    const std::string name = OUTPUT_BASE(files.input) + "_" + kind + "_info.txt";
    BEGIN_OUTPUT(name);
    const int file = OPEN_FILE(name, "O ", "txt");
    WRITE_OR_STOP(file, listing.text());
    CLOSE_FILE(file);
    FINISH_OUTPUT(name);
}
