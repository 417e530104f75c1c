// The order of a run, from the command line to "Finished.".
#pragma once

/// One whole run. Returns its exit status after "Finished." in a batch run; every other end, the normal one without -b
/// included, is a RunStopped that carries it.
int CONVERT(int argc, const char* const argv[]);
