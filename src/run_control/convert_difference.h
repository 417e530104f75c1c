// The difference of two inputs (-dif): the second one, its mesh, and the conversion of both as one source.
#pragma once

#include "run_control/input_files.h"
#include "run_control/open_source.h"
#include "run_control/output_stage.h"
#include "services/projection_text.h"

/// Both sides of a difference, before their results are read.
struct BothSides {
    InputFiles now, was;  ///< was.input blank: the run has no difference
    Identified nowResults, wasResults;
};

/// Settles the file behind -dif, if there is one. Stops the run when it does not exist, or when one side is a mesh and
/// the other results.
void FIND_SECOND_INPUT(BothSides& sides);

/// IDENTIFY_RESULTS of the input, and of what is taken from it.
void IDENTIFY_SIDES(BothSides& sides);

/// Finds and compares the meshes and converts the difference. Two meshes that are not one stop the run, unless the
/// output is a raster. coordinates: of the run's projection.
void CONVERT_DIFFERENCE(BothSides sides, const std::string& base, const Mesh& mesh, CoordinateKind coordinates,
                        OutputStages& stages);
