#include "services/projection.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>

namespace {

Projection projection;

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
constexpr std::string_view NON_EARTH = "CoordSys NonEarth Units \"m\"";

/// Header.<extension> beside the input file, else Projection.<extension>.
std::optional<std::string> projectionFile(std::string_view extension) {
    for (const std::string_view base : {"Header.", "Projection."})
        if (auto found = FIND_FILE(FILEFOLDERPATH(OPTIONS().inputFile) + std::string(base) + std::string(extension)))
            return found;
    return {};
}

std::string_view withoutMark(std::string_view text) {
    if (text.starts_with(BYTE_ORDER_MARK)) text.remove_prefix(BYTE_ORDER_MARK.size());
    return text;
}

/// The first line that holds "CoordSys"; blank when there is none.
std::string coordSysLine(const std::string& name) {
    const int file = OPEN_FILE(name, "I ", "mif");
    std::string found;
    std::string line;
    while (found.empty() && READLINE(file, line) == LineStatus::Read)
        if (FLAGEXISTS(line, "CoordSys")) found = TRIMMED(withoutMark(line));
    CLOSE_FILE(file);
    return found;
}

void findForMif() {
    const std::optional<std::string> name = projectionFile("mif");
    if (!name) {
        DMESSAGE("WARNING - A Header.mif or Projection.mif file does not exist in folder.");
        REPORT("          Non-Earth Coordinates will be used.");
        projection.text = NON_EARTH;
        return;
    }
    REPORT("Using " + *name + " for setting projection.");
    projection.text = coordSysLine(*name);
    if (projection.text.empty()) STOP_RUN("ERROR - Unable to find CoordSys line in " + *name);
    REPORT("mif Projection: " + projection.text);
}

void findForShp() {
    const std::optional<std::string> name = projectionFile("prj");
    if (!name) {
        DMESSAGE("WARNING - A Header.prj or Projection.prj file does not exist in folder.");
        REPORT("   No projection file being written.");
        return;
    }
    REPORT("GIS Projection being extracted from " + *name);
    const std::optional<std::string> text = READ_PRJ(*name);
    if (!text) STOP_RUN("ERROR - Projection line could not be found in \"GIS Projection\" .prj file.");
    projection.text = *text;
    REPORT("shp Projection: " + projection.text);
}

void findForRaster() {
    const std::optional<std::string> name = projectionFile("prj");
    if (!name) return;
    if (const std::optional<std::string> text = READ_PRJ(*name)) projection.text = *text;
    else DMESSAGE("WARNING - No projection found in " + *name + ", no .prj file is written.");
}

/// Lines trimmed and joined: formatted text breaks between its items, where blanks mean nothing.
std::string onOneLine(std::string_view text) {
    std::string joined;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        joined += TRIMMED(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return joined;
}

}  // namespace

const Projection& PROJECTION() { return projection; }
void SET_PROJECTION(std::string_view text) { projection.text = text; }

void FIND_PROJECTION() {
    projection = Projection{};
    const RunOptions& options = OPTIONS();
    if (options.mif) findForMif();
    else if (options.shp) findForShp();
    else if (options.raster()) findForRaster();
}

std::optional<std::string> READ_PRJ(std::string_view name) {
    constexpr std::int64_t LONGEST = 1 << 20;
    const int file = OPEN_FILE(name, "I ", "prj");
    std::string bytes(static_cast<std::size_t>(LONGEST), '\0');
    const std::int64_t length = READ_BYTES(file, bytes.data(), bytes.size());
    if (length < 0) STOP_RUN("ERROR - Could not read " + GETNAM(file) + ": " + LAST_FILE_ERROR(file));
    CLOSE_FILE(file);
    if (length == LONGEST) return {};
    std::string text = onOneLine(withoutMark(std::string_view(bytes).substr(0, static_cast<std::size_t>(length))));
    for (const std::string_view kind : {"PROJCS", "GEOGCS", "COMPD_CS", "PROJCRS", "GEOGCRS"})
        if (FLAGEXISTS(text, kind)) return text;
    return {};
}
