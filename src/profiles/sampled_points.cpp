#include "profiles/sampled_points.h"

#include "geometry/no_value.h"
#include "geometry/vector_magnitude.h"

#include <utility>

namespace {

std::span<const PointPlace> placesOf(const SampledPoints& points, std::size_t point) {
    return std::span(points.places).subspan(points.starts[point], points.starts[point + 1] - points.starts[point]);
}

void sample(const SampledPoints& points, const Mesh& mesh, std::span<const float> nodeValues,
            std::span<const std::uint8_t> wet, const Results* components, PointValues& values) {
    const std::size_t count = points.count();
    values.value.resize(count);
    values.element.resize(count);
    values.east.assign(components != nullptr ? count : 0, NO_VALUE);
    values.north = values.east;
    for (std::size_t i = 0; i < count; ++i) {
        const auto places = placesOf(points, i);
        const PointSample found = SAMPLE_PLACES(points.index, mesh, places, nodeValues, wet, points.x[i], points.y[i]);
        values.value[i] = found.value;
        values.element[i] = found.element;
        if (components == nullptr || found.element == 0) continue;
        const PointPlace& place = places[found.place];
        values.east[i] = VALUE_IN_PLACE(points.index, mesh, place, components->x, points.x[i], points.y[i]);
        values.north[i] = VALUE_IN_PLACE(points.index, mesh, place, components->y, points.x[i], points.y[i]);
    }
}

void findMagnitudes(const Results& results, std::vector<float>& magnitudes) {
    magnitudes.assign(results.x.size(), NO_VALUE);
    for (std::size_t i = 1; i < results.x.size(); ++i)
        if (!IS_MISSING(results.x[i]) && !IS_MISSING(results.y[i]))
            magnitudes[i] = VECTOR_MAGNITUDE(results.x[i], results.y[i]);
}

}  // namespace

SampledPoints LOCATE_POINTS(const PointIndex& index, const Mesh& mesh, std::vector<double> x, std::vector<double> y) {
    SampledPoints points;
    points.index = index;
    points.x = std::move(x);
    points.y = std::move(y);
    points.starts.reserve(points.count() + 1);
    for (std::size_t i = 0; i < points.count(); ++i) {
        points.starts.push_back(static_cast<std::uint32_t>(points.places.size()));
        LOCATE_POINT(index, mesh, points.x[i], points.y[i], points.places);
    }
    points.starts.push_back(static_cast<std::uint32_t>(points.places.size()));
    return points;
}

void SAMPLE_RESULTS(const SampledPoints& points, const Mesh& mesh, const Results& results, PointValues& values) {
    const std::span<const std::uint8_t> wet =
        results.cells > 0 ? std::span<const std::uint8_t>(results.wet) : std::span<const std::uint8_t>{};
    if (!results.vector) return sample(points, mesh, results.x, wet, nullptr, values);
    findMagnitudes(results, values.magnitudes);
    sample(points, mesh, values.magnitudes, wet, &results, values);
}

void SAMPLE_BED(const SampledPoints& points, const Mesh& mesh, PointValues& values) {
    std::vector<float> bed(mesh.nodes.size());
    for (std::size_t id = 1; id < bed.size(); ++id) bed[id] = mesh.nodes[id].z;
    sample(points, mesh, bed, {}, nullptr, values);
}
