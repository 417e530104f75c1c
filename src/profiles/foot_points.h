// Which calibration points belong to a profile, and where along it.
#pragma once

#include "profiles/profile_line.h"
#include "profiles/stations.h"

#include <cstdint>
#include <vector>

/// Points in an order in which those near a line are found quickly. Filled by ORDER_POINTS.
struct OrderedPoints {
    std::vector<double> x, y;         ///< by rising x, map units; points whose coordinates are no numbers are left out
    std::vector<std::int32_t> point;  ///< number of each in the caller's list, from 0
};
OrderedPoints ORDER_POINTS(const std::vector<double>& x, const std::vector<double>& y);

/// A C station for every point within `distance` of the line (inclusive), by rising chainage, points of one chainage
/// in their order. Its place is the point's foot on the nearest segment, the first of several equally near, and no
/// further than the segment's ends; its offset is positive left of that segment.
std::vector<Station> FOOT_POINTS(const ProfileLine& line, const OrderedPoints& points, double distance,
                                 double mergeDistance);
