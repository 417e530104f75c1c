// One grid at a time on its way to the disk, while the run reads and lays the next.
#pragma once

#include "raster/grid.h"
#include "raster/grid_behind.h"
#include "services/workers.h"

#include <functional>
#include <memory>

class GridWriteBehind {
public:
    GridWriteBehind() = default;
    GridWriteBehind(const GridWriteBehind&) = delete;
    GridWriteBehind& operator=(const GridWriteBehind&) = delete;
    ~GridWriteBehind();

    /// Memory for the values of a second grid; false when there is none.
    bool makeRoom(const Grid& grid);
    /// Takes the values of a whole grid that makeRoom was called for, and leaves it with that room. end: what is left
    /// to do when the writer has finished. The console is held until then.
    void begin(std::unique_ptr<GridBehind> writer, Grid& grid, std::function<void()> end);
    /// The grid under way is finished, and what was said meanwhile is said behind it.
    void finish();

private:
    void finishWriter();

    Grid grid_;  ///< the values under way; between two, the room for the next
    std::unique_ptr<GridBehind> writer_;
    std::function<void()> end_;
    WorkAhead work_;  ///< ends before what it reads
};
