#include "services/output_time.h"

#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double LARGEST_TOLERANCE = 0.001;  // hours
constexpr int MOST_DECIMALS = 6;
/// Single precision stores 99999.1 as 99999.1015625.
constexpr double SAME_MARKER = 0.01;

constexpr OutputTime EXTREMES[] = {TIME_MAXIMUM, TIME_MINIMUM, TIME_OF_MAXIMUM};
constexpr OutputTime DERIVED[] = {
    TIME_OF_PEAK_LEVEL, TIME_OF_PEAK_VELOCITY, {111111.0, TimeKind::MaxValue}, {222222.0, TimeKind::MaxSource}};

TimeKind kindAmong(std::span<const OutputTime> markers, double number) {
    for (const OutputTime& marker : markers)
        if (std::abs(number - marker.number) < SAME_MARKER) return marker.kind;
    return TimeKind::Ordinary;
}

TimeKind kindOf(double number, TimeMarkers markers) {
    TimeKind kind = kindAmong(EXTREMES, number);
    if (kind != TimeKind::Ordinary || markers == TimeMarkers::Extremes) return kind;
    kind = kindAmong(DERIVED, number);  // before the ranges of thresholds, which hold two of them
    if (kind != TimeKind::Ordinary || number < TIME_EXCEEDANCE || number >= TIME_DURATION + 100000.0) return kind;
    return number < TIME_DURATION ? TimeKind::Exceedance : TimeKind::Duration;
}

/// Steps that a run spaced evenly differ by no more than its time step and the file's precision.
bool passedEvenly(std::span<const double> stored, std::size_t i) {
    constexpr double UNEVEN = 0.1;
    if (i == 0 || i + 1 == stored.size()) return false;
    const double before = stored[i] - stored[i - 1];
    return before > 0.0 && std::abs(stored[i + 1] - stored[i] - before) < UNEVEN * before;
}

/// Hours of the ordinary times from the lowest, each once: sums of time steps that should be equal differ by less.
std::vector<double> distinctHours(std::span<const OutputTime> times) {
    constexpr double SAME_HOUR = 1.0e-7;
    std::vector<double> hours;
    for (const OutputTime& time : times)
        if (time.ordinary()) hours.push_back(time.number);
    std::sort(hours.begin(), hours.end());
    const auto same = [](double a, double b) { return b - a < SAME_HOUR; };
    hours.erase(std::unique(hours.begin(), hours.end(), same), hours.end());
    return hours;
}

}  // namespace

TimeKind WantedTime::kind() const { return kindAmong(EXTREMES, static_cast<double>(typed)); }

double WantedTime::away(const OutputTime& time) const {
    return std::abs(time.number - (time.ordinary() ? hours : static_cast<double>(typed)));
}

std::vector<OutputTime> OUTPUT_TIMES(std::span<const double> stored, double secondsPerUnit, TimeMarkers markers) {
    std::vector<OutputTime> times;
    times.reserve(stored.size());
    for (std::size_t i = 0; i < stored.size(); ++i) {
        TimeKind kind = kindOf(stored[i], markers);
        if (markers == TimeMarkers::Extremes && secondsPerUnit == 1.0 && passedEvenly(stored, i))
            kind = TimeKind::Ordinary;
        const bool converted = kind == TimeKind::Ordinary && secondsPerUnit != SECONDS_PER_HOUR;
        times.push_back({converted ? stored[i] * secondsPerUnit / SECONDS_PER_HOUR : stored[i], kind});
    }
    return times;
}

double TIME_TOLERANCE(std::span<const OutputTime> times, double share) {
    const std::vector<double> hours = distinctHours(times);
    double tolerance = LARGEST_TOLERANCE;
    for (std::size_t i = 1; i < hours.size(); ++i) tolerance = std::min(tolerance, (hours[i] - hours[i - 1]) * share);
    return tolerance;
}

int TIME_DECIMALS(std::span<const OutputTime> times, bool seconds) {
    const std::vector<double> hours = distinctHours(times);
    const auto text = [&](double hour, int decimals) { return AREALD8(SHOWN_TIME({hour}, seconds), decimals); };
    for (int decimals = 0; decimals < MOST_DECIMALS; ++decimals) {
        // rounding keeps the order, so only neighbours can read alike
        const auto alike = [&](double a, double b) { return text(a, decimals) == text(b, decimals); };
        if (std::adjacent_find(hours.begin(), hours.end(), alike) == hours.end()) return decimals;
    }
    return MOST_DECIMALS;
}

double SHOWN_TIME(const OutputTime& time, bool seconds) {
    return seconds && time.ordinary() ? time.number * SECONDS_PER_HOUR : time.number;
}

std::string TIME_TEXT(const OutputTime& time, int decimals, bool seconds) {
    const double shown = SHOWN_TIME(time, seconds);
    const std::string plain = AREAL(static_cast<float>(shown));
    if (!time.ordinary()) return plain;
    std::string text = AREALD8(shown, decimals);
    if (decimals > 0) text.resize(text.find_last_not_of('0') + 1);
    return text.size() > plain.size() ? text : plain;
}
