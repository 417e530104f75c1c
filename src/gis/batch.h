// Objects with their records, drawn up ahead on any thread as the files will hold them, and written in their order.
#pragma once

#include "gis/growing_bytes.h"
#include "gis/object.h"

#include <algorithm>
#include <cstdint>

/// Filled by gisAddToBatch. Keep it for the next stretch of a layer: its memory is used again.
struct GisBatch {
    GrowingBytes objects;    ///< of the .mif or .shp file; the records of the latter are numbered when they are written
    GrowingBytes records;    ///< of the .mid or .dbf file
    std::int64_t count = 0;  ///< objects
    double xmin = 0.0, ymin = 0.0, xmax = -1.0, ymax = -1.0;  ///< bounds of a .shp file's; none: xmax below xmin
    GisKind kind = GisKind::None;                             ///< of the last one
    /// False: it holds what only gisWriteObject and gisWriteRecord can write or refuse, and is of no use.
    bool plain = true;

    void clear() {
        objects.clear();
        records.clear();
        count = 0;
        xmax = xmin - 1.0;
        plain = true;
    }
};

enum class GisBatchWrite : std::uint8_t {
    Done,
    Unfit,  ///< nothing is written: see GisBatch::plain, or a file comes near its limit
    Failed  ///< the records were refused by the disk, which has been said
};
