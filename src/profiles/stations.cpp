#include "profiles/stations.h"

#include "gis/fixed_text.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

namespace {

struct Place {
    double chainage = 0.0;
    StationKind kind = StationKind::Vertex;
};

bool isBefore(const Place& a, const Place& b) { return a.chainage < b.chainage; }

/// Markers strictly inside a line; a number that may be too large for an integer.
double markerCount(const ProfileLine& line, double distance) {
    return std::max(0.0, std::ceil(line.length() / distance) - 1.0);
}

/// Adds the chainages, which rise, to places that do too, but for those too near to a place or to the one added before.
void merge(std::vector<Place>& places, const std::vector<double>& chainages, StationKind kind, double distance) {
    std::vector<Place> added;
    auto next = places.begin();
    for (const double chainage : chainages) {
        while (next != places.end() && next->chainage < chainage) ++next;
        const bool nearNext = next != places.end() && next->chainage - chainage < distance;
        const bool nearLast = next != places.begin() && chainage - std::prev(next)->chainage < distance;
        const bool nearAdded = !added.empty() && chainage - added.back().chainage < distance;
        if (!nearNext && !nearLast && !nearAdded) added.push_back({chainage, kind});
    }
    std::vector<Place> both;
    both.reserve(places.size() + added.size());
    std::merge(places.begin(), places.end(), added.begin(), added.end(), std::back_inserter(both), isBefore);
    places = std::move(both);
}

std::vector<double> markersOf(const ProfileLine& line, double distance) {
    std::vector<double> markers(static_cast<std::size_t>(markerCount(line, distance)));
    for (std::size_t k = 0; k < markers.size(); ++k) markers[k] = static_cast<double>(k + 1) * distance;
    return markers;
}

std::vector<double> middlesOf(const ProfileLine& line, const std::vector<double>& crossings, double distance) {
    std::vector<double> middles;
    double from = 0.0;
    const auto endStretch = [&](double to) {
        if (to - from < distance) return;
        middles.push_back(from + 0.5 * (to - from));
        from = to;
    };
    for (const double crossing : crossings) endStretch(crossing);
    endStretch(line.length());
    return middles;
}

}  // namespace

void CHECK_MARKERS(const std::vector<ProfileLine>& lines, double markerDistance) {
    double count = 0.0;
    for (const ProfileLine& line : lines) count += markerCount(line, markerDistance);
    if (count <= MOST_MARKERS) return;
    RealText text;
    STOP_RUN("ERROR - Markers every " + AREAL8(markerDistance) + " along the profiles (-lpmd) would be " +
             std::string(REAL_TEXT(text, count, 0)) + " in number; at most " +
             AINTEGER8(static_cast<std::int64_t>(MOST_MARKERS)) + " are laid.");
}

Station STATION_AT(const ProfileLine& line, double chainage, double mergeDistance) {
    Station station;
    station.chainage = chainage;
    const LinePlace place = PLACE_AT(line, chainage);
    station.x = place.x;
    station.y = place.y;
    // A station that is as good as on a vertex looks along the segment behind it.
    const std::size_t from = SEGMENT_AT(line, chainage + mergeDistance), to = from + 1;
    const double length = std::hypot(line.x[to] - line.x[from], line.y[to] - line.y[from]);
    station.east = (line.x[to] - line.x[from]) / length;
    station.north = (line.y[to] - line.y[from]) / length;
    return station;
}

std::vector<Station> LAY_STATIONS(const ProfileLine& line, const std::vector<double>& crossings, bool middles,
                                  const StationRules& rules) {
    const double distance = rules.mergeDistance;
    std::vector<Place> places;
    merge(places, line.chainage, StationKind::Vertex, distance);
    merge(places, markersOf(line, rules.markerDistance), StationKind::Marker, distance);
    merge(places, middles ? middlesOf(line, crossings, distance) : crossings, StationKind::Edge, distance);
    std::vector<Station> stations;
    stations.reserve(places.size());
    for (const Place& place : places) {
        stations.push_back(STATION_AT(line, place.chainage, distance));
        stations.back().kind = place.kind;
    }
    return stations;
}
