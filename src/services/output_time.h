// Output times: hours, and the special outputs that results files mark by a number in place of a time.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

constexpr double SECONDS_PER_HOUR = 3600.0, SECONDS_PER_DAY = 86400.0;

enum class TimeKind : std::uint8_t {
    Ordinary,
    Maximum,        ///< the stored maximums
    Minimum,        ///< the stored minimums
    TimeOfMaximum,  ///< the times at which they occurred, of a .dat
    PeakLevel,      ///< the time of the highest water level, as all below of an .xmdf
    PeakVelocity,
    MaxValue,
    MaxSource,
    Exceedance,  ///< the time at which a threshold was exceeded
    Duration     ///< the time above a threshold
};

/// An output time of a source, and of what kind it is. Only an ordinary one is a time that can be converted.
struct OutputTime {
    double number = 0.0;  ///< Ordinary: hours; else the marker as stored, thresholds added to its start
    TimeKind kind = TimeKind::Ordinary;
    bool ordinary() const { return kind == TimeKind::Ordinary; }
    bool operator==(const OutputTime&) const = default;
};

constexpr OutputTime TIME_MAXIMUM{99999.0, TimeKind::Maximum};
constexpr OutputTime TIME_MINIMUM{-99999.0, TimeKind::Minimum};
constexpr OutputTime TIME_OF_MAXIMUM{99999.1, TimeKind::TimeOfMaximum};
constexpr OutputTime TIME_OF_PEAK_LEVEL{900001.0, TimeKind::PeakLevel};
constexpr OutputTime TIME_OF_PEAK_VELOCITY{900002.0, TimeKind::PeakVelocity};
constexpr double TIME_EXCEEDANCE = 100000.0;  ///< plus the threshold, up to below 200000
constexpr double TIME_DURATION = 200000.0;    ///< plus the threshold, up to below 300000

/// The numbers that mark an output in a source: of output times the first three alone, since in seconds any other is a
/// time like its neighbours; of a folder of derived times all.
enum class TimeMarkers : std::uint8_t { Extremes, All };

/// A time as a user asks for it. The number may be a marker, so it is kept as typed beside its hours.
struct WantedTime {
    float typed = 0.0F;  ///< hours, seconds with -sec, or a marker
    double hours = 0.0;
    /// Maximum, Minimum or TimeOfMaximum for their markers, else Ordinary.
    TimeKind kind() const;
    /// Hours between it and an ordinary time, or between the markers as numbers.
    double away(const OutputTime& time) const;
};

/// The times of one source in file order: markers are told by the stored number, all others become hours. In a file
/// that counts seconds, an extreme's number amid evenly spaced times is an ordinary second.
std::vector<OutputTime> OUTPUT_TIMES(std::span<const double> stored, double secondsPerUnit, TimeMarkers markers);

/// Tolerance of a search in these times, in hours: 0.001, or a share of the smallest distance above zero between two
/// ordinary ones; up to half of it no two are taken for each other.
double TIME_TOLERANCE(std::span<const OutputTime> times, double share = 0.5);

/// The fewest decimals, 0 to 6, that tell the ordinary times apart in hours, or in seconds.
int TIME_DECIMALS(std::span<const OutputTime> times, bool seconds);

/// The number that users see: hours, or seconds; markers as they are.
double SHOWN_TIME(const OutputTime& time, bool seconds);
/// SHOWN_TIME for a message: with as many decimals as its magnitude deserves (AREAL), or `decimals` if those are more:
/// 2.5 -> "2.5", 10.0002778 with 6 -> "10.000278".
std::string TIME_TEXT(const OutputTime& time, int decimals, bool seconds);
