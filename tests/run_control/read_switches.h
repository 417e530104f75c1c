// Runs the argument reader as a command line would.
#pragma once

#include "console_of.h"
#include "run_control/arguments.h"

#include <string>
#include <vector>

/// What the reader prints behind its banner, for the arguments behind the program's name.
inline std::string readSwitches(const std::vector<const char*>& arguments, std::string answers = {}) {
    std::vector<const char*> all = {"VORANT_to_GIS"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const std::string text =
        consoleOf([&] { READ_ARGUMENTS(static_cast<int>(all.size()), all.data()); }, std::move(answers));
    const std::string bannerEnd = "Done.\n";
    return text.substr(text.find(bannerEnd) + bannerEnd.size());
}
