// The module of this build, and what its tests share.
#pragma once

#include "gdal_outputs/gdal_module.h"
#include "gis/gdal.h"
#include "testing.h"

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <sstream>
#include <string>

inline const GdalTable& gdalModule() { return GDAL_MODULE("-gtif", GDAL_MODULE_FOLDER); }

/// Every part of "a | b" is said; "$" ends a line.
inline void checkSays(const std::string& said, const std::string& parts) {
    std::istringstream list(parts);
    for (std::string part; std::getline(list, part, '|');)
        CHECK_MESSAGE(holds(said, replaced(std::string(TRIMMED(part)), "$", "\n")), part, "\n", said);
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
