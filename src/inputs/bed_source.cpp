#include "inputs/bed_source.h"

#include "geometry/no_value.h"
#include "inputs/output_types.h"

#include <utility>

BedSource::BedSource(const Mesh& mesh) : elevations_(mesh.nodes.size(), NO_VALUE) {
    const OutputType& type = *OUTPUT_TYPE_OF_CODE("ZH");
    Dataset dataset;
    dataset.quantity = type.name;
    dataset.code = type.code;
    dataset.values = mesh.nodeCount;
    dataset.bed = true;
    datasets_.push_back(std::move(dataset));
    for (std::size_t id = 1; id < elevations_.size(); ++id) elevations_[id] = mesh.nodes[id].z;
}

void BedSource::begin(std::size_t, bool, Results& results) {
    const Dataset& dataset = datasets_.front();
    ALLOCATE_RESULTS(dataset.values, 0, false, results);
    results.cornersOnly = true;
    results.quantity = dataset.quantity;
    results.code = dataset.code;
    taken_ = false;
}

bool BedSource::next(Results& results) {
    if (std::exchange(taken_, true)) return false;
    results.x = elevations_;
    results.endReached = true;
    return true;
}
