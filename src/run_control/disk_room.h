// Whether what a run is going to write fits on the disk: told before the first byte.
#pragma once

#include <string>

/// Outputs on the disk.
struct DiskUse {
    double bytes = 0.0;    ///< at the most, beside a few lines of headers
    double certain = 0.0;  ///< of these those that follow from counts, which nothing can make fewer

    void add(const DiskUse& more) {
        bytes += more.bytes;
        certain += more.certain;
    }
};

/// Stops the run when the disk that holds `stem`, what the names of all outputs begin with, has not got the room, the
/// files that they replace one after the other counted as free. Says how large they are above 4 GB. Nothing of both
/// where one of the outputs goes to a pipe or a device, or by a link; what a library writes cannot go to a pipe or a
/// device, which stops the run.
void CHECK_DISK_ROOM(const DiskUse& use, const std::string& stem);
