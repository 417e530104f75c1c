#include "run_control/grid_write_behind.h"

#include "services/console.h"
#include "services/phases.h"

#include <exception>
#include <new>
#include <utility>

GridWriteBehind::~GridWriteBehind() {
    try {
        finish();
    } catch (const std::exception&) {  // the run is ending for another reason, or this one has just been said
    }
}

bool GridWriteBehind::makeRoom(std::size_t grids, std::size_t values) {
    try {
        parts_.resize(grids);
        for (Part& part : parts_) part.grid.values.resize(values);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void GridWriteBehind::begin(std::vector<GridUnderWay> grids, std::function<void()> end) {
    for (std::size_t i = 0; i < grids.size(); ++i) {
        Grid& grid = *grids[i].grid;
        parts_[i].grid.values.swap(grid.values);
        parts_[i].grid.ncols = grid.ncols;
        parts_[i].grid.nrows = grid.nrows;
        parts_[i].writer = std::move(grids[i].writer);
        parts_[i].written = false;
    }
    end_ = std::move(end);
    busy_ = true;
    work_.begin(parts_.size(), [this](std::size_t i) { write(parts_[i]); });
    HOLD_CONSOLE([this] { finishWriters(); });
}

void GridWriteBehind::finish() {
    if (busy_) RELEASE_CONSOLE();
}

void GridWriteBehind::write(Part& part) {
    part.writer->writeRows(part.grid);
    part.written = true;
}

void GridWriteBehind::finishWriters() {
    const InPhase writing(Phase::Write);
    busy_ = false;
    const auto end = std::exchange(end_, {});
    if (!work_.finish())
        for (Part& part : parts_)
            if (!part.written) write(part);  // nobody has begun it
    for (Part& part : parts_) part.writer->finish();
    end();
}
