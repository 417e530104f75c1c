#include "gis/prj_file.h"

#include "gis/layers.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/text.h"

#include <optional>
#include <string_view>

namespace {

constexpr std::size_t LONGEST_PRJ = 1U << 20;  ///< beyond any projection

/// The text of the file, formatted over several lines or not; blank when it cannot be read.
std::string prjText(const std::string& name) {
    const int file = OPEN_FILE(name, "I ", "prj");
    std::string text;
    std::string_view line;
    LineStatus status = LineStatus::Read;
    while (text.size() < LONGEST_PRJ && (status = READ_LINE(file, line)) == LineStatus::Read) text += TRIMMED(line);
    CLOSE_FILE(file);
    if (status != LineStatus::EndOfFile) return {};
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    return text.starts_with(BYTE_ORDER_MARK) ? text.substr(BYTE_ORDER_MARK.size()) : text;
}

std::string comparable(std::string_view text) {
    std::string kept;
    bool quoted = false;
    for (const char c : text) {
        quoted = quoted != (c == '"');
        if (quoted || (c != ' ' && c != '\t' && c != '\r' && c != '\n')) kept += c;
    }
    return UPPERCASE(kept);
}

void reportDifference(bool warningOnly) {
    constexpr std::string_view DIFFERS =
        " 0305 - Projection of .shp file is different to that specified by the SHP Projection == command.";
    DMESSAGE((warningOnly ? "WARNING" : "ERROR") + std::string(DIFFERS));
    if (warningOnly) return;
    REPORT("Use \"GIS Projection Check == WARNING\" to change message to a WARNING.");
    EXITS();
}

}  // namespace

void CHECK_PRJ(const std::string& base) {
    const GisProjection& run = gisProjection();
    if (TRIMMED(run.prj).empty()) return;
    const std::optional<std::string> name = FIND_FILE(base + ".prj");
    const std::string text = name ? prjText(*name) : "";
    if (text.empty()) {
        REPORT(base + ".prj");
        STOP_RUN("ERROR 0420 - Could not read projection line in .prj file.");
    }
    const bool differs = comparable(text) != comparable(run.prj);
    const bool projected = FLAGEXISTS(text, "PROJCS[");
    if (differs || !projected) REPORT(*name);
    if (!projected)
        DMESSAGE("WARNING 0420 - Could not find PROJCS definition.  Projection of .shp file might not be cartesian.");
    if (differs) reportDifference(run.differenceIsWarning);
}

void WRITE_PRJ(const std::string& base) {
    const std::string& text = gisProjection().prj;
    if (TRIMMED(text).empty()) return;
    const int file = OPEN_FILE(base + ".prj", "O ", "prj");
    WRITE_OR_STOP(file, text);
    CLOSE_FILE(file);
}
