// The mesh and its results as an EnSight Gold model (-ensight).
#pragma once

#include "run_control/output_formats.h"
#include "run_control/output_stage.h"

std::unique_ptr<OutputStage> MAKE_ENSIGHT_STAGE(const OutputFormat& format);
