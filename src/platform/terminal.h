// Text in and out of the process: arguments, the standard input and output. UTF-8 on every system.
#pragma once

#include "platform/platform.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The arguments of main, the program's name first. On Windows they are asked of the system, since those of main have
/// lost every letter that the code page lacks; patterns such as "*.dat" are not expanded.
std::vector<std::string> PROGRAM_ARGUMENTS(int argc, const char* const argv[]);

/// Writes text to the standard output at once. One that cannot be written (a closed pipe) has nobody left to tell, so
/// nothing is said.
void WRITE_OUTPUT(std::string_view text);
/// Reads a line of the standard input, without its end and cut to `longest` bytes; false at the end of the input. What
/// is no UTF-8 in a line from a pipe is taken as the console's code page on Windows.
bool READ_INPUT_LINE(std::string& line, std::size_t longest);
