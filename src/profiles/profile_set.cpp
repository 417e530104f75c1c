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

/// Per line: whether any of its stations has a place.
std::vector<bool> linesIn(const ProfileSet& set, const SampledPoints& places) {
    std::vector<bool> in;
    for (std::size_t line = 0; line + 1 < set.firstStation.size(); ++line) {
        std::size_t i = set.firstStation[line];
        while (i < set.firstStation[line + 1] && !places.isInMesh(i)) ++i;
        in.push_back(i < set.firstStation[line + 1]);
    }
    return in;
}

/// The stations in the mesh that -rmp took away.
SampledPoints placesInRemovedParts(const ProfileSet& set, const Mesh& mesh) {
    Mesh away = mesh;
    for (MeshElement& element : away.elements) element.removed = !element.removed;
    const SampledPoints& stations = set.stationPlaces;
    return LOCATE_POINTS(INDEX_ELEMENTS(away, PlanKind::Corners), away, stations.x, stations.y);
}

void checkCover(const ProfileSet& set, const Mesh& mesh, const std::vector<ProfileLine>& lines) {
    const std::vector<bool> covered = linesIn(set, set.stationPlaces);
    const bool any = std::find(covered.begin(), covered.end(), true) != covered.end();
    if (any && std::find(covered.begin(), covered.end(), false) == covered.end()) return;
    const std::vector<bool> removed = linesIn(set, placesInRemovedParts(set, mesh));
    if (!any && std::find(removed.begin(), removed.end(), true) == removed.end())
        STOP_RUN("ERROR - No profile lies within the mesh; check the projection.");
    if (!any) STOP_RUN("ERROR - No profile lies within what -rmp leaves of the mesh.");
    for (std::size_t line = 0; line < lines.size(); ++line)
        if (!covered[line])
            DMESSAGE("WARNING - Profile " + lines[line].name +
                     (removed[line] ? " lies in removed parts of the mesh (-rmp)" : " lies outside the mesh") +
                     ", it holds no values.");
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
    checkCover(set, mesh, lines);
    set.elevation = bedAt(set.stationPlaces, index, mesh);
    if (points != nullptr) {
        set.pointPlaces = LOCATE_POINTS(ofKind, mesh, points->x, points->y);
        set.pointElevation = bedAt(set.pointPlaces, index, mesh);
    }
    return set;
}
