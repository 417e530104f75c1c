#include "raster/grid_fill.h"

#include "geometry/no_value.h"
#include "raster/element_pieces.h"
#include "raster/plan_rows.h"
#include "services/console.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <utility>

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

void raise(float& cell, float value) {
    if (value > cell) cell = value;
}

/// Lays the pieces of chunks onto a grid.
class Filler {
public:
    Filler(PlanKind kind, const Mesh& mesh, const GridInput& input, Grid& grid)
        : kind_(kind), mesh_(mesh), input_(input), grid_(grid) {}

    void fill(const PlanChunk& chunk);

private:
    void fillWithValue(const PlanPiece& piece, const PlanRow* rows, const std::uint8_t* sets, float value);
    void fillTriangle(const PlanPiece& piece, const PlanRow* rows, const CornerValues& values);
    void fillQuad(const PlanPiece& piece, const PlanRow* rows, const std::uint8_t* sets, const CornerValues& values,
                  unsigned usable);
    float* cellsOf(const PlanRow& row, std::int32_t number) {
        return grid_.values.data() + CELL_INDEX(grid_, row.column, number);
    }

    PlanKind kind_;
    const Mesh& mesh_;
    const GridInput& input_;
    Grid& grid_;
    PieceShape shape_;
    std::array<MeanPlane, 16> means_;  // by set of triangles
};

void Filler::fill(const PlanChunk& chunk) {
    const PlanRow* rows = chunk.rows.data();
    const std::uint8_t* sets = chunk.sets.data();
    for (const PlanPiece& piece : chunk.pieces) {
        const PlanRow* const pieceRows = std::exchange(rows, rows + piece.rows);
        const std::uint8_t* const pieceSets = sets;
        if (piece.sets != 0)
            for (const PlanRow* row = pieceRows; row != rows; ++row) sets += row->cells;
        if (!input_.wet.empty() && input_.wet[static_cast<std::size_t>(piece.element)] == 0) continue;
        if (kind_ == PlanKind::Cells) {
            const float value = input_.values[static_cast<std::size_t>(piece.element)];
            if (!IS_MISSING(value)) fillWithValue(piece, pieceRows, pieceSets, value);
            continue;
        }
        CornerValues values{};
        for (std::size_t i = 0; i < static_cast<std::size_t>(piece.corners); ++i)
            values[i] = input_.values[static_cast<std::size_t>(piece.nodes[i])];
        const unsigned usable = TRIANGLES_WITH_VALUES(piece.corners, values);
        if (usable == 0) continue;
        if (input_.directions) unwind(values, static_cast<std::size_t>(piece.corners), usable);
        PLACE_PIECE(mesh_, piece.corners, piece.nodes, shape_);
        if (piece.corners == 3) fillTriangle(piece, pieceRows, values);
        else fillQuad(piece, pieceRows, pieceSets, values, usable);
    }
}

void Filler::fillWithValue(const PlanPiece& piece, const PlanRow* rows, const std::uint8_t* sets, float value) {
    for (std::uint32_t r = 0; r < piece.rows; ++r) {
        float* cells = cellsOf(rows[r], piece.firstRow + static_cast<std::int32_t>(r));
        for (std::uint32_t i = 0; i < rows[r].cells; ++i)
            if (piece.sets == 0 || *sets++ != 0) raise(cells[i], value);
    }
}

void Filler::fillTriangle(const PlanPiece& piece, const PlanRow* rows, const CornerValues& values) {
    const Plane plane = TRIANGLE_PLANE(shape_, 3, values);
    const float lowest = std::min(std::min(values[0], values[1]), values[2]);
    const float highest = std::max(std::max(values[0], values[1]), values[2]);
    const double step = plane.east * grid_.cellSize;
    for (std::uint32_t r = 0; r < piece.rows; ++r) {
        const std::int32_t number = piece.firstRow + static_cast<std::int32_t>(r);
        const double first = plane.value + plane.east * (CELL_X(grid_, rows[r].column) - shape_.x0) +
                             plane.north * (CELL_Y(grid_, number) - shape_.y0);
        float* cells = cellsOf(rows[r], number);
        for (std::uint32_t i = 0; i < rows[r].cells; ++i)
            raise(cells[i], std::min(std::max(static_cast<float>(first + step * i), lowest), highest));
    }
}

void Filler::fillQuad(const PlanPiece& piece, const PlanRow* rows, const std::uint8_t* sets, const CornerValues& values,
                      unsigned usable) {
    const std::array<Plane, 4> planes = {TRIANGLE_PLANE(shape_, 0, values), TRIANGLE_PLANE(shape_, 1, values),
                                         TRIANGLE_PLANE(shape_, 2, values), TRIANGLE_PLANE(shape_, 3, values)};
    for (unsigned set = 0; piece.sets >> set != 0; ++set)
        if ((piece.sets >> set & 1U) != 0) means_[set] = MEAN_PLANE(set & usable, planes, values);
    for (std::uint32_t r = 0; r < piece.rows; ++r) {
        const std::int32_t number = piece.firstRow + static_cast<std::int32_t>(r);
        const double east = CELL_X(grid_, rows[r].column) - shape_.x0;
        const double north = CELL_Y(grid_, number) - shape_.y0;
        float* cells = cellsOf(rows[r], number);
        for (std::uint32_t i = 0; i < rows[r].cells; ++i)
            raise(cells[i], means_[*sets++].AT(east + grid_.cellSize * i, north));
    }
}

/// Keeps a copy of the chunk, without spare room, when the plan's limit and the memory allow it.
void keepChunk(GridPlan& plan, const PlanChunk& chunk) {
    const std::uint64_t bytes = chunk.pieces.size() * sizeof(PlanPiece) + chunk.rows.size() * sizeof(PlanRow) +
                                chunk.sets.size() + sizeof(PlanChunk);
    if (plan.memoryUsed + bytes > plan.memoryLimit) {
        plan.memoryLimit = 0;
        return;
    }
    try {
        plan.chunks.push_back(chunk);
        plan.memoryUsed += bytes;
    } catch (const std::bad_alloc&) {
        plan.memoryLimit = 0;  // the rest is worked out anew at every time
    }
}

/// Lays all elements, less the dry ones of `input`.
void fillPlanned(GridPlan& plan, const Mesh& mesh, const GridInput& input, Grid& grid, Progress& progress) {
    Filler filler(plan.kind, mesh, input, grid);
    std::int32_t next = 1;
    for (const PlanChunk& chunk : plan.chunks) {
        filler.fill(chunk);
        next = chunk.endElement;
        progress.show(next - 1);
    }
    PlanChunk chunk;
    while (next <= mesh.elementCount) {
        // A chunk that will be kept must serve other times, when other elements are wet.
        const bool keeping = plan.memoryLimit > 0;
        PLAN_CHUNK(mesh, grid, plan.kind, next, keeping || input.wet.empty() ? nullptr : input.wet.data(), chunk);
        filler.fill(chunk);
        if (keeping) keepChunk(plan, chunk);
        next = chunk.endElement;
        progress.show(next - 1);
    }
}

/// The plan serves every time, so those few elements that a time lays by their corners are planned by themselves.
void fillWithCornerQuads(GridPlan& plan, const Mesh& mesh, const GridInput& input, Grid& grid, Progress& progress) {
    std::vector<std::uint8_t> others(mesh.elements.size(), 0), cornerQuads(mesh.elements.size(), 0);
    for (std::size_t id = 1; id < others.size(); ++id)
        if (input.wet.empty() || input.wet[id] != 0) (input.cornerQuads[id] != 0 ? cornerQuads : others)[id] = 1;
    GridInput part = input;
    part.wet = others;
    fillPlanned(plan, mesh, part, grid, progress);
    part.wet = cornerQuads;
    GridPlan once;
    once.kind = PlanKind::Corners;
    fillPlanned(once, mesh, part, grid, progress);
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
    std::fill(grid.values.begin(), grid.values.end(), NO_VALUE);
    Progress progress("Element: ", mesh.elementCount);
    if (input.cornerQuads.empty()) fillPlanned(plan, mesh, input, grid, progress);
    else fillWithCornerQuads(plan, mesh, input, grid, progress);
    progress.finish(mesh.elementCount);
}
