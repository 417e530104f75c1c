#include "gis/layer_table.h"

#include "services/console.h"
#include "services/exits.h"

#include <cmath>

namespace {

std::string pleaseContact(std::string_view check, std::string_view join) {
    return "Should not be here " + std::string(check) + std::string(join) + std::string(SUPPORT_CONTACT);
}

/// Table for both directions, in the order of GisKind.
struct KindRow {
    std::string_view name;
    GisShape shape;
};
constexpr std::array<KindRow, 12> KINDS = {{
    {"NONE", GisShape::Any},
    {"POINT", GisShape::Point},
    {"LINE", GisShape::Lines},
    {"PLINE", GisShape::Lines},
    {"PLINE MULTIPLE", GisShape::Lines},
    {"REGION", GisShape::Region},
    {"ELLIPSE", GisShape::Any},
    {"RECT", GisShape::Any},
    {"ROUNDRECT", GisShape::Any},
    {"ARC", GisShape::Any},
    {"TEXT", GisShape::Any},
    {"MULTIPOINT", GisShape::MultiPoint},
}};
static_assert(KINDS.size() == static_cast<std::size_t>(GisKind::MultiPoint) + 1);

}  // namespace

std::string_view gisKindName(GisKind kind) { return KINDS[static_cast<std::size_t>(kind)].name; }
GisShape gisShapeOf(GisKind kind) { return KINDS[static_cast<std::size_t>(kind)].shape; }

void gisCheckHandle(std::int32_t gisID, std::string_view operation) {
    if (gisID < 1) STOP_RUN(pleaseContact(std::string(operation) + "[gisID=0]", " - please contact "));
}

void gisFormatCheck(std::string_view check) {
    STOP_RUN(pleaseContact("[" + std::string(check) + "]", ".  Please contact "));
}

void gisReportTooManyVertices(std::string_view text, std::int64_t requested) {
    DMESSAGE("ERROR 0310 - " + std::string(text));
    REPORT("Requested " + std::to_string(requested));
    REPORT("Limit " + std::to_string(MOST_VERTICES));
}

void gisCheckParts(const GisLayer& layer, const GisObject& o) {
    if (o.nr < 0 || o.ir.size() <= static_cast<std::size_t>(o.nr) || (o.nr == 0) != (o.kind == GisKind::None))
        SHOULD_NOT_BE_HERE("gisO_%nr");
    for (std::size_t i = 1; i <= static_cast<std::size_t>(o.nr); ++i) {
        if (o.ir[i] > o.ir[i - 1]) continue;
        DMESSAGE(pleaseContact("[gisO_%ir(i) <= gisO_%ir(i-1)]", " - please contact "));
        REPORT("GIS Layer   = " + std::to_string(layer.id));
        REPORT("i           = " + std::to_string(i));
        REPORT("gisO_%ir(i) = " + std::to_string(o.ir[i]));
        REPORT("gisO_%nr    = " + std::to_string(o.nr));
        EXITS();
    }
    if (o.x.size() <= o.vertexCount() || o.y.size() <= o.vertexCount()) SHOULD_NOT_BE_HERE("gisO_%ir(nr)");
}

bool gisHasGoodParts(const GisObject& o) {
    if (o.nr <= 0 || o.ir.size() <= static_cast<std::size_t>(o.nr)) return false;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(o.nr); ++i)
        if (o.ir[i] <= o.ir[i - 1]) return false;
    return o.x.size() > o.vertexCount() && o.y.size() > o.vertexCount();
}

bool gisHasBadCoordinate(const GisObject& o) {
    for (std::size_t i = 1; i <= o.vertexCount(); ++i)
        if (!std::isfinite(o.x[i]) || !std::isfinite(o.y[i])) return true;
    return false;
}

void gisStopAtFileLimit(std::string_view file, std::string_view advice) {
    STOP_RUN("ERROR - " + std::string(file) + " would pass " + std::to_string(MOST_FILE_BYTES) +
             " bytes, which GIS packages do not open.  " + std::string(advice));
}

void gisReportProjection(std::string_view extension, const std::string& name, std::string_view layers,
                         std::string_view runs) {
    const bool warning = gisProjection().differenceIsWarning;
    DMESSAGE((warning ? "WARNING 0305 - Projection of " : "ERROR 0305 - Projection of ") + std::string(extension) +
             " file is different to that of the run.");
    REPORT("   " + name + ": " + std::string(layers));
    REPORT("   The run: " + std::string(runs));
    if (warning) return;
    REPORT("Use -prjwarn to change message to a WARNING.");
    EXITS();
}

void gisChoosePage(const GisLayer& layer, TextDecoder& text, int page) {
    if (text.choose(page)) return;
    DMESSAGE("WARNING - " + layer.path + " is in code page " + std::to_string(page) +
             ", which this system does not have; its text is taken to be in UTF-8 or code page 1252.");
}

void gisWarnOfText(GisLayer& layer) {
    if (!layer.warnedOfText)
        DMESSAGE("WARNING - " + layer.path + " holds characters that code page 1252 lacks; they become \"?\".");
    layer.warnedOfText = true;
}
