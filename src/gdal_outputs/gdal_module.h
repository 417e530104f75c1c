// The GDAL module, found and loaded when a run asks for one of its formats or switches.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "platform/shared_library.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The module beside the program or in ../lib/vorant-to-gis/ of its folder; loaded once, for the rest of the process.
/// Stops the run, naming the switch ("-gtif") that needs it, when there is none or it does not fit this program.
const GdalTable& GDAL_MODULE(std::string_view neededBy, const std::filesystem::path& programFolder = PROGRAM_FOLDER());

/// True where there is one, of whatever version.
bool HAVE_GDAL_MODULE(const std::filesystem::path& programFolder = PROGRAM_FOLDER());
/// Of GDAL's library, "3.6.2"; blank where the module cannot be used, and then `reason` tells why.
std::string GDAL_VERSION(std::string& reason, const std::filesystem::path& programFolder = PROGRAM_FOLDER());

/// "-co KEY=VALUE" for a driver of GDAL's ("COG", "GTiff", "GPKG", "FlatGeobuf"); stops the run with the valid ones
/// when an option is not among them or its value does not fit.
void CHECK_GDAL_OPTIONS(const GdalTable& gdal, const std::string& driver, const std::vector<std::string>& options);

/// Texts as the table takes them, for the length of one call.
class TextsView {
public:
    explicit TextsView(const std::vector<std::string>& texts) {
        for (const std::string& text : texts) pointers_.push_back(text.c_str());
    }
    GdalTexts get() const { return {pointers_.data(), static_cast<std::int32_t>(pointers_.size())}; }

private:
    std::vector<const char*> pointers_;
};
