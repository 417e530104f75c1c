// Regular grids on disk.
#pragma once

#include "run_control/output_formats.h"
#include "run_control/output_stage.h"
#include "services/projection.h"

/// All must live as long as the stage.
std::unique_ptr<OutputStage> MAKE_RASTER_STAGE(const OutputFormat& format, const RunOptions& options,
                                               const Projection& projection);
