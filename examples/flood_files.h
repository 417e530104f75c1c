// The results files of one run, written time by time.
#pragma once

#include "basin_options.h"
#include "dat_writer.h"
#include "flood.h"
#include "square_mesh.h"
#include "xmdf_writer.h"

#include <memory>

class FloodFiles {
public:
    /// mesh: read for as long as files are written.
    explicit FloodFiles(const SquareMesh& mesh);
    /// The next output time.
    void write(const FloodState& state);
    /// Adds what is known once all times are written: the maximums of water level and velocity (of depth in the .xmdf
    /// only), and the minimums and the times of peak in the .xmdf. Closes every file.
    void finish(const FloodExtremes& extremes);

private:
    void writeDats(const FloodState& state, bool withDepth);
    void createXmdf(std::size_t times);
    void writeXmdf(const char* folder, std::size_t step, const FloodState& state);

    void writeCellDepths(const FloodState& state);

    const SquareMesh& mesh_;
    bool flags_;
    DatWriter level_, depth_, velocity_;
    std::unique_ptr<DatWriter> cellDepth_;
    std::unique_ptr<XmdfWriter> xmdf_;
    std::size_t step_ = 0;
};

/// The name of one of the run's files: FILE_OF(options, "_h.dat").
std::filesystem::path FILE_OF(const BasinOptions& options, const char* ending);
