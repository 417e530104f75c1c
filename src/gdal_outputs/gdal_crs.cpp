#include "gdal_outputs/gdal_crs.h"

#include "services/exits.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

namespace {

constexpr std::size_t LONGEST_CRS = std::size_t{1} << 20;  ///< bytes; no system takes that many

/// The contents when the text names a file.
std::optional<std::string> fileContents(const std::string& text, std::string_view neededBy) {
    const std::filesystem::path path(std::u8string(text.begin(), text.end()));
    std::error_code ignored;
    if (text.empty() || !std::filesystem::is_regular_file(path, ignored)) return {};
    std::ifstream file(path, std::ios::binary);
    std::string contents(LONGEST_CRS, '\0');
    file.read(contents.data(), static_cast<std::streamsize>(LONGEST_CRS));
    if (!file.is_open() || file.bad())
        STOP_RUN("ERROR - " + std::string(neededBy) + ": " + text + " could not be read.");
    contents.resize(static_cast<std::size_t>(file.gcount()));
    if (contents.size() == LONGEST_CRS || contents.find('\0') != std::string::npos)
        STOP_RUN("ERROR - " + std::string(neededBy) + ": " + text + " is not the text of a coordinate system.");
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (contents.starts_with(BYTE_ORDER_MARK)) contents.erase(0, BYTE_ORDER_MARK.size());
    return contents;
}

}  // namespace

std::string Crs::coordSys(const GdalBox& mesh) const {
    const char* line = gdal_->crsCoordSys(crs_.get(), &mesh);
    if (line == nullptr) STOP_RUN("ERROR - The coordinate system has no exact .mif form, give a Header.mif.");
    return line;
}

Crs RESOLVE_CRS(const GdalTable& gdal, const std::string& text, std::string_view neededBy) {
    const std::optional<std::string> contents = fileContents(text, neededBy);
    GdalCrs* crs = gdal.crsResolve(contents ? contents->c_str() : text.c_str());
    if (crs == nullptr) STOP_RUN("ERROR - " + std::string(neededBy) + " " + text + ": " + gdal.reason() + ".");
    return {gdal, crs};
}

std::optional<Crs> TRY_RESOLVE_CRS(const GdalTable& gdal, const std::string& text) {
    GdalCrs* crs = gdal.crsResolve(text.c_str());
    if (crs == nullptr) return {};
    return Crs(gdal, crs);
}
