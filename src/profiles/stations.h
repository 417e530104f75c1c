// The stations of a profile: where along a line its values are taken.
#pragma once

#include "profiles/profile_line.h"

#include <cstdint>
#include <string_view>
#include <vector>

constexpr double MOST_MARKERS = 10'000'000.0;  ///< along all profiles of a run; more stop it

enum class StationKind : char {
    Vertex = 'V',  ///< of the line
    Marker = 'M',  ///< at whole multiples of the marker distance
    Edge = 'E',    ///< a crossing with an edge of the mesh, or the middle of a cell's stretch of the line
    Point = 'C'    ///< the foot of a calibration point
};

struct Station {
    double chainage = 0.0, x = 0.0, y = 0.0;  ///< map units
    double east = 0.0, north = 0.0;  ///< unit direction of the segment that begins here; the last one's at the end
    StationKind kind = StationKind::Vertex;
    std::int32_t point = -1;  ///< of a calibration point: its number from 0
    double offset = 0.0;      ///< of a calibration point: distance from the line, positive to the left
};

struct StationRules {
    double markerDistance = 100.0;  ///< map units, above 0
    double mergeDistance = 0.001;   ///< stations nearer than this are one, map units
};

/// Stops the run when the markers of all lines together are more than MOST_MARKERS.
void CHECK_MARKERS(const std::vector<ProfileLine>& lines, double markerDistance);

/// V, M and E stations with rising chainage. Of stations that merge a vertex stands before a marker before an edge, and
/// the first of a kind before the next. crossings: EDGE_CROSSINGS of the line. middles: an E station in the middle of
/// each stretch between crossings (the ends of the line count as such) in place of one at each crossing.
std::vector<Station> LAY_STATIONS(const ProfileLine& line, const std::vector<double>& crossings, bool middles,
                                  const StationRules& rules);

/// A station at a chainage, of no particular kind.
Station STATION_AT(const ProfileLine& line, double chainage, double mergeDistance);
