// Where a dataset at one output time becomes files: the one place that knows which outputs exist.
#pragma once

#include "inputs/results.h"
#include "run_control/output_names.h"

/// Stops the run before any work when the output that was asked for does not exist.
void CHECK_OUTPUT_STAGE();

/// "ERROR - No data processed ...": the run has come to its end, or to where it sees it, without an output.
[[noreturn]] void STOP_WITHOUT_OUTPUT();

/// Says what the following outputs have in common, before the first of them. vector, cellCentred: what the results will
/// be. severalTimes: more than one output time follows, so what serves them all is worth keeping.
void BEGIN_OUTPUTS(bool vector, bool cellCentred, bool severalTimes);

/// Writes one dataset at one output time in the run's format. label: base and dataset tag; time and grid size are
/// filled in here.
void OUTPUT_RESULTS(const Results& results, OutputLabel label);

/// Writes the bed elevations of the mesh alone.
void OUTPUT_BATHYMETRY();

/// After the last output: what was collected is written.
void FINISH_OUTPUTS();
