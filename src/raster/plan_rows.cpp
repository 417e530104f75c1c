#include "raster/plan_rows.h"

#include "raster/element_pieces.h"
#include "raster/outline_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace {

constexpr std::size_t CELLS_AT_A_TIME = 1U << 20;  // a few elements can cover more of a grid than thousands of others

/// Eight bytes, the first in the lowest bits: all ones in the first `count`, however far below 0 or above 8 that is.
std::uint64_t firstBytes(std::int64_t count) {
    const auto half = static_cast<unsigned>(4 * std::clamp<std::int64_t>(count, 0, 8));
    return ~(~std::uint64_t{0} << half << half);
}

/// Adds the rows of pieces to a chunk.
class RowMaker {
public:
    RowMaker(const Grid& grid, PlanKind kind, RowRange wanted, PlanChunk& chunk)
        : kind_(kind), grid_(grid), wanted_(wanted), chunk_(chunk) {}
    ~RowMaker() { chunk_.sets.resize(setsUsed_); }
    RowMaker(const RowMaker&) = delete;
    RowMaker& operator=(const RowMaker&) = delete;

    void add(const PieceShape& shape, const ElementPiece& piece, std::int32_t element);
    std::size_t cells() const { return cells_ + chunk_.rows.size(); }

private:
    void addWhole(const PieceShape& shape, PlanPiece& piece);
    void addConvexQuad(const PieceShape& shape, PlanPiece& piece);
    void addTriangles(const PieceShape& shape, PlanPiece& piece);
    void addRow(const Interval& cells);
    Interval wantedOf(std::int64_t firstRow, std::int64_t endRow) const {
        return {std::max<std::int64_t>(firstRow, wanted_.first), std::min<std::int64_t>(endRow, wanted_.end)};
    }
    std::uint16_t addSets(const Interval& cells, const std::array<Interval, 4>& triangles);
    std::uint16_t dropOutside(const Interval& cells, std::uint16_t inside);

    PlanKind kind_;
    LocalGrid grid_;
    RowRange wanted_;
    PlanChunk& chunk_;
    std::size_t setsUsed_ = 0;
    std::size_t cells_ = 0;
    std::array<Outline, 4> outlines_;
    std::array<Diagonal, 2> diagonals_;
};

void RowMaker::addRow(const Interval& cells) {
    if (cells.first < cells.end) {
        chunk_.rows.push_back(
            {static_cast<std::int32_t>(cells.first), static_cast<std::uint32_t>(cells.end - cells.first)});
        cells_ += static_cast<std::size_t>(cells.end - cells.first);
    } else {
        chunk_.rows.push_back({});
    }
}

/// The sets of triangles of the cells of a row, eight cells at a time. Returns which sets occur.
std::uint16_t RowMaker::addSets(const Interval& cells, const std::array<Interval, 4>& triangles) {
    if (cells.first >= cells.end) return 0;
    const auto count = static_cast<std::size_t>(cells.end - cells.first);
    const std::size_t room = setsUsed_ + count + 8;
    if (chunk_.sets.size() < room) chunk_.sets.resize(std::max(room, chunk_.sets.size() * 2));
    std::uint8_t* to = chunk_.sets.data() + setsUsed_;
    for (std::int64_t column = cells.first; column < cells.end; column += 8, to += 8) {
        std::uint64_t eight = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            constexpr std::uint64_t EVERY_BYTE = 0x0101010101010101;
            eight |=
                firstBytes(triangles[k].end - column) & ~firstBytes(triangles[k].first - column) & (EVERY_BYTE << k);
        }
        for (unsigned i = 0; i < 8; ++i) to[i] = static_cast<std::uint8_t>(eight >> 8 * i);
    }
    unsigned sets = 0;
    for (std::size_t i = 0; i < count; ++i) sets |= 1U << chunk_.sets[setsUsed_ + i];
    setsUsed_ += count;
    return static_cast<std::uint16_t>(sets);
}

/// Gives the cells of the row just added that lie outside the outline the empty set. Returns which sets are left.
std::uint16_t RowMaker::dropOutside(const Interval& cells, std::uint16_t inside) {
    unsigned sets = 0;
    const auto count = static_cast<std::size_t>(std::max<std::int64_t>(cells.end - cells.first, 0));
    for (std::uint8_t* set = chunk_.sets.data() + setsUsed_ - count; set != chunk_.sets.data() + setsUsed_; ++set) {
        if ((inside >> *set & 1U) == 0) *set = 0;
        sets |= 1U << *set;
    }
    return static_cast<std::uint16_t>(sets);
}

/// Triangles, and whole quads of values per element.
void RowMaker::addWhole(const PieceShape& shape, PlanPiece& piece) {
    constexpr std::array<std::uint8_t, 4> CORNERS = {0, 1, 2, 3};
    const double twiceArea = shape.corners == 3 ? shape.twiceArea[3] : shape.twiceArea[1] + shape.twiceArea[3];
    Outline& outline = outlines_[0];
    outline.place(shape, grid_, CORNERS.data(), static_cast<std::size_t>(shape.corners), twiceArea > 0.0);
    const Interval rows = wantedOf(outline.firstRow(), outline.endRow());
    piece.firstRow = static_cast<std::int32_t>(rows.first);
    for (std::int64_t row = rows.first; row < rows.end; ++row) addRow(outline.columnsAt(grid_.north(row)));
}

/// A line through two opposite corners of a convex quad meets it along the diagonal only, so each side of the line is a
/// triangle.
void RowMaker::addConvexQuad(const PieceShape& shape, PlanPiece& piece) {
    constexpr std::array<std::uint8_t, 4> CORNERS = {0, 1, 2, 3};
    Outline& outline = outlines_[0];
    outline.place(shape, grid_, CORNERS.data(), 4, shape.twiceArea[3] > 0.0);
    diagonals_[0].place(shape, grid_, 0, 2, 1, 3, 1);
    diagonals_[1].place(shape, grid_, 1, 3, 0, 2, 0);
    const Interval rows = wantedOf(outline.firstRow(), outline.endRow());
    piece.firstRow = static_cast<std::int32_t>(rows.first);
    std::array<Interval, 4> triangles;
    for (std::int64_t row = rows.first; row < rows.end; ++row) {
        const double north = grid_.north(row);
        const Interval cells = outline.columnsAt(north);
        addRow(cells);
        for (const Diagonal& diagonal : diagonals_) diagonal.split(north, cells, triangles);
        piece.sets = static_cast<std::uint16_t>(piece.sets | addSets(cells, triangles));
    }
}

/// Any other quad: each triangle by itself. Cells of a row between two triangles or outside the quad get the empty set.
void RowMaker::addTriangles(const PieceShape& shape, PlanPiece& piece) {
    std::int64_t firstRow = std::numeric_limits<std::int64_t>::max();
    std::int64_t endRow = 0;
    for (std::size_t k = 0; k < 4; ++k) {
        if ((shape.triangles >> k & 1U) == 0) continue;
        outlines_[k].place(shape, grid_, TRIANGLE_CORNERS[k].data(), 3, shape.twiceArea[k] > 0.0);
        firstRow = std::min(firstRow, outlines_[k].firstRow());
        endRow = std::max(endRow, outlines_[k].endRow());
    }
    const Interval rows = wantedOf(firstRow, endRow);
    piece.firstRow = static_cast<std::int32_t>(rows.first);
    for (std::int64_t row = rows.first; row < rows.end; ++row) {
        std::array<Interval, 4> triangles;
        Interval cells{std::numeric_limits<std::int64_t>::max(), 0};
        for (std::size_t k = 0; k < 4; ++k) {
            if ((shape.triangles >> k & 1U) == 0 || row < outlines_[k].firstRow() || row >= outlines_[k].endRow())
                continue;
            triangles[k] = outlines_[k].columnsAt(grid_.north(row));
            if (triangles[k].first >= triangles[k].end) continue;
            cells = {std::min(cells.first, triangles[k].first), std::max(cells.end, triangles[k].end)};
        }
        addRow(cells);
        addSets(cells, triangles);
        piece.sets = static_cast<std::uint16_t>(piece.sets | dropOutside(cells, shape.inside));
    }
}

void RowMaker::add(const PieceShape& shape, const ElementPiece& corners, std::int32_t element) {
    PlanPiece piece;
    piece.element = element;
    piece.corners = static_cast<std::uint16_t>(corners.corners);
    piece.nodes = corners.nodes;
    grid_.standAt(shape);
    const std::size_t rowsBefore = chunk_.rows.size();
    const std::size_t cellsBefore = cells_;
    const bool convex = shape.triangles == ALL_TRIANGLES && shape.form == QuadForm::Convex;
    if (shape.corners == 3 || (convex && kind_ == PlanKind::Cells)) addWhole(shape, piece);
    else if (convex) addConvexQuad(shape, piece);
    else addTriangles(shape, piece);

    if (cells_ == cellsBefore) {
        chunk_.rows.resize(rowsBefore);  // it lies between cell points
        return;
    }
    piece.rows = static_cast<std::uint32_t>(chunk_.rows.size() - rowsBefore);
    const std::int32_t endRow = piece.firstRow + static_cast<std::int32_t>(piece.rows);
    RowRange& covered = chunk_.covered;
    covered = chunk_.pieces.empty() ? RowRange{piece.firstRow, endRow}
                                    : RowRange{std::min(covered.first, piece.firstRow), std::max(covered.end, endRow)};
    chunk_.pieces.push_back(piece);
}

/// Largest coordinate of the grid in size, which rounding errors grow with.
double coordinateSizeOf(const Grid& grid) {
    return std::max(std::max(std::abs(grid.xll), std::abs(grid.xll + grid.ncols * grid.cellSize)),
                    std::max(std::abs(grid.yll), std::abs(grid.yll + grid.nrows * grid.cellSize)));
}

/// Elements out of order wait for memory, unless it is told early which come next.
void fetchAhead(const Mesh& mesh, std::span<const std::int32_t> order, std::int32_t place) {
#ifdef __GNUC__
    constexpr std::size_t AHEAD = 24;
    const std::size_t next = static_cast<std::size_t>(place) + AHEAD;
    if (next >= order.size()) return;
    const MeshElement& element = mesh.elements[static_cast<std::size_t>(order[next])];
    __builtin_prefetch(&element);
    __builtin_prefetch(&element.nodes[8]);
#else
    static_cast<void>(mesh), static_cast<void>(order), static_cast<void>(place);
#endif
}

/// The elements that may have cells in some rows of a grid; the others need no closer look.
class NearRows {
public:
    NearRows(const Mesh& mesh, const Grid& grid, RowRange rows, double coordinateSize)
        : mesh_(mesh), all_(rows.first <= 1 && rows.end > grid.nrows) {
        // Far beyond what the closed test of any element adds to its sides.
        const double extent = std::max({mesh.xmax - mesh.xmin, mesh.ymax - mesh.ymin, 0.0});
        const double margin = grid.cellSize + 1.0e-8 * extent + 1.0e-12 * coordinateSize;
        south_ = CELL_Y(grid, rows.first) - margin;
        north_ = CELL_Y(grid, rows.end - 1) + margin;
    }

    bool reaches(const MeshElement& element) const {
        if (all_) return true;
        bool above = true, below = true;  // what is not a number is neither
        for (std::size_t slot = 0; slot < static_cast<std::size_t>(element.shape); ++slot) {
            const double y = mesh_.nodes[static_cast<std::size_t>(element.nodes[slot])].y;
            above = above && y > north_;
            below = below && y < south_;
        }
        return !above && !below;
    }

private:
    const Mesh& mesh_;
    bool all_;
    double south_ = 0.0, north_ = 0.0;
};

}  // namespace

void PLAN_CHUNK(const Mesh& mesh, const Grid& grid, PlanKind kind, std::span<const std::int32_t> order,
                ElementRange elements, RowRange rows, const std::uint8_t* wet, PlanChunk& chunk) {
    chunk.elements = elements;
    chunk.covered = {};
    chunk.pieces.clear();
    chunk.rows.clear();
    const double coordinateSize = coordinateSizeOf(grid);
    const NearRows nearby(mesh, grid, rows, coordinateSize);
    RowMaker maker(grid, kind, rows, chunk);
    PieceShape shape;
    std::int32_t place = elements.first;
    for (; place < elements.end && maker.cells() < CELLS_AT_A_TIME; ++place) {
        const std::int32_t id = order.empty() ? place : order[static_cast<std::size_t>(place) - 1];
        fetchAhead(mesh, order, place);
        if (wet != nullptr && wet[id] == 0) continue;
        const MeshElement& element = mesh.elements[static_cast<std::size_t>(id)];
        if (!nearby.reaches(element)) continue;
        const int pieces = PIECE_COUNT(element, kind);
        for (int number = 0; number < pieces; ++number) {
            const ElementPiece piece = PIECE_OF(element, kind, number);
            PLACE_PIECE(mesh, piece.corners, piece.nodes, shape);
            if (FIND_TRIANGLES(shape, coordinateSize)) maker.add(shape, piece, id);
        }
    }
    chunk.elements.end = place;
}
