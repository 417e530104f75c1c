// The usage text.
#pragma once

/// Prints the usage text, which is due when the input-error flag is set. The caller ends the run with STATUS_USAGE.
void PRINT_USAGE();
