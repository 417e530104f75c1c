#include "gis/code_page.h"
#include "gis/data_line.h"
#include "gis/mif_layer.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/free_form.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::int32_t FEWEST_REGION_POINTS = 5;  ///< four distinct corners and the closing point
constexpr std::int64_t SHORTEST_VERTEX_LINE = 4;  ///< "0 0" and its line end
constexpr std::int64_t FEW_VERTICES = 10000;      ///< read without asking first how long the file is

// ---- kinds ----
struct Keyword {
    std::string_view first, second;
    GisKind kind;
    bool counted = false;  ///< the section count stands behind it
};
/// Compared from the top; the whole word counts, so that only PLINE MULTIPLE has to stand before PLINE.
constexpr Keyword KEYWORDS[] = {
    {"POINT", "", GisKind::Point},
    {"PLINE", "MULTIPLE", GisKind::PlineMultiple, true},
    {"PLINE", "", GisKind::Pline},
    {"LINE", "", GisKind::Line},
    {"REGION", "", GisKind::Region, true},
    {"MULTIPOINT", "", GisKind::MultiPoint, true},
    {"NONE", "", GisKind::None},
    {"RECT", "", GisKind::Rect},
    {"ROUNDRECT", "", GisKind::RoundRect},
    {"TEXT", "", GisKind::Text},
    {"ARC", "", GisKind::Arc},
    {"ELLIPSE", "", GisKind::Ellipse},
};

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// Takes a whole word and the blanks before it off the line.
bool takeWord(std::string_view& line, std::string_view word) {
    const std::string_view trimmed = line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!BEGINS_WITH(trimmed, word) || (trimmed.size() > word.size() && isLetter(trimmed[word.size()]))) return false;
    line = trimmed.substr(word.size());
    return true;
}

/// The keyword that the line begins with, taken off it.
const Keyword* takeKeyword(std::string_view& line) {
    for (const Keyword& keyword : KEYWORDS) {
        std::string_view rest = line;
        if (!takeWord(rest, keyword.first) || (!keyword.second.empty() && !takeWord(rest, keyword.second))) continue;
        line = rest;
        return &keyword;
    }
    return nullptr;
}

// ---- failures ----
GisRead erroneous(const GisLayer& layer, std::string_view line) {
    DMESSAGE("ERROR 0308 - Reading .mif file.  Erroneous line is:");
    REPORT(line.substr(0, 200));
    mifReportPlace(layer.files[0]);
    return GisRead::Failed;
}

/// The next line of an object, or the report of why there is none.
GisRead objectLine(GisLayer& layer, std::string_view& line) {
    const LineStatus status = mifNextLine(layer, line);
    if (status == LineStatus::Read) return GisRead::Done;
    DMESSAGE(status == LineStatus::EndOfFile ? "ERROR 0309 - Unexpected end of .mif file encountered."
                                             : "ERROR 0308 - Reading .mif file.  Check file format is not corrupted.");
    mifReportPlace(layer.files[0]);
    return GisRead::Failed;
}

// ---- coordinates ----
bool takeVertex(FreeForm& values, GisObject& o) {
    double x = 0.0;
    double y = 0.0;
    if (values.NEXT_REAL(x) != FreeForm::Read::Value || values.NEXT_REAL(y) != FreeForm::Read::Value) return false;
    if (!std::isfinite(x) || !std::isfinite(y)) return false;
    o.add(x, y);
    return true;
}

/// The one or two vertices that stand on one line; what may follow them (a style) is left.
GisRead verticesOnLine(GisLayer& layer, std::string_view line, int count, GisObject& o) {
    FreeForm values(line);
    for (int i = 0; i < count; ++i)
        if (!takeVertex(values, o)) return erroneous(layer, line);
    o.endPart();
    return GisRead::Done;
}

/// False, with the report, for more vertices than an object or the rest of the file can hold.
bool canHold(const GisLayer& layer, const GisObject& o, std::int64_t count) {
    const std::int64_t together = static_cast<std::int64_t>(o.x.size()) - 1 + count;
    if (count > static_cast<std::int64_t>(MOST_VERTICES) || together > static_cast<std::int64_t>(MOST_VERTICES)) {
        gisReportTooManyVertices("Exceeded number of allowable nodes in a single polyline or region.", together);
        mifReportPlace(layer.files[0]);
        return false;
    }
    if (count <= FEW_VERTICES) return true;
    // the last line end may be missing
    const std::int64_t left = layer.files[0].bytes - FILE_POSITION(layer.files[0].handle) + 1;
    if (count <= left / SHORTEST_VERTEX_LINE) return true;
    DMESSAGE("ERROR 0309 - Unexpected end of .mif file encountered.");
    REPORT("   " + std::to_string(count) + " vertices are announced, more than the rest of the file holds.");
    mifReportPlace(layer.files[0]);
    return false;
}

/// One part: `count` lines of one vertex each.
GisRead readPart(GisLayer& layer, std::int64_t count, GisObject& o) {
    if (!canHold(layer, o, count)) return GisRead::Failed;
    std::string_view line;
    for (std::int64_t i = 0; i < count; ++i) {
        if (objectLine(layer, line) != GisRead::Done) return GisRead::Failed;
        FreeForm values(line);
        if (!takeVertex(values, o) || !values.ENDED()) return erroneous(layer, line);
    }
    o.endPart();
    return GisRead::Done;
}

/// A count of at least 1; Failed with the report for anything else.
GisRead readCount(const GisLayer& layer, std::string_view line, std::int64_t& count) {
    FreeForm values(line);
    if (values.NEXT_INTEGER(count) == FreeForm::Read::Value && count >= 1) return GisRead::Done;
    return erroneous(layer, line);
}
GisRead readCountLine(GisLayer& layer, std::int64_t& count) {
    std::string_view line;
    return objectLine(layer, line) == GisRead::Done ? readCount(layer, line, count) : GisRead::Failed;
}

GisRead readPline(GisLayer& layer, GisObject& o) {
    std::int64_t count = 0;
    const bool onKeywordLine = !TRIMMED(MIF_OF(layer).keywordLine).empty();  // some writers put it on a line of its own
    const GisRead read =
        onKeywordLine ? readCount(layer, MIF_OF(layer).keywordLine, count) : readCountLine(layer, count);
    return read == GisRead::Done ? readPart(layer, count, o) : read;
}

GisRead readSections(GisLayer& layer, GisObject& o) {
    for (std::int32_t i = 0; i < o.sectionCount; ++i) {
        std::int64_t count = 0;
        if (readCountLine(layer, count) != GisRead::Done || readPart(layer, count, o) != GisRead::Done)
            return GisRead::Failed;
    }
    return GisRead::Done;
}

GisRead shortRegion(GisLayer& layer) {
    DMESSAGE(layer.dropShortRegions
                 ? "WARNING 0318 - Insufficient points for Region object in mif file.  Region ignored."
                 : "ERROR 0318 - Less than 5 points for Region object in mif file.");
    mifReportPlace(layer.files[0]);
    return layer.dropShortRegions ? GisRead::Dropped : GisRead::Failed;
}

GisRead readRegion(GisLayer& layer, GisObject& o) {
    if (o.sectionCount > MOST_POLYGONS) {
        DMESSAGE("ERROR 0304 - Exceeded maximum number of polygons in region below of " +
                 std::to_string(MOST_POLYGONS));
        REPORT("Region" + MIF_OF(layer).keywordLine);
        mifReportPlace(layer.files[0]);
        return GisRead::Failed;
    }
    for (std::int32_t i = 0; i < o.sectionCount; ++i) {
        std::int64_t count = 0;
        if (readCountLine(layer, count) != GisRead::Done) return GisRead::Failed;
        if (count < FEWEST_REGION_POINTS) return shortRegion(layer);
        if (readPart(layer, count, o) != GisRead::Done) return GisRead::Failed;
    }
    return GisRead::Done;
}

GisRead readText(GisLayer& layer, GisObject& o) {
    std::string_view line = MIF_OF(layer).keywordLine;  // the text stands there or on the next line
    if (TRIMMED(line).empty() && objectLine(layer, line) != GisRead::Done) return GisRead::Failed;
    DataValue value;
    DataLine whole(line, '\0');
    whole.NEXT(value);
    MIF_OF(layer).decoder.add(o.text, value.text);
    if (objectLine(layer, line) != GisRead::Done) return GisRead::Failed;
    return verticesOnLine(layer, line, 2, o);
}

/// Passes over the records of objects whose record the caller did not ask for, up to that of object `number`.
LineStatus skipRecords(GisLayer& layer, std::int64_t number) {
    std::string_view line;
    LineStatus status = LineStatus::Read;
    while (MIF_OF(layer).records < number - 1 && status == LineStatus::Read) {
        status = READ_LINE(layer.files[1].handle, line);
        ++layer.files[1].count;
        ++MIF_OF(layer).records;
    }
    return status;
}

/// A .mid file with records left when the objects end belongs to a .mif file that has lost its end.
bool recordsAreLeft(GisLayer& layer) {
    std::string_view line;
    return skipRecords(layer, MIF_OF(layer).objects + 1) == LineStatus::Read &&
           READ_LINE(layer.files[1].handle, line) == LineStatus::Read && !TRIMMED(line).empty();
}

GisRead endOfObjects(GisLayer& layer, LineStatus status) {
    if (status == LineStatus::EndOfFile && !recordsAreLeft(layer)) return GisRead::End;
    DMESSAGE(status == LineStatus::EndOfFile ? "ERROR 0322 - End of .mif file encountered whilst reading object type."
                                             : "ERROR 0321 - Reading .mif file object type.");
    if (status == LineStatus::EndOfFile)
        REPORT("   " + GETNAM(layer.files[1].handle) + " holds records beyond the last object.");
    mifReportPlace(layer.files[0]);
    return GisRead::Failed;
}

/// The first `count` values of a record with commas between them, whatever stands between them in the file.
void addWithCommas(std::string& out, std::string_view line, char delimiter, std::size_t count) {
    DataLine values(line, delimiter);
    DataValue value;
    std::string one;
    for (std::size_t i = 0; i < count && values.NEXT(value); ++i) {
        if (i > 0) out += ',';
        one.clear();
        const bool needsQuotes = value.quoted || value.text.find_first_of(",\"") != std::string_view::npos;
        if (needsQuotes) ADD_TEXT(one, value.text);
        out += needsQuotes ? std::string_view(one) : value.text;
    }
}

}  // namespace

GisRead mifObjectType(GisLayer& layer, GisObject& o) {
    if (MIF_OF(layer).dataOffset == 0) SHOULD_NOT_BE_HERE("mifObjectType");
    std::string_view line;
    for (;;) {
        if (const LineStatus status = mifNextLine(layer, line); status != LineStatus::Read)
            return endOfObjects(layer, status);
        std::string_view rest = line;
        if (takeWord(rest, "COLLECTION")) {
            DMESSAGE("ERROR 0303 - MIF \"Collection\" objects not supported.  Delete or disaggregate object.");
            mifReportPlace(layer.files[0]);
            return GisRead::Failed;
        }
        const Keyword* keyword = takeKeyword(rest);
        if (keyword == nullptr) continue;
        o.start(keyword->kind);
        std::int64_t count = 0;
        if (keyword->counted && readCount(layer, rest, count) != GisRead::Done) return GisRead::Failed;
        o.sectionCount = static_cast<std::int32_t>(std::min<std::int64_t>(count, INT32_MAX));
        MIF_OF(layer).keywordLine = rest;
        ++MIF_OF(layer).objects;
        return GisRead::Done;
    }
}

GisRead mifReadObject(GisLayer& layer, GisObject& o) {
    switch (o.kind) {
        case GisKind::None: return GisRead::Done;
        case GisKind::Point: return verticesOnLine(layer, MIF_OF(layer).keywordLine, 1, o);
        case GisKind::Pline: return readPline(layer, o);
        case GisKind::PlineMultiple: return readSections(layer, o);
        case GisKind::Region: return readRegion(layer, o);
        case GisKind::MultiPoint: return readPart(layer, o.sectionCount, o);
        case GisKind::Text: return readText(layer, o);
        case GisKind::Line:
        case GisKind::Rect:
        case GisKind::RoundRect:
        case GisKind::Arc:
        case GisKind::Ellipse: return verticesOnLine(layer, MIF_OF(layer).keywordLine, 2, o);
    }
    SHOULD_NOT_BE_HERE("mifReadObject");
}

GisRead mifReadRecord(GisLayer& layer, std::string& line) {
    GisFile& file = layer.files[1];
    std::string_view read;
    LineStatus status = skipRecords(layer, MIF_OF(layer).objects);
    if (status == LineStatus::Read) status = READ_LINE(file.handle, read);
    ++file.count;
    if (const std::string_view text = WITHOUT_MARK(read); MIF_OF(layer).records == 0 && text.size() < read.size()) {
        MIF_OF(layer).decoder.choose(PAGE_UTF_8);
        read = text;
    }
    const std::size_t values = status == LineStatus::Read ? VALUE_COUNT(read, MIF_OF(layer).delimiter) : 0;
    if (values < layer.header.attributes.size() || read.size() >= LONGEST_LINE) {
        mifReportPlace(file);
        if (status == LineStatus::EndOfFile) REPORT("   The file ends before the record of the last object.");
        if (read.size() >= LONGEST_LINE)
            REPORT("   The line is longer than " + std::to_string(LONGEST_LINE) + " characters.");
        else if (status == LineStatus::Read) mifReportValues(layer, values);
        return GisRead::Failed;
    }
    ++MIF_OF(layer).records;
    line.clear();
    if (MIF_OF(layer).delimiter == ',' && values == layer.header.attributes.size()) {
        MIF_OF(layer).decoder.add(line, read);
        return GisRead::Done;
    }
    MIF_OF(layer).line.clear();
    addWithCommas(MIF_OF(layer).line, read, MIF_OF(layer).delimiter, layer.header.attributes.size());
    MIF_OF(layer).decoder.add(line, MIF_OF(layer).line);
    return GisRead::Done;
}
