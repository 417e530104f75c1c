// An .xmdf results file from its datasets to its outputs.
#pragma once

/// Says which type of data is wanted: -type, else water levels, or velocities for arrows.
void IDENTIFY_XMDF();

/// Opens the input, selects its datasets and output times, checks them against the mesh and hands each to the outputs.
/// Stops the run when there is nothing to convert.
void CONVERT_XMDF();
