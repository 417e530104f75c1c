#include "profiles/foot_points.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace {

struct Foot {
    double squared = 0.0;  ///< distance from the point
    double chainage = 0.0, x = 0.0, y = 0.0;
    bool right = false;
};

Foot footOn(const ProfileLine& line, std::size_t segment, double x, double y) {
    const double x0 = line.x[segment], y0 = line.y[segment];
    const double dx = line.x[segment + 1] - x0, dy = line.y[segment + 1] - y0;
    const double share = ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy);
    Foot foot;
    foot.right = dx * (y - y0) - dy * (x - x0) < 0.0;
    // At the ends the vertex itself, so that segments that meet there are equally near.
    if (share <= 0.0) {
        foot.chainage = line.chainage[segment];
        foot.x = x0;
        foot.y = y0;
    } else if (share >= 1.0) {
        foot.chainage = line.chainage[segment + 1];
        foot.x = line.x[segment + 1];
        foot.y = line.y[segment + 1];
    } else {
        foot.chainage = line.chainage[segment] + share * (line.chainage[segment + 1] - line.chainage[segment]);
        foot.x = x0 + share * dx;
        foot.y = y0 + share * dy;
    }
    foot.squared = (x - foot.x) * (x - foot.x) + (y - foot.y) * (y - foot.y);
    return foot;
}

Foot nearestFoot(const ProfileLine& line, double x, double y) {
    Foot nearest = footOn(line, 0, x, y);
    for (std::size_t segment = 1; segment + 1 < line.x.size(); ++segment) {
        const Foot foot = footOn(line, segment, x, y);
        if (foot.squared < nearest.squared) nearest = foot;
    }
    return nearest;
}

Station stationOf(const ProfileLine& line, const Foot& foot, std::int32_t point, double mergeDistance) {
    Station station = STATION_AT(line, foot.chainage, mergeDistance);
    station.x = foot.x;
    station.y = foot.y;
    station.kind = StationKind::Point;
    station.point = point;
    station.offset = std::sqrt(foot.squared) * (foot.right ? -1.0 : 1.0);
    return station;
}

}  // namespace

OrderedPoints ORDER_POINTS(const std::vector<double>& x, const std::vector<double>& y) {
    OrderedPoints ordered;
    for (std::size_t i = 0; i < x.size(); ++i)
        if (std::isfinite(x[i]) && std::isfinite(y[i])) ordered.point.push_back(static_cast<std::int32_t>(i));
    std::stable_sort(ordered.point.begin(), ordered.point.end(), [&](std::int32_t a, std::int32_t b) {
        return x[static_cast<std::size_t>(a)] < x[static_cast<std::size_t>(b)];
    });
    for (const std::int32_t point : ordered.point) {
        ordered.x.push_back(x[static_cast<std::size_t>(point)]);
        ordered.y.push_back(y[static_cast<std::size_t>(point)]);
    }
    return ordered;
}

std::vector<Station> FOOT_POINTS(const ProfileLine& line, const OrderedPoints& points, double distance,
                                 double mergeDistance) {
    const auto [west, east] = std::minmax_element(line.x.begin(), line.x.end());
    const auto [south, north] = std::minmax_element(line.y.begin(), line.y.end());
    const double reach = distance + mergeDistance * 0.001;  // a point exactly at the distance counts despite rounding
    std::vector<Station> stations;
    const auto first = std::lower_bound(points.x.begin(), points.x.end(), *west - reach);
    for (auto i = static_cast<std::size_t>(first - points.x.begin());
         i < points.x.size() && points.x[i] <= *east + reach; ++i) {
        if (points.y[i] < *south - reach || points.y[i] > *north + reach) continue;
        const Foot foot = nearestFoot(line, points.x[i], points.y[i]);
        if (std::sqrt(foot.squared) <= reach) stations.push_back(stationOf(line, foot, points.point[i], mergeDistance));
    }
    std::sort(stations.begin(), stations.end(), [](const Station& a, const Station& b) {
        return a.chainage != b.chainage ? a.chainage < b.chainage : a.point < b.point;
    });
    return stations;
}
