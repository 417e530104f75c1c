// Vector layers and text points.
#pragma once

#include "run_control/output_formats.h"
#include "run_control/output_stage.h"
#include "services/projection.h"
#include "vector_outputs/layer_choice.h"

/// Drops switches that others rule out and says so: -region drops -grid and -pts, grids have no point types, text
/// points no regions. Warns of letters in -pts that stand for nothing. All must live as long as the stage.
std::unique_ptr<OutputStage> MAKE_LAYER_STAGE(const OutputFormat& format, const RunOptions& options,
                                              const Projection& projection);

/// The switches in the terms of the vector outputs; what the coordinates are is left open.
LayerChoice LAYER_CHOICE(const OutputFormat& format, const RunOptions& options);
