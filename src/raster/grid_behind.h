// A grid on its way to the disk beside the calling thread, which lays the next one meanwhile.
#pragma once

#include "raster/grid.h"

#include <memory>
#include <string>

class GridBehind {
public:
    virtual ~GridBehind() = default;
    /// All rows, on any one thread. It says nothing and stops nothing: what goes wrong is kept for finish().
    virtual void writeRows(const Grid& grid) = 0;
    /// On the calling thread, behind writeRows: says what the format's GridWriter says, and closes the files. What
    /// could not be written stops the run.
    virtual void finish() = 0;
};

/// Opens the files of a whole grid under `base`, a name without extension, as the format's GridWriter does.
using GridBehindMaker = std::unique_ptr<GridBehind> (*)(const std::string& base, const Grid& grid);
