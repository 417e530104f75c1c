#include "services/projection.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/paths.h"

#include <optional>

namespace {

Projection projection;

/// Header.<extension> beside the input file, else Projection.<extension>.
std::optional<std::string> projectionFile(std::string_view extension) {
    for (const std::string_view base : {"Header.", "Projection."})
        if (auto found = FIND_FILE(FILEFOLDERPATH(OPTIONS().inputFile) + std::string(base) + std::string(extension)))
            return found;
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

void findForMif() {
    const std::optional<std::string> name = projectionFile("mif");
    if (!name) {
        DMESSAGE("WARNING - A Header.mif or Projection.mif file does not exist in folder.");
        return REPORT("          Non-Earth Coordinates will be used.");
    }
    sayUsed(*name);
    projection.coordSys = coordSysOf(*name);
    if (projection.coordSys.empty()) STOP_RUN("ERROR - Unable to find CoordSys line in " + *name);
    REPORT("mif Projection: " + projection.coordSys);
}

void findForShp() {
    const std::optional<std::string> name = projectionFile("prj");
    if (!name) {
        DMESSAGE("WARNING - A Header.prj or Projection.prj file does not exist in folder.");
        return REPORT("   No projection file being written.");
    }
    REPORT("GIS Projection being extracted from " + *name);
    projection.prj = READ_PRJ(*name);
    if (!isProjection(projection.prj)) STOP_RUN("ERROR - Projection line could not be found in " + *name);
    REPORT("shp Projection: " + projection.prj);
}

void findPrj() {
    if (const std::optional<std::string> name = projectionFile("prj")) projection.prj = USE_PRJ(*name);
}

void findCoordSys() {
    const std::optional<std::string> name = projectionFile("mif");
    if (!name) return;
    sayUsed(*name);
    projection.coordSys = coordSysOf(*name);
    if (projection.coordSys.empty()) DMESSAGE("WARNING - Unable to find CoordSys line in " + *name);
}

}  // namespace

const Projection& PROJECTION() { return projection; }
void INITIALISE_PROJECTION() { projection = {}; }
void SET_PRJ(std::string_view text) { projection.prj = text; }

void FIND_PROJECTION() {
    INITIALISE_PROJECTION();
    const RunOptions& options = OPTIONS();
    const bool both = options.txt || options.cp || options.lp;
    if (options.mif) findForMif();
    else if (both) findCoordSys();
    if (options.shp && !options.mif) findForShp();
    else if (both || options.raster()) findPrj();
}

std::string USE_PRJ(const std::string& name) {
    sayUsed(name);
    std::string text = READ_PRJ(name);
    if (isProjection(text)) return text;
    DMESSAGE("WARNING - Unable to find PROJCS line in " + name);
    return {};
}
