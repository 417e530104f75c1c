// Datasets and times as .dat or .xmdf files (-dat, -xmdf).
#pragma once

#include "run_control/output_formats.h"
#include "run_control/output_stage.h"

std::unique_ptr<OutputStage> MAKE_RESULTS_FILE_STAGE(const OutputFormat& format, const RunOptions& options);
