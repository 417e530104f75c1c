// What the program tells of itself when it is asked: -help, -help <word>, -version.
#pragma once

#include <span>
#include <string_view>

/// The whole words, without their dash, that are looked at before all switches: "help", "version" and their like.
std::span<const std::string_view> TELLING_SWITCHES();

/// Where the text of a switch (without its dash) is one of those: prints what it asks for and ends the run with
/// STATUS_DONE and without a pause. Otherwise nothing. next: the following argument, blank for none; the word behind
/// -help.
void TELL_WHEN_ASKED(std::string_view text, std::string_view next);
