// The command line is the program's only configuration: there is no settings file and no environment variable.
#pragma once

/// Prints the banner, then fills the run options from the arguments, left to right. argv[0] is the program's own name.
/// Without arguments the input-error flag is set and nothing is read. A switch begins with "-", "/" or an en dash (byte
/// 0x96, or UTF-8); a path that begins with "/" is told from a switch by the file that exists under it, or by a second
/// "/" and a known extension. Unknown switches are ignored, those of two letters and more with a
/// line that says so. One that asks what the program is ends the run. A value that cannot be read, and a value that
/// makes no sense (a grid spacing of zero), stop the run.
void READ_ARGUMENTS(int argc, const char* const argv[]);
