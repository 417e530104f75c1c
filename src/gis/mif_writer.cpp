#include "gis/code_page.h"
#include "gis/data_line.h"
#include "gis/fixed_text.h"
#include "gis/mif_layer.h"
#include "services/console.h"
#include "services/exits.h"

#include <charconv>

namespace {

constexpr int NUMBER_WIDTH = 16;
constexpr int DECIMALS = 6;
constexpr int TEXT_DECIMALS = 3;  ///< of the corners of a text
constexpr std::size_t LONGEST_VERTEX = 2 * (LONGEST_FIXED + 1) + 1;

void addVertex(GrowingBytes& text, const GisObject& o, std::size_t i, int decimals = DECIMALS) {
    char* at = PUT_FIXED_FIELD(text.room(LONGEST_VERTEX), o.x[i], NUMBER_WIDTH, decimals);
    text.end(PUT_FIXED_FIELD(at, o.y[i], NUMBER_WIDTH, decimals));
}

/// The keyword with its blank, the count and a line end.
void addCount(GrowingBytes& text, std::string_view keyword, std::int32_t count) {
    text.add(keyword);
    char* at = text.room(16);
    at = std::to_chars(at, at + 15, count).ptr;
    *at++ = '\n';
    text.end(at);
}

void addVertices(GrowingBytes& text, const GisObject& o, std::size_t first, std::size_t last) {
    for (std::size_t i = first; i <= last; ++i) {
        addVertex(text, o, i);
        text.add("\n");
    }
}

void addParts(GrowingBytes& text, const GisObject& o) {
    for (std::size_t part = 1; part <= static_cast<std::size_t>(o.nr); ++part) {
        addCount(text, " ", o.ir[part] - o.ir[part - 1]);
        addVertices(text, o, static_cast<std::size_t>(o.ir[part - 1]) + 1, static_cast<std::size_t>(o.ir[part]));
    }
}

void addPolyline(GrowingBytes& text, const GisObject& o) {
    if (o.nr > 1) {
        addCount(text, "Pline Multiple ", o.nr);
        addParts(text, o);
    } else {
        addCount(text, "Pline ", o.ir[1]);
        addVertices(text, o, 1, o.vertexCount());
    }
}

/// One line of `count` vertices behind the keyword.
void addLine(GrowingBytes& text, std::string_view keyword, const GisObject& o, std::size_t count,
             int decimals = DECIMALS) {
    if (o.vertexCount() != count) SHOULD_NOT_BE_HERE("mifWriteObject");
    text.add(keyword);
    for (std::size_t i = 1; i <= count; ++i) addVertex(text, o, i, decimals);
    text.add("\n");
}

void addText(GisLayer& layer, GrowingBytes& text, const GisObject& o) {
    std::string encoded;
    if (!ADD_AS_CODE_PAGE(encoded, o.text)) gisWarnOfText(layer);
    text.add("Text\n\"");
    for (const char c : encoded) {
        if (c == '"') text.add("\"");
        text.add(std::string_view(c == '\n' || c == '\r' ? " " : &c, 1));
    }
    text.add("\"\n");
    addLine(text, "    ", o, 2, TEXT_DECIMALS);
}

/// Of every kind but a text.
void addObject(GrowingBytes& text, const GisObject& o) {
    switch (o.kind) {
        case GisKind::None: return text.add("none\n");
        case GisKind::Point: return addLine(text, "Point ", o, 1);
        case GisKind::Line: return addLine(text, "Line ", o, 2);
        case GisKind::Pline:
        case GisKind::PlineMultiple: return addPolyline(text, o);
        case GisKind::Region: addCount(text, "Region ", o.nr); return addParts(text, o);
        case GisKind::MultiPoint:
            addCount(text, "MultiPoint ", static_cast<std::int32_t>(o.vertexCount()));
            return addVertices(text, o, 1, o.vertexCount());
        default:
            STOP_RUN("ERROR 0350 - Trying to write a MIF object that is not yet supported.  Please contact " +
                     std::string(SUPPORT_CONTACT));
    }
}

[[noreturn]] void stopWriting(const std::string& reason) {
    DMESSAGE("ERROR 0439 - Writing .mif file object coordinates.");
    REPORT("   " + reason);
    EXITS();
}

void putObjects(GisLayer& layer, std::string_view bytes, std::int64_t count) {
    GisFile& file = layer.files[0];
    if (!WRITE_BYTES(file.handle, bytes))
        stopWriting(GETNAM(file.handle) + ": " + LAST_FILE_ERROR(file.handle) + ". The file is incomplete.");
    file.bytes += static_cast<std::int64_t>(bytes.size());
    MIF_OF(layer).objects += count;
}

/// False when the disk refuses them, which is said.
bool putRecords(GisLayer& layer, std::string_view bytes, std::int64_t count) {
    GisFile& file = layer.files[1];
    if (!WRITE_BYTES(file.handle, bytes)) {
        REPORT("   " + GETNAM(file.handle) + ": " + LAST_FILE_ERROR(file.handle) + ". The file is incomplete.");
        return false;
    }
    file.bytes += static_cast<std::int64_t>(bytes.size());
    MIF_OF(layer).records += count;
    return true;
}

bool fits(const GisFile& file, std::size_t bytes) {
    return file.bytes + static_cast<std::int64_t>(bytes) <= MOST_FILE_BYTES;
}

/// What is written without a word to the user.
bool isPlain(const GisObject& o) {
    if (gisHasBadCoordinate(o)) return false;
    if (o.kind == GisKind::Point) return o.vertexCount() == 1;
    return o.kind == GisKind::Pline || o.kind == GisKind::PlineMultiple || o.kind == GisKind::Region;
}

}  // namespace

void mifWriteObject(GisLayer& layer, const GisObject& o) {
    const GisFile& file = layer.files[0];
    if (gisHasBadCoordinate(o))
        stopWriting(GETNAM(file.handle) + ": object " + std::to_string(MIF_OF(layer).objects + 1) +
                    " has a coordinate that is not a number.");
    GrowingBytes& text = MIF_OF(layer).text;
    text.clear();
    if (o.kind == GisKind::Text) addText(layer, text, o);
    else addObject(text, o);
    // The record of this object must fit as well, so that the pair is whole.
    const bool recordFits = fits(layer.files[1], LONGEST_LINE);
    if (!fits(file, text.size()) || !recordFits)
        gisStopAtFileLimit(GETNAM(layer.files[recordFits ? 0 : 1].handle), "Use -shp or a coarser output.");
    putObjects(layer, text.text(), 1);
}

bool mifWriteRecord(GisLayer& layer, std::string_view line, bool large) {
    const GisFile& file = layer.files[1];
    if (MIF_OF(layer).records + 1 != MIF_OF(layer).objects)
        SHOULD_NOT_BE_HERE(large ? "gisWriteRecordLarge" : "gisWriteRecord");
    if (const std::size_t values = VALUE_COUNT(line); values < layer.header.attributes.size()) {
        REPORT("   " + GETNAM(file.handle) + ", line " + std::to_string(MIF_OF(layer).records + 1));
        mifReportValues(layer, values);
        return false;
    }
    std::string& text = MIF_OF(layer).line;
    text.clear();
    if (IS_ASCII(line)) {
        text = line;
    } else if (!ADD_AS_CODE_PAGE(text, line)) {
        gisWarnOfText(layer);
    }
    text += '\n';
    return putRecords(layer, text, 1);
}

void mifAddToBatch(const GisLayer& layer, GisBatch& batch, const GisObject& o, std::string_view line) {
    batch.plain = batch.plain && isPlain(o) && IS_ASCII(line) && VALUE_COUNT(line) >= layer.header.attributes.size();
    if (!batch.plain) return;
    addObject(batch.objects, o);
    batch.records.add(line);
    batch.records.add("\n");
}

GisBatchWrite mifWriteBatch(GisLayer& layer, GisBatch& batch) {
    if (!fits(layer.files[0], batch.objects.size()) || !fits(layer.files[1], batch.records.size() + LONGEST_LINE))
        return GisBatchWrite::Unfit;
    putObjects(layer, batch.objects.text(), batch.count);
    return putRecords(layer, batch.records.text(), batch.count) ? GisBatchWrite::Done : GisBatchWrite::Failed;
}
