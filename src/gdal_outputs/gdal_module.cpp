#include "gdal_outputs/gdal_module.h"

#include "platform/file_system.h"
#include "services/exits.h"

#include <system_error>

namespace {

[[noreturn]] void stopWithout(std::string_view neededBy) {
    const std::string needer(neededBy);
    STOP_RUN(ON_WINDOWS
                 ? "ERROR - The Windows build has no GDAL module; " + needer + " needs the Linux build."
                 : "ERROR - No GDAL module found; " + needer + " needs it (Debian: package vorant-to-gis-gdal).");
}

std::filesystem::path findModule(const std::filesystem::path& programFolder) {
    const std::string name = SHARED_LIBRARY_NAME("vorant_gdal");
    for (const auto& folder : {programFolder, programFolder.parent_path() / "lib" / "vorant-to-gis"}) {
        std::error_code ignored;
        if (std::filesystem::is_regular_file(folder / name, ignored)) return folder / name;
    }
    return {};
}

/// Null, with what is wrong behind "The GDAL module ", where the file is no module of this program.
const GdalTable* loadTable(const std::filesystem::path& file, std::string& reason) {
    void* library = LOAD_SHARED_LIBRARY(file, reason);
    if (library == nullptr) {
        reason = "cannot be loaded: " + reason;
        return nullptr;
    }
    const auto table = reinterpret_cast<GdalTableFunction>(SHARED_LIBRARY_SYMBOL(library, GDAL_TABLE_FUNCTION));
    const GdalTable* found = table != nullptr ? table(GDAL_TABLE_VERSION) : nullptr;
    if (found != nullptr && found->version == GDAL_TABLE_VERSION && found->bytes == sizeof(GdalTable)) return found;
    reason = NAME_OF(file) + " is of another version than this program.";
    return nullptr;
}

}  // namespace

const GdalTable& GDAL_MODULE(std::string_view neededBy, const std::filesystem::path& programFolder) {
    const std::filesystem::path file = findModule(programFolder);
    if (file.empty()) stopWithout(neededBy);
    std::string reason;
    const GdalTable* table = loadTable(file, reason);
    if (table == nullptr) STOP_RUN("ERROR - The GDAL module " + reason);
    return *table;
}

std::string GDAL_VERSION(std::string& reason, const std::filesystem::path& programFolder) {
    const std::filesystem::path file = findModule(programFolder);
    reason = "no module found";
    const GdalTable* table = file.empty() ? nullptr : loadTable(file, reason);
    return table == nullptr ? std::string() : table->libraryVersion();
}

bool HAVE_GDAL_MODULE(const std::filesystem::path& programFolder) { return !findModule(programFolder).empty(); }

void CHECK_GDAL_OPTIONS(const GdalTable& gdal, const std::string& driver, const std::vector<std::string>& options) {
    if (!gdal.checkOptions(driver.c_str(), TextsView(options).get()))
        STOP_RUN("ERROR - -co: " + std::string(gdal.reason()) + ".");
}
