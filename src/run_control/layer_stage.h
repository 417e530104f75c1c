// Vector layers and text points.
#pragma once

#include "run_control/output_formats.h"
#include "run_control/output_stage.h"
#include "vector_outputs/layer_choice.h"

/// Drops switches that others rule out and says so: -region drops -grid and -pts, grids have no point types, text
/// points no regions. Warns of letters in -pts that stand for nothing. Both must live as long as the stage.
std::unique_ptr<OutputStage> MAKE_LAYER_STAGE(const OutputFormat& format, const RunOptions& options);

/// The switches in the terms of the vector outputs.
LayerChoice LAYER_CHOICE(const OutputFormat& format, const RunOptions& options);
