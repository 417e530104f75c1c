// GDAL's command-line tools as independent readers and writers of layers, for tests.
#pragma once

#include "rows.h"
#include "temporary_folder.h"

#include <cstdlib>
#include <string>

/// False, said once, where the tools are not installed: the tests then have nothing to compare with.
inline bool gdalIsThere() {
    static const bool there = std::system("ogrinfo --version > gdal_version.tmp 2>&1") == 0;
    std::remove("gdal_version.tmp");
    if (!there) MESSAGE("ogrinfo is not installed: layers are not compared with GDAL's");
    return there;
}

/// What the command says, on both its outputs. In its words every "@" is the folder with its separator.
inline std::string gdalSays(const TemporaryFolder& folder, const std::string& command) {
    std::system((replaced(command, "@", folder.name("")) + " > " + folder.name("said.tmp") + " 2>&1").c_str());
    std::string said = folder.read("said.tmp");
    std::filesystem::remove(folder.name("said.tmp"));
    return said;
}
