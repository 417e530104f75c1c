// The one loop of a conversion: every dataset of a source, at every output time chosen, to every stage.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results_source.h"
#include "run_control/output_stage.h"

/// base: folder and name of the outputs, without extension. results: the run's record, filled again and again. Stops
/// the run, before anything is written, when there is no dataset, or one does not fit the mesh or the outputs.
void CONVERT_RESULTS(ResultsSource& source, const std::string& base, const Mesh& mesh, Results& results,
                     OutputStages& stages);
