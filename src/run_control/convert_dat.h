// A .dat results file from its header to its outputs.
#pragma once

/// Opens the input as a .dat, reads its header and says which quantity it holds, by the text behind the name's last
/// underscore
/// ("h" of x_h.dat), else by the name in the header.
void IDENTIFY_DAT();

/// Checks the file against the mesh, reads the output times asked for and hands each to the outputs.
void CONVERT_DAT();
