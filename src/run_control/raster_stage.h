// Regular grids on disk.
#pragma once

#include "run_control/output_formats.h"
#include "run_control/output_stage.h"

/// Both must live as long as the stage.
std::unique_ptr<OutputStage> MAKE_RASTER_STAGE(const OutputFormat& format, const RunOptions& options);
