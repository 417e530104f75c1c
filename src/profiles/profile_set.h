// The stations of all profiles for values of one kind, and the columns collected there.
#pragma once

#include "profiles/calibration_points.h"
#include "profiles/profile_line.h"
#include "profiles/sampled_points.h"
#include "profiles/stations.h"

#include <cstddef>
#include <string>
#include <vector>

/// One column of a profile file.
struct ProfileColumn {
    std::string name;             ///< "Water_Level_Max"
    std::vector<float> stations;  ///< per station of all lines
    std::vector<float> points;    ///< per calibration point, at the point itself
    /// of a component along the line, which a point has for each of its lines: `points` is its eastward component, this
    /// the northward one; else empty
    std::vector<float> pointsNorth;
};

struct ProfileRules {
    StationRules stations;
    double searchDistance = 100.0;  ///< of calibration points from a line, map units
    int coordinateDecimals = 3;     ///< of chainages, coordinates and offsets
    int valueDecimals = 4;
};

/// Filled by MAKE_PROFILE_SET; the columns by the profile stage.
struct ProfileSet {
    PlanKind kind = PlanKind::Nodes;
    std::vector<Station> stations;          ///< of all lines, one after the other
    std::vector<std::size_t> firstStation;  ///< per line, and one more
    SampledPoints stationPlaces, pointPlaces;
    std::vector<float> elevation, pointElevation;  ///< bed; NO_VALUE outside the mesh
    std::vector<ProfileColumn> columns;
};

/// Lays and locates the stations of every line, with the calibration points near it (points: nullptr for none), and
/// samples the bed there. index: of any kind. A WARNING names each line wholly outside the mesh, or within what -rmp
/// removed; the run stops when all are.
ProfileSet MAKE_PROFILE_SET(const Mesh& mesh, const PointIndex& index, PlanKind kind,
                            const std::vector<ProfileLine>& lines, const CalibrationPoints* points,
                            const ProfileRules& rules);
