#include "raster/element_order.h"

#include "services/workers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr unsigned BITS = 12;                  // of a column and of a row of squares
constexpr std::uint32_t SQUARES = 1U << BITS;  // across and up
constexpr std::int32_t FEWEST = 1 << 14;       // elements; fewer are at hand in any order

/// Squares of the grid, and a line through all of them: to and fro in strips about as high as an element. Curves that
/// stay together in both directions, such as Hilbert's, take twice as long, since a grid's rows lie far apart.
class Squares {
public:
    Squares(const Mesh& mesh, const Grid& grid)
        : mesh_(mesh),
          xll_(grid.xll),
          yll_(grid.yll),
          perUnit_(SQUARES / (grid.cellSize * std::max(grid.ncols, grid.nrows))),
          height_(std::max(1U, static_cast<std::uint32_t>(SQUARES / std::sqrt(mesh.elementCount)))) {}

    /// Column and row of an element's first node.
    std::array<std::uint32_t, 2> of(std::int32_t id) const {
        const MeshNode& node =
            mesh_.nodes[static_cast<std::size_t>(mesh_.elements[static_cast<std::size_t>(id)].nodes[0])];
        return {square(node.x - xll_), square(node.y - yll_)};
    }

    /// Place of an element along the line.
    std::uint32_t placeOf(std::int32_t id) const {
        const auto [x, y] = of(id);
        const std::uint32_t strip = y / height_;
        return strip * SQUARES + (strip % 2 == 0 ? x : SQUARES - 1 - x);
    }

private:
    std::uint32_t square(double from) const {
        const double at = from * perUnit_;  // what is not a number goes to the first one
        return at > 0.0 ? static_cast<std::uint32_t>(std::min(at, SQUARES - 1.0)) : 0;
    }

    const Mesh& mesh_;
    double xll_, yll_, perUnit_;
    std::uint32_t height_;  ///< of a strip, squares
};

/// True when few elements lie far from the one before. Looks at some of them only.
bool isGood(const Mesh& mesh, const Squares& squares) {
    constexpr std::int32_t LOOKS = 4096, FAR = SQUARES / 32, MOST_FAR = LOOKS / 16;
    std::int32_t jumps = 0;
    for (std::int32_t look = 0; look < LOOKS; ++look) {
        const auto id = static_cast<std::int32_t>(1 + std::int64_t{mesh.elementCount - 1} * look / LOOKS);
        const auto [x, y] = squares.of(id);
        const auto [nextX, nextY] = squares.of(id + 1);
        const auto apart = [](std::uint32_t a, std::uint32_t b) { return a > b ? a - b : b - a; };
        jumps += apart(x, nextX) > FAR || apart(y, nextY) > FAR ? 1 : 0;
    }
    return jumps <= MOST_FAR;
}

/// Sorts by a part of the places, which keeps the order of equal ones.
void sortBy(unsigned shift, const std::vector<std::uint32_t>& places, std::vector<std::int32_t>& ids) {
    std::vector<std::size_t> starts(SQUARES + 1, 0);
    const auto bucket = [&](std::int32_t id) { return (places[static_cast<std::size_t>(id)] >> shift) % SQUARES; };
    for (const std::int32_t id : ids) ++starts[bucket(id) + 1];
    for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
    std::vector<std::int32_t> sorted(ids.size());
    for (const std::int32_t id : ids) sorted[starts[bucket(id)]++] = id;
    ids.swap(sorted);
}

}  // namespace

std::vector<std::int32_t> ELEMENT_ORDER(const Mesh& mesh, const Grid& grid) {
    if (mesh.elementCount < FEWEST) return {};
    const Squares squares(mesh, grid);
    if (isGood(mesh, squares)) return {};
    std::vector<std::uint32_t> places(mesh.elements.size());
    constexpr std::size_t AT_ONCE = 1U << 14;
    DO_PIECES((places.size() + AT_ONCE - 1) / AT_ONCE, [&](std::size_t piece) {
        for (std::size_t id = std::max<std::size_t>(piece * AT_ONCE, 1);
             id < std::min((piece + 1) * AT_ONCE, places.size()); ++id)
            places[id] = squares.placeOf(static_cast<std::int32_t>(id));
    });
    std::vector<std::int32_t> ids(static_cast<std::size_t>(mesh.elementCount));
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = static_cast<std::int32_t>(i) + 1;
    sortBy(0, places, ids);
    sortBy(BITS, places, ids);
    return ids;
}
