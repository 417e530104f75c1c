// Small meshes for the interpolation tests, and a slow and plain interpolation to compare with.
#pragma once

#include "geometry/no_value.h"
#include "inputs/mesh.h"
#include "inputs/results.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

inline void addNode(Mesh& mesh, double x, double y) {
    mesh.nodes.resize(static_cast<std::size_t>(++mesh.nodeCount) + 1);
    mesh.nodes.back().x = x;
    mesh.nodes.back().y = y;
}
inline void addElement(Mesh& mesh, std::int32_t shape, std::array<std::int32_t, 9> nodes) {
    mesh.elements.resize(static_cast<std::size_t>(++mesh.elementCount) + 1);
    mesh.elements.back().shape = shape;
    mesh.elements.back().nodes = nodes;
}

inline Mesh meshOf(const std::vector<std::pair<double, double>>& nodes,
                   const std::vector<std::array<std::int32_t, 9>>& elements = {}) {
    Mesh mesh;
    mesh.elements.resize(1);
    for (const auto& [x, y] : nodes) addNode(mesh, x, y);
    for (const auto& element : elements) addElement(mesh, element[3] == 0 ? 3 : element[4] == 0 ? 4 : 9, element);
    return mesh;
}

/// A square field of cells x cells lattice squares, moved to (x0, y0) and turned about it.
struct Lattice {
    std::int32_t cells = 10;
    double side = 10.0;  // of one square, m
    double angle = 0.0;  // radians counter-clockwise
    double x0 = 0.0, y0 = 0.0;
    double jitter = 0.0;    // share of the side by which inner nodes are moved at random
    int triangleEvery = 2;  // every so many squares are two triangles, the others quads; 0: none is
};

inline Mesh latticeMesh(const Lattice& lattice) {
    Mesh mesh;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> shift(-lattice.jitter * lattice.side, lattice.jitter * lattice.side);
    const std::int32_t n = lattice.cells;
    for (std::int32_t j = 0; j <= n; ++j)
        for (std::int32_t i = 0; i <= n; ++i) {
            const bool inner = i > 0 && i < n && j > 0 && j < n;
            const double u = i * lattice.side + (inner ? shift(random) : 0.0);
            const double v = j * lattice.side + (inner ? shift(random) : 0.0);
            const double c = std::cos(lattice.angle), s = std::sin(lattice.angle);
            addNode(mesh, lattice.x0 + u * c - v * s, lattice.y0 + u * s + v * c);
        }
    for (std::int32_t j = 0; j < n; ++j)
        for (std::int32_t i = 0; i < n; ++i) {
            const std::int32_t a = j * (n + 1) + i + 1, b = a + 1, c = b + n + 1, d = a + n + 1;
            if (lattice.triangleEvery == 0 || (i + 3 * j) % lattice.triangleEvery != 0) {
                addElement(mesh, 4, {a, d, c, b});
            } else {  // both windings
                addElement(mesh, 3, {a, b, c});
                addElement(mesh, 3, {a, d, c});
            }
        }
    return mesh;
}

/// Results of one scalar per node, everything wet.
template <typename Value>
Results nodeResults(const Mesh& mesh, Value value) {
    Results results;
    results.nodes = mesh.nodeCount;
    results.cells = mesh.elementCount;
    results.x.assign(mesh.nodes.size(), NO_VALUE);
    results.wet.assign(mesh.elements.size(), 1);
    for (std::size_t id = 1; id < mesh.nodes.size(); ++id)
        results.x[id] = static_cast<float>(value(mesh.nodes[id].x, mesh.nodes[id].y));
    return results;
}

struct PlainSample {
    double value = -99999.0;
    std::int32_t element = 0;
};

/// Even-odd, points on the outline inside.
inline bool insideOutline(const Mesh& mesh, const std::array<std::int32_t, 9>& nodes, long double x, long double y) {
    bool inside = false;
    for (std::size_t i = 0; i < 4; ++i) {
        const MeshNode& a = mesh.nodes[static_cast<std::size_t>(nodes[i])];
        const MeshNode& b = mesh.nodes[static_cast<std::size_t>(nodes[(i + 1) % 4])];
        const long double along = ((x - a.x) * (b.x - a.x) + (y - a.y) * (b.y - a.y)) /
                                  ((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
        const long double nearest = std::clamp(along, 0.0L, 1.0L);
        if (std::hypot(x - a.x - nearest * (b.x - a.x), y - a.y - nearest * (b.y - a.y)) < 1e-7L) return true;
        if ((a.y > y) != (b.y > y) && x < a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y)) inside = !inside;
    }
    return inside;
}

/// Every element in order, every triangle by the weights of its corners, in extended precision.
inline PlainSample plainSample(const Mesh& mesh, const Results& results, double x, double y) {
    PlainSample best;
    for (std::int32_t id = 1; id <= mesh.elementCount; ++id) {
        const auto& nodes = mesh.elements[static_cast<std::size_t>(id)].nodes;
        if (results.wet[static_cast<std::size_t>(id)] == 0 || (nodes[3] > 0 && !insideOutline(mesh, nodes, x, y)))
            continue;
        double sum = 0.0;
        int count = 0;
        for (std::size_t out = nodes[3] > 0 ? 0 : 3; out < 4; ++out) {
            std::vector<std::size_t> at;
            for (std::size_t corner = 0; corner < 4; ++corner)
                if (corner != out) at.push_back(static_cast<std::size_t>(nodes[corner]));
            const auto area = [](long double ax, long double ay, long double bx, long double by, long double cx,
                                 long double cy) { return (bx - ax) * (cy - ay) - (cx - ax) * (by - ay); };
            const MeshNode &a = mesh.nodes[at[0]], &b = mesh.nodes[at[1]], &c = mesh.nodes[at[2]];
            const long double whole = area(a.x, a.y, b.x, b.y, c.x, c.y);
            const std::array<long double, 3> weights = {area(x, y, b.x, b.y, c.x, c.y) / whole,
                                                        area(a.x, a.y, x, y, c.x, c.y) / whole,
                                                        area(a.x, a.y, b.x, b.y, x, y) / whole};
            bool usable = true;
            long double value = 0.0;
            for (std::size_t i = 0; i < 3; ++i) {
                usable = usable && weights[i] >= -1e-9L && !IS_MISSING(results.x[at[i]]);
                value += weights[i] * static_cast<long double>(results.x[at[i]]);
            }
            if (!usable) continue;
            sum += static_cast<double>(value);
            ++count;
        }
        if (count > 0 && sum / count >= best.value - 1e-6) best = {std::max(best.value, sum / count), id};
    }
    return best;
}
