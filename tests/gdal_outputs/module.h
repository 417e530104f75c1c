// The module of this build, and what its tests share.
#pragma once

#include "console_of.h"
#include "gdal_outputs/gdal_module.h"
#include "temporary_folder.h"

#include <sys/resource.h>

#include <doctest/doctest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

inline const GdalTable& gdalModule() { return GDAL_MODULE("-gtif", GDAL_MODULE_FOLDER); }

/// What GDAL's own tools say; in the command every "@" is the folder with its separator.
inline std::string toolSays(const TemporaryFolder& folder, std::string command) {
    for (auto at = command.find('@'); at != std::string::npos; at = command.find('@'))
        command.replace(at, 1, folder.name(""));
    std::system((command + " > " + folder.name("said.tmp") + " 2>&1").c_str());
    const std::string said = folder.read("said.tmp");
    std::filesystem::remove(folder.name("said.tmp"));
    return said;
}

inline std::string filesIn(const TemporaryFolder& folder) {
    std::string names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.name("")))
        names += entry.path().filename().string() + " ";
    return names;
}

/// The message of a step that has to stop the run.
template <typename Step>
std::string stopOf(Step&& step) {
    const std::string said = consoleOf(std::forward<Step>(step));
    return said.ends_with("<stopped>") ? said.substr(0, said.find('\n')) : "not stopped: " + said;
}

/// The same where no file can grow beyond so many bytes, as on a full disk.
template <typename Step>
std::string stopOfFullDisk(rlim_t bytes, Step&& step) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit little{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &little);
    const std::string said = stopOf(std::forward<Step>(step));
    setrlimit(RLIMIT_FSIZE, &before);
    return said;
}
