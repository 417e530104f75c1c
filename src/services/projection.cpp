#include "services/projection.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/paths.h"

#include <optional>
#include <utility>

namespace {

Projection projection;

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

void findForMif(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "mif");
    if (!name) {
        DMESSAGE("WARNING - A Header.mif or Projection.mif file does not exist in folder.");
        return REPORT("          Non-Earth Coordinates will be used.");
    }
    sayUsed(*name);
    projection.coordSys = coordSysOf(*name);
    if (projection.coordSys.empty()) STOP_RUN("ERROR - Unable to find CoordSys line in " + *name);
    REPORT("mif Projection: " + projection.coordSys);
}

void findForShp(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "prj");
    if (!name) {
        DMESSAGE("WARNING - A Header.prj or Projection.prj file does not exist in folder.");
        return REPORT("   No projection file being written.");
    }
    REPORT("GIS Projection being extracted from " + *name);
    projection.prj = READ_PRJ(*name);
    if (!isProjection(projection.prj))
        STOP_RUN("ERROR - Projection line could not be found in \"GIS Projection\" .prj file.");
    REPORT("shp Projection: " + projection.prj);
}

void findPrj(const std::string& folder) {
    if (const std::optional<std::string> name = projectionFile(folder, "prj")) projection.prj = USE_PRJ(*name);
}

void findCoordSys(const std::string& folder) {
    const std::optional<std::string> name = projectionFile(folder, "mif");
    if (!name) return;
    sayUsed(*name);
    projection.coordSys = coordSysOf(*name);
    if (projection.coordSys.empty()) DMESSAGE("WARNING - Unable to find CoordSys line in " + *name);
}

}  // namespace

const Projection& PROJECTION() { return projection; }
void INITIALISE_PROJECTION() { projection = {}; }
void SET_PROJECTION(Projection settled) { projection = std::move(settled); }
void SET_PRJ(std::string_view text) {
    projection.prj = text;
    projection.wkt.clear();
}

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

void FIND_PROJECTION(const std::string& inputFile, ProjectionUse use) {
    INITIALISE_PROJECTION();
    const std::string folder = FILEFOLDERPATH(inputFile);
    if (use.coordSys == ProjectionNeed::Wanted) findForMif(folder);
    else if (use.coordSys == ProjectionNeed::Taken) findCoordSys(folder);
    if (use.prj == ProjectionNeed::Wanted) findForShp(folder);
    else if (use.prj == ProjectionNeed::Taken) findPrj(folder);
}

std::string USE_PRJ(const std::string& name) {
    sayUsed(name);
    std::string text = READ_PRJ(name);
    if (isProjection(text)) return text;
    DMESSAGE("WARNING - Unable to find PROJCS line in " + name);
    return {};
}
