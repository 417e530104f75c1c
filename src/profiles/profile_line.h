// A polyline that results are profiled along, and places on it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Filled by MAKE_PROFILE_LINE: at least two vertices, no two neighbours alike.
struct ProfileLine {
    std::string name;
    std::vector<double> x, y;      ///< vertices, map units
    std::vector<double> chainage;  ///< of each vertex: distance along the line from the first, map units
    double length() const { return chainage.back(); }
};

/// The line through these vertices; repeated ones are left out. A line without length, or with a coordinate that is no
/// number, comes back with fewer than two vertices.
ProfileLine MAKE_PROFILE_LINE(std::string name, const std::vector<double>& x, const std::vector<double>& y);

/// The segment (from 0, between its vertices n and n + 1) that holds a chainage: of two that meet there the later one.
std::size_t SEGMENT_AT(const ProfileLine& line, double chainage);

struct LinePlace {
    double x = 0.0, y = 0.0;
};
/// The point at a chainage, which lies between 0 and the length. Vertices come back exactly.
LinePlace PLACE_AT(const ProfileLine& line, double chainage);
