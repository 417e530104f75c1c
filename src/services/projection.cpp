#include "services/projection.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/paths.h"

#include <optional>

namespace {

/// Header.<extension> beside the input file, else Projection.<extension>.
std::optional<std::string> projectionFile(const std::string& folder, std::string_view extension) {
    for (const std::string_view base : {"Header.", "Projection."})
        if (auto found = FIND_FILE(folder + std::string(base) + std::string(extension))) return found;
    return {};
}

void sayUsed(const std::string& name) { REPORT("Using " + name + " for setting projection."); }

std::string coordSysOf(const std::string& name) {
    const int file = OPEN_FILE(name, "I ", "mif");
    std::string line = READ_COORD_SYS_LINE(file);
    CLOSE_FILE(file);
    return line;
}

bool isProjection(std::string_view text) { return COORDINATE_KIND(text) != CoordinateKind::Unknown; }

std::string findForMif(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "mif");
    if (!name) {
        DMESSAGE("WARNING - A Header.mif or Projection.mif file does not exist in folder.");
        REPORT("          Non-Earth Coordinates will be used.");
        return {};
    }
    sayUsed(*name);
    std::string coordSys = coordSysOf(*name);
    if (coordSys.empty()) STOP_RUN("ERROR - Unable to find CoordSys line in " + *name);
    REPORT("mif Projection: " + coordSys);
    return coordSys;
}

std::string findForShp(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "prj");
    if (!name) {
        DMESSAGE("WARNING - A Header.prj or Projection.prj file does not exist in folder.");
        REPORT("   No projection file being written.");
        return {};
    }
    REPORT("GIS Projection being extracted from " + *name);
    std::string prj = READ_PRJ(*name);
    if (!isProjection(prj)) STOP_RUN("ERROR - Projection line could not be found in \"GIS Projection\" .prj file.");
    REPORT("shp Projection: " + prj);
    return prj;
}

std::string findPrj(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "prj");
    return name ? USE_PRJ(*name) : std::string();
}

std::string findCoordSys(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "mif");
    if (!name) return {};
    sayUsed(*name);
    std::string coordSys = coordSysOf(*name);
    if (coordSys.empty()) DMESSAGE("WARNING - Unable to find CoordSys line in " + *name);
    return coordSys;
}

}  // namespace

std::vector<ProjectionFile> PROJECTION_FILES(const std::string& inputFile, ProjectionUse use) {
    std::vector<ProjectionFile> found;
    const std::string folder = FILEFOLDERPATH(inputFile);
    if (const auto name = projectionFile(folder, "mif"); name && use.coordSys != ProjectionNeed::None)
        found.push_back({*name, coordSysOf(*name)});
    if (const auto name = projectionFile(folder, "prj"); name && use.prj != ProjectionNeed::None)
        found.push_back({*name, READ_PRJ(*name)});
    std::erase_if(found, [](const ProjectionFile& file) { return file.text.empty(); });
    return found;
}

Projection FIND_PROJECTION(const std::string& inputFile, ProjectionUse use) {
    Projection projection;
    const std::string folder = FILEFOLDERPATH(inputFile);
    if (use.coordSys == ProjectionNeed::Wanted) projection.coordSys = findForMif(folder);
    else if (use.coordSys == ProjectionNeed::Taken) projection.coordSys = findCoordSys(folder);
    if (use.prj == ProjectionNeed::Wanted) projection.prj = findForShp(folder);
    else if (use.prj == ProjectionNeed::Taken) projection.prj = findPrj(folder);
    return projection;
}

std::string USE_PRJ(const std::string& name) {
    sayUsed(name);
    std::string text = READ_PRJ(name);
    if (isProjection(text)) return text;
    DMESSAGE("WARNING - Unable to find PROJCS line in " + name);
    return {};
}
