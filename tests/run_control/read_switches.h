// Runs the argument reader as a command line would.
#pragma once

#include "console_of.h"
#include "run_control/arguments.h"

#include <string>
#include <vector>

/// The words as main() is given them, behind the program's name.
inline std::vector<const char*> argumentsOf(const std::vector<std::string>& words) {
    std::vector<const char*> all = {"VORANT_to_GIS"};
    for (const std::string& word : words) all.push_back(word.c_str());
    return all;
}

/// What the reader prints behind its banner, for the arguments behind the program's name.
inline std::string readSwitches(const std::vector<std::string>& arguments, std::string answers = {}) {
    const std::vector<const char*> all = argumentsOf(arguments);
    const std::string text =
        consoleOf([&] { READ_ARGUMENTS(static_cast<int>(all.size()), all.data()); }, std::move(answers));
    const std::string bannerEnd = "Done.\n";
    return text.substr(text.find(bannerEnd) + bannerEnd.size());
}
