// The order of a run, from the command line to "Finished.".
#pragma once

/// One whole run. Returns after "Finished." in a batch run; every other end, the normal one without -b included, is a
/// RunStopped that carries the exit status.
void CONVERT(int argc, const char* const argv[]);
