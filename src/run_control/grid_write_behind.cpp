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

bool GridWriteBehind::makeRoom(const Grid& grid) {
    try {
        grid_.values.resize(grid.values.size());
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void GridWriteBehind::begin(std::unique_ptr<GridBehind> writer, Grid& grid, std::function<void()> end) {
    grid_.values.swap(grid.values);
    grid_.ncols = grid.ncols;
    grid_.nrows = grid.nrows;
    writer_ = std::move(writer);
    end_ = std::move(end);
    work_.begin(1, [this, rows = writer_.get()](std::size_t) { rows->writeRows(grid_); });
    HOLD_CONSOLE([this] { finishWriter(); });
}

void GridWriteBehind::finish() {
    if (writer_ != nullptr) RELEASE_CONSOLE();
}

void GridWriteBehind::finishWriter() {
    const InPhase writing(Phase::Write);
    const std::unique_ptr<GridBehind> writer = std::move(writer_);
    const auto end = std::exchange(end_, {});
    if (!work_.finish()) writer->writeRows(grid_);  // nobody has begun it
    writer->finish();
    end();
}
