// The one way in which a line of a .2dm file is refused.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// A line of a .2dm as messages show it: cut to 200 characters, bytes that would upset a console as "?".
std::string shownMeshLine(std::string_view line);

/// Reports the line, its number (from 1), the file and the reason ("node number out of range"), and stops the run.
[[noreturn]] void refuseMeshLine(int file, std::string_view line, std::int64_t number, std::string_view reason);

/// Next line; false at the end of the file. A read error, already reported, stops the run.
bool nextMeshLine(int file, std::string_view& line);
