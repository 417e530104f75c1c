#include "profiles/profile_set.h"

#include "profiles/edge_crossings.h"
#include "profiles/foot_points.h"
#include "services/console.h"
#include "services/exits.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

void layLines(ProfileSet& set, const Mesh& mesh, const ElementBuckets& buckets, const std::vector<ProfileLine>& lines,
              const CalibrationPoints* points, const ProfileRules& rules) {
    const OrderedPoints ordered = points != nullptr ? ORDER_POINTS(points->x, points->y) : OrderedPoints{};
    for (const ProfileLine& line : lines) {
        set.firstStation.push_back(set.stations.size());
        const std::vector<Station> along = LAY_STATIONS(line, EDGE_CROSSINGS(line, buckets, mesh, set.kind),
                                                        set.kind == PlanKind::Cells, rules.stations);
        const std::vector<Station> feet =
            FOOT_POINTS(line, ordered, rules.searchDistance, rules.stations.mergeDistance);
        // A calibration point comes behind the station that it shares its place with.
        std::merge(along.begin(), along.end(), feet.begin(), feet.end(), std::back_inserter(set.stations),
                   [](const Station& a, const Station& b) { return a.chainage < b.chainage; });
    }
    set.firstStation.push_back(set.stations.size());
}

void checkCover(const ProfileSet& set, const std::vector<ProfileLine>& lines) {
    std::vector<std::string> outside;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        bool covered = false;
        for (std::size_t i = set.firstStation[line]; i < set.firstStation[line + 1] && !covered; ++i)
            covered = set.stationPlaces.isInMesh(i);
        if (!covered) outside.push_back(lines[line].name);
    }
    if (outside.size() == lines.size()) STOP_RUN("ERROR - No profile lies within the mesh; check the projection.");
    for (const std::string& name : outside)
        DMESSAGE("WARNING - Profile " + name + " lies outside the mesh, it holds no values.");
}

/// The bed at located points, over the nodes that the results use.
std::vector<float> bedAt(const SampledPoints& points, const PointIndex& index, const Mesh& mesh) {
    PointValues values;
    if (points.index.kind != PlanKind::Cells) {
        SAMPLE_BED(points, mesh, values);
    } else {
        PointIndex nodes = index;
        nodes.kind = PlanKind::Nodes;
        SAMPLE_BED(LOCATE_POINTS(nodes, mesh, points.x, points.y), mesh, values);
    }
    return std::move(values.value);
}

}  // namespace

ProfileSet MAKE_PROFILE_SET(const Mesh& mesh, const PointIndex& index, PlanKind kind,
                            const std::vector<ProfileLine>& lines, const CalibrationPoints* points,
                            const ProfileRules& rules) {
    ProfileSet set;
    set.kind = kind;
    PointIndex ofKind = index;
    ofKind.kind = kind;
    layLines(set, mesh, *index.buckets, lines, points, rules);
    std::vector<double> x, y;
    for (const Station& station : set.stations) {
        x.push_back(station.x);
        y.push_back(station.y);
    }
    set.stationPlaces = LOCATE_POINTS(ofKind, mesh, std::move(x), std::move(y));
    checkCover(set, lines);
    set.elevation = bedAt(set.stationPlaces, index, mesh);
    if (points != nullptr) {
        set.pointPlaces = LOCATE_POINTS(ofKind, mesh, points->x, points->y);
        set.pointElevation = bedAt(set.pointPlaces, index, mesh);
    }
    return set;
}
