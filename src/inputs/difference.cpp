#include "inputs/difference.h"

#include "inputs/wet_mesh.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace {

std::span<const std::uint8_t> flagsOf(const Results& results) {
    return results.cells > 0 ? std::span<const std::uint8_t>(results.wet) : std::span<const std::uint8_t>{};
}

/// 1 for the cells or nodes that are wet by these flags; empty: all.
std::vector<std::uint8_t> wetPlaces(const Mesh& mesh, const Results& results, std::span<const std::uint8_t> flags) {
    return results.cellCentred ? WET_CELLS(mesh, flags) : WET_NODES(mesh, flags);
}

bool hasValue(const Results& results, std::size_t i) {
    return !IS_MISSING(results.x[i]) && (!results.vector || !IS_MISSING(results.y[i]));
}

void uniteFlags(const DifferenceParts& parts, Results& difference) {
    const Results& now = parts.now;
    const Results& was = parts.was;
    difference.cells = std::max(now.cells, was.cells);
    difference.wet.assign(static_cast<std::size_t>(difference.cells) + 1, 1);
    if (now.cells == 0 || was.cells == 0) return;
    std::transform(now.wet.begin(), now.wet.end(), was.wet.begin(), difference.wet.begin(),
                   [](std::uint8_t a, std::uint8_t b) { return std::max(a, b); });
}

}  // namespace

std::vector<Wetness> WETNESS_OF(const Mesh& mesh, const Results& results) {
    const std::vector<std::uint8_t> inside = wetPlaces(mesh, results, {});
    const std::vector<std::uint8_t> wet = wetPlaces(mesh, results, flagsOf(results));
    std::vector<Wetness> wetness(results.x.size(), Wetness::Outside);
    for (std::size_t i = 1; i < wetness.size(); ++i)
        if (wet[i] != 0) wetness[i] = hasValue(results, i) ? Wetness::Wet : Wetness::Unknown;
        else if (inside[i] != 0) wetness[i] = Wetness::Dry;
    return wetness;
}

void SUBTRACT_RESULTS(const Mesh& mesh, const DifferenceParts& parts, Results& difference) {
    const std::vector<Wetness> now = WETNESS_OF(mesh, parts.now), was = WETNESS_OF(mesh, parts.was);
    difference.x.resize(parts.now.x.size());
    difference.y.resize(parts.now.y.size());
    for (std::size_t i = 1; i < difference.x.size(); ++i) {
        difference.x[i] = DIFFERENCE_OF(parts.now.x[i], now[i], parts.was.x[i], was[i], parts.dryIsZero);
        if (parts.now.vector) difference.y[i] = DIFFERENCE_OF(parts.now.y[i], now[i], parts.was.y[i], was[i], false);
    }
    uniteFlags(parts, difference);
}

Results CLASS_RESULTS(const Mesh& mesh, const DifferenceParts& parts) {
    const std::vector<Wetness> now = WETNESS_OF(mesh, parts.now), was = WETNESS_OF(mesh, parts.was);
    Results classes;
    classes.nodes = parts.now.nodes;
    classes.cellCentred = parts.now.cellCentred;
    classes.time = parts.now.time;
    classes.quantity = "Class";
    classes.x.resize(now.size(), NO_VALUE);
    for (std::size_t i = 1; i < now.size(); ++i) classes.x[i] = CLASS_OF(now[i], was[i]);
    uniteFlags(parts, classes);
    return classes;
}
