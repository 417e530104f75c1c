// The grids of one output time on their way to the disk, while the run reads and lays the next.
#pragma once

#include "raster/grid.h"
#include "raster/grid_behind.h"
#include "services/workers.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

struct GridUnderWay {
    std::unique_ptr<GridBehind> writer;
    Grid* grid;
};

class GridWriteBehind {
public:
    GridWriteBehind() = default;
    GridWriteBehind(const GridWriteBehind&) = delete;
    GridWriteBehind& operator=(const GridWriteBehind&) = delete;
    ~GridWriteBehind();

    /// Memory for the values of as many grids a second time; false when there is none.
    bool makeRoom(std::size_t grids, std::size_t values);
    /// Takes the values of whole grids that makeRoom was called for, and leaves them with that room. end: what is left
    /// to do when all writers have finished. The console is held until then.
    void begin(std::vector<GridUnderWay> grids, std::function<void()> end);
    /// The grids under way are finished, and what was said meanwhile is said behind them.
    void finish();

private:
    struct Part {
        Grid grid;  ///< the values under way; between two, the room for the next
        std::unique_ptr<GridBehind> writer;
        bool written = false;
    };
    void write(Part& part);
    void finishWriters();

    std::vector<Part> parts_;
    bool busy_ = false;
    std::function<void()> end_;
    WorkAhead work_;  ///< ends before what it reads
};
