#include "raster/grid_fill.h"

#include "geometry/no_value.h"
#include "raster/element_order.h"
#include "raster/element_pieces.h"
#include "raster/kept_chunks.h"
#include "raster/plan_rows.h"
#include "services/console.h"
#include "services/phases.h"
#include "services/workers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace {

/// Lets directions run on smoothly inside an element: corners more than half a turn from the first come round to it.
/// Nothing is left at or below -180, so that taking a turn off whatever passes 180 brings every mean back into (-180,
/// 180].
void unwind(CornerValues& values, std::size_t corners, unsigned usable) {
    // The one corner without a value may be the first; any other serves in its place, where no triangle asks for it.
    for (std::size_t i = 0; i < 4; ++i)
        if (usable == 1U << i) values[i] = values[(i + 1) % 4];
    const float first = values[0];
    bool belowRange = false;
    for (std::size_t i = 1; i < corners; ++i) {
        if (values[i] < first - 180.0F) values[i] += 360.0F;
        if (values[i] > first + 180.0F) values[i] -= 360.0F;
        belowRange = belowRange || values[i] <= -180.0F;
    }
    if (!belowRange) return;
    for (std::size_t i = 0; i < corners; ++i) values[i] += 360.0F;
}

/// Zero has no sign on a grid: of two that meet at a cell the order of the elements would decide.
float unsignedZero(float value) { return value + 0.0F; }

void raise(float& cell, float value) { cell = value > cell ? value : cell; }

/// Lays the pieces of chunks onto some rows of a grid.
class Filler {
public:
    Filler(PlanKind kind, const Mesh& mesh, const GridInput& input, RowRange own, Grid& grid)
        : kind_(kind), mesh_(mesh), input_(input), own_(own), grid_(grid) {}

    void fill(const PlanStretch& chunk);

private:
    /// Rows of one piece, and the sets of their cells where it has them.
    struct Rows {
        std::int32_t number;  ///< of the first one, from 1
        const PlanRow* begin;
        const PlanRow* end;
        const std::uint8_t* sets;
    };
    Rows ownRows(const PlanPiece& piece, const PlanRow* rows, const std::uint8_t* sets) const;
    void fillWithValue(const PlanPiece& piece, Rows rows, float value);
    void fillTriangle(Rows rows, const CornerValues& values);
    void fillQuad(const PlanPiece& piece, Rows rows, const CornerValues& values, unsigned usable);
    float* cellsOf(const PlanRow& row, std::int32_t number) {
        return grid_.values.data() + CELL_INDEX(grid_, row.column, number);
    }

    PlanKind kind_;
    const Mesh& mesh_;
    const GridInput& input_;
    RowRange own_;
    Grid& grid_;
    PieceShape shape_;
    std::array<MeanPlane, 16> means_;  // by set of triangles
};

/// Those of the piece's rows that are this filler's.
Filler::Rows Filler::ownRows(const PlanPiece& piece, const PlanRow* rows, const std::uint8_t* sets) const {
    const std::int32_t end = piece.firstRow + static_cast<std::int32_t>(piece.rows);
    Rows own{piece.firstRow, rows, rows + piece.rows, sets};
    if (end > own_.end) own.end -= end - std::max(own_.end, piece.firstRow);
    for (; own.number < own_.first && own.begin != own.end; ++own.number, ++own.begin)
        if (piece.sets != 0) own.sets += own.begin->cells;
    return own;
}

void Filler::fill(const PlanStretch& chunk) {
    if (chunk.covered.end <= own_.first || chunk.covered.first >= own_.end) return;
    const PlanRow* next = chunk.rows.data();
    const std::uint8_t* sets = chunk.sets.data();
    for (const PlanPiece& piece : chunk.pieces) {
        const PlanRow* const all = std::exchange(next, next + piece.rows);
        const std::uint8_t* const allSets = sets;
        if (piece.sets != 0)
            for (const PlanRow* row = all; row != next; ++row) sets += row->cells;
        if (!input_.wet.empty() && input_.wet[static_cast<std::size_t>(piece.element)] == 0) continue;
        const Rows rows = ownRows(piece, all, allSets);
        if (rows.begin == rows.end) continue;
        if (kind_ == PlanKind::Cells) {
            const float value = unsignedZero(input_.values[static_cast<std::size_t>(piece.element)]);
            if (!IS_MISSING(value)) fillWithValue(piece, rows, value);
            continue;
        }
        CornerValues values{};
        for (std::size_t i = 0; i < static_cast<std::size_t>(piece.corners); ++i)
            values[i] = unsignedZero(input_.values[static_cast<std::size_t>(piece.nodes[i])]);
        const unsigned usable = TRIANGLES_WITH_VALUES(piece.corners, values);
        if (usable == 0) continue;
        if (input_.directions) unwind(values, static_cast<std::size_t>(piece.corners), usable);
        PLACE_PIECE(mesh_, piece.corners, piece.nodes, shape_);
        if (piece.corners == 3) fillTriangle(rows, values);
        else fillQuad(piece, rows, values, usable);
    }
}

void Filler::fillWithValue(const PlanPiece& piece, Rows rows, float value) {
    for (; rows.begin != rows.end; ++rows.begin, ++rows.number) {
        float* cells = cellsOf(*rows.begin, rows.number);
        for (std::uint32_t i = 0; i < rows.begin->cells; ++i)
            if (piece.sets == 0 || *rows.sets++ != 0) raise(cells[i], value);
    }
}

void Filler::fillTriangle(Rows rows, const CornerValues& values) {
    const Plane plane = TRIANGLE_PLANE(shape_, 3, values);
    const float lowest = std::min(std::min(values[0], values[1]), values[2]);
    const float highest = std::max(std::max(values[0], values[1]), values[2]);
    const double step = plane.east * grid_.cellSize;
    for (; rows.begin != rows.end; ++rows.begin, ++rows.number) {
        const double first = plane.value + plane.east * (CELL_X(grid_, rows.begin->column) - shape_.x0) +
                             plane.north * (CELL_Y(grid_, rows.number) - shape_.y0);
        float* cells = cellsOf(*rows.begin, rows.number);
        for (std::uint32_t i = 0; i < rows.begin->cells; ++i)
            raise(cells[i], std::min(std::max(static_cast<float>(first + step * i), lowest), highest));
    }
}

void Filler::fillQuad(const PlanPiece& piece, Rows rows, const CornerValues& values, unsigned usable) {
    const std::array<Plane, 4> planes = {TRIANGLE_PLANE(shape_, 0, values), TRIANGLE_PLANE(shape_, 1, values),
                                         TRIANGLE_PLANE(shape_, 2, values), TRIANGLE_PLANE(shape_, 3, values)};
    for (unsigned left = piece.sets; left != 0; left &= left - 1) {
        const auto set = static_cast<unsigned>(std::countr_zero(left));
        means_[set] = MEAN_PLANE(set & usable, planes, values);
    }
    for (; rows.begin != rows.end; ++rows.begin, ++rows.number) {
        const double east = CELL_X(grid_, rows.begin->column) - shape_.x0;
        const double north = CELL_Y(grid_, rows.number) - shape_.y0;
        float* cells = cellsOf(*rows.begin, rows.number);
        for (std::uint32_t i = 0; i < rows.begin->cells; ++i)
            raise(cells[i], means_[*rows.sets++].AT(east + grid_.cellSize * i, north));
    }
}

/// Lays chunks on the threads of the run, each of which fills rows of its own.
class RowsTogether {
public:
    RowsTogether(PlanKind kind, const Mesh& mesh, const GridInput& input, Grid& grid)
        : kind_(kind), mesh_(mesh), input_(input), grid_(grid) {}

    void fill(std::span<const PlanStretch> chunks) {
        constexpr std::size_t SHARES_A_JOB = 4;  // some rows have more to fill than others
        RowRange covered{std::numeric_limits<std::int32_t>::max(), 0};
        for (const PlanStretch& chunk : chunks) {
            if (chunk.pieces.empty()) continue;
            covered.first = std::min(covered.first, chunk.covered.first);
            covered.end = std::max(covered.end, chunk.covered.end);
        }
        if (covered.first >= covered.end) return;
        const auto rows = static_cast<std::size_t>(covered.end - covered.first);
        const auto jobs = static_cast<std::size_t>(JOBS());
        const std::size_t shares = jobs == 1 ? 1 : std::min(rows, SHARES_A_JOB * jobs);
        DO_PIECES(shares, [&](std::size_t share) {
            const auto from = static_cast<std::int32_t>(rows * share / shares);
            const auto to = static_cast<std::int32_t>(rows * (share + 1) / shares);
            Filler filler(kind_, mesh_, input_, {covered.first + from, covered.first + to}, grid_);
            for (const PlanStretch& chunk : chunks) filler.fill(chunk);
        });
    }

private:
    PlanKind kind_;
    const Mesh& mesh_;
    const GridInput& input_;
    Grid& grid_;
};

/// The next ranges of elements to plan, taken off `left`: as many as are worked on together.
std::vector<ElementRange> nextRanges(std::vector<ElementRange>& left) {
    constexpr std::size_t CHUNKS_A_JOB = 4;
    const std::size_t most = JOBS() == 1 ? 1 : CHUNKS_A_JOB * static_cast<std::size_t>(JOBS());
    std::vector<ElementRange> ranges;
    while (ranges.size() < most && !left.empty()) {
        ElementRange& from = left.back();
        const std::int32_t count = std::min(from.end - from.first, ELEMENTS_AT_A_TIME);
        ranges.push_back({from.first, from.first + count});
        from.first += count;
        if (from.first == from.end) left.pop_back();
    }
    return ranges;
}

/// Every value missing.
void empty(std::vector<float>& values) {
    constexpr std::size_t PART = std::size_t{1} << 20;
    DO_PIECES((values.size() + PART - 1) / PART, [&](std::size_t part) {
        std::fill_n(values.data() + part * PART, std::min(PART, values.size() - part * PART), NO_VALUE);
    });
}

/// Lays all elements, less the dry ones of `input`.
void fillPlanned(GridPlan& plan, const Mesh& mesh, const GridInput& input, Grid& grid, Progress& progress) {
    if (!std::exchange(plan.begun, true)) {
        plan.rest = {{1, mesh.elementCount + 1}};
        plan.order = ELEMENT_ORDER(mesh, grid);
    }
    RowsTogether rows(plan.kind, mesh, input, grid);
    rows.fill(plan.chunks);
    std::vector<ElementRange> left = std::exchange(plan.rest, {});
    std::vector<PlanChunk> chunks;
    std::vector<PlanStretch> stretches;
    std::int64_t done = 0;
    while (!left.empty()) {
        // A chunk that will be kept must serve other times, when other elements are wet.
        const bool keeping = plan.memoryLimit > 0;
        const std::vector<ElementRange> ranges = nextRanges(left);
        chunks.resize(std::max(chunks.size(), ranges.size()));
        {
            const InPhase planning(Phase::Plan);
            DO_PIECES(ranges.size(), [&](std::size_t i) {
                PLAN_CHUNK(mesh, grid, plan.kind, plan.order, ranges[i], {1, grid.nrows + 1},
                           keeping || input.wet.empty() ? nullptr : input.wet.data(), chunks[i]);
            });
        }
        stretches.clear();
        for (std::size_t i = 0; i < ranges.size(); ++i) stretches.push_back(STRETCH_OF(chunks[i]));
        rows.fill(stretches);
        const std::size_t kept = keeping ? KEEP_CHUNKS(plan, {chunks.data(), ranges.size()}) : 0;
        for (std::size_t i = ranges.size(); i-- > 0;) {
            if (i >= kept) plan.rest.push_back(chunks[i].elements);
            done += chunks[i].elements.end - chunks[i].elements.first;
            if (chunks[i].elements.end < ranges[i].end) left.push_back({chunks[i].elements.end, ranges[i].end});
        }
        progress.show(done);
    }
}

/// The wet elements less those that this time lays by their corners, and these.
struct WetParts {
    explicit WetParts(const GridInput& input) : others(input.cornerQuads.size(), 0), cornerQuads(others) {
        for (std::size_t id = 1; id < others.size(); ++id)
            if (input.wet.empty() || input.wet[id] != 0) (input.cornerQuads[id] != 0 ? cornerQuads : others)[id] = 1;
    }
    std::vector<std::uint8_t> others, cornerQuads;
};

/// The plan serves every time, so those few elements that a time lays by their corners are planned by themselves.
void fillWithCornerQuads(GridPlan& plan, const Mesh& mesh, const GridInput& input, Grid& grid, Progress& progress) {
    const WetParts parts(input);
    GridInput part = input;
    part.wet = parts.others;
    fillPlanned(plan, mesh, part, grid, progress);
    part.wet = parts.cornerQuads;
    GridPlan once;
    once.kind = PlanKind::Corners;
    fillPlanned(once, mesh, part, grid, progress);
}

/// Plans and lays the elements that come near some rows, with the memory of one chunk.
void fillRows(PlanKind kind, const Mesh& mesh, const GridInput& input, RowRange own, Grid& grid) {
    Filler filler(kind, mesh, input, own, grid);
    PlanChunk chunk;
    for (ElementRange next; next.first <= mesh.elementCount; next.first = chunk.elements.end) {
        next.end = std::min(mesh.elementCount - next.first + 1, ELEMENTS_AT_A_TIME) + next.first;
        PLAN_CHUNK(mesh, grid, kind, {}, next, own, input.wet.empty() ? nullptr : input.wet.data(), chunk);
        filler.fill(STRETCH_OF(chunk));
    }
}

}  // namespace

std::vector<std::uint8_t> CORNER_QUADS(const Mesh& mesh, std::span<const float> values,
                                       std::span<const std::uint8_t> wet) {
    std::vector<std::uint8_t> quads;
    if (!mesh.highResolution) return quads;
    for (std::size_t id = 1; id < mesh.elements.size(); ++id) {
        if ((!wet.empty() && wet[id] == 0) || !LACKS_INNER_VALUE(mesh.elements[id], values)) continue;
        quads.resize(mesh.elements.size(), 0);
        quads[id] = 1;
    }
    return quads;
}

void FILL_GRID(GridPlan& plan, const Mesh& mesh, const GridInput& input, Grid& grid) {
    const InPhase filling(Phase::Fill);
    empty(grid.values);
    Progress progress("Element: ", mesh.elementCount);
    if (input.cornerQuads.empty()) fillPlanned(plan, mesh, input, grid, progress);
    else fillWithCornerQuads(plan, mesh, input, grid, progress);
    progress.finish(mesh.elementCount);
}

void FILL_BAND(PlanKind kind, const Mesh& mesh, const GridInput& input, Grid& grid) {
    const InPhase filling(Phase::Fill);
    constexpr std::size_t SHARES_A_JOB = 4;  // the plan of a share may take a quarter of its cells' memory again
    const RowRange held = HELD_ROWS(grid);
    const auto rows = static_cast<std::size_t>(held.end - held.first);
    const std::size_t shares = std::min(rows, SHARES_A_JOB * static_cast<std::size_t>(JOBS()));
    const auto rowOf = [&](std::size_t share) { return held.first + static_cast<std::int32_t>(rows * share / shares); };
    std::optional<WetParts> parts;
    if (!input.cornerQuads.empty()) parts.emplace(input);
    DO_PIECES(shares, [&](std::size_t share) {
        const RowRange own{rowOf(share), rowOf(share + 1)};
        std::fill(grid.values.data() + CELL_INDEX(grid, 1, own.first),
                  grid.values.data() + CELL_INDEX(grid, 1, own.end), NO_VALUE);
        if (!parts) return fillRows(kind, mesh, input, own, grid);
        GridInput part = input;
        part.wet = parts->others;
        fillRows(kind, mesh, part, own, grid);
        part.wet = parts->cornerQuads;
        fillRows(PlanKind::Corners, mesh, part, own, grid);
    });
}
