// The usage text.
#pragma once

#include <span>
#include <string_view>
#include <vector>

/// Prints the usage text, which is due when the input-error flag is set. The caller ends the run with STATUS_USAGE.
void PRINT_USAGE();
/// Ends what the text says of the program before it comes to the switches.
constexpr std::string_view LAST_OF_DESCRIPTION = "Options:";
/// Its lines, blank ones too.
std::vector<std::string_view> USAGE_LINES();
/// Lines of the same form for the switches that it leaves out.
std::span<const std::string_view> UNLISTED_SWITCHES();
