// Reads the objects of a shapefile set, in the order of the .shx file.
// Layout: ESRI Shapefile Technical Description, July 1998, tables 2 to 6. No count of the file is believed before the
// file can hold it.
#include "gis/shp_header.h"
#include "gis/shp_layer.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr std::int64_t TYPE_BYTES = 4, BOX_BYTES = 32, COUNT_BYTES = 4, VERTEX_BYTES = 16;
constexpr std::string_view BAD_TYPE = "ERROR 0424 - Reading .shp file object type.";
constexpr std::string_view NO_TYPE = "ERROR 0425 - End of .shp file encountered whilst reading object type.";
constexpr std::string_view BAD_OBJECT = "ERROR 0429 - Reading .shp file object coordinates.";
constexpr std::string_view CUT_OBJECT = "ERROR 0430 - End of .shp file encountered whilst reading object coordinates.";

enum class Bytes : std::uint8_t { Read, End, Error };

Bytes readBytes(GisLayer& layer, char* to, std::int64_t count) {
    const std::int64_t got = READ_BYTES(layer.files[SHP].handle, to, static_cast<std::size_t>(count));
    SHP_OF(layer).position += std::max<std::int64_t>(got, 0);
    return got < 0 ? Bytes::Error : got < count ? Bytes::End : Bytes::Read;
}

std::string diskError(const GisLayer& layer) { return LAST_FILE_ERROR(layer.files[SHP].handle); }

[[noreturn]] void stopAtIndex(const GisLayer& layer, std::string_view why) {
    STOP_RUN("ERROR - " + GETNAM(layer.files[SHX].handle) + " disagrees with the .shp file on object " +
             std::to_string(layer.files[SHP].count) + ": " + std::string(why));
}

/// Enters the next record, past its shape type. False behind the last.
bool nextShape(GisLayer& layer) {
    constexpr std::int64_t HEADER_BYTES = SHP_RECORD_HEADER_BYTES;
    ShpLayer& shp = SHP_OF(layer);
    GisFile& file = layer.files[SHP];
    ShxEntry entry;
    if (!shp.index.next(entry)) return false;
    ++file.count;
    if (entry.offset < static_cast<std::int64_t>(SHP_HEADER_BYTES) ||
        entry.offset + HEADER_BYTES + entry.contentBytes > shp.dataEnd)
        stopAtIndex(layer, "it does not lie within the length of the .shp file.");
    if (shp.position != entry.offset && !SEEK_FILE(file.handle, entry.offset))
        STOP_AT(layer, SHP, diskError(layer), BAD_TYPE);
    shp.position = entry.offset;
    std::array<char, SHP_RECORD_HEADER_BYTES + TYPE_BYTES> start{};
    const Bytes read = readBytes(layer, start.data(), start.size());
    if (read == Bytes::End) STOP_AT(layer, SHP, "", NO_TYPE);
    if (read == Bytes::Error) STOP_AT(layer, SHP, diskError(layer), BAD_TYPE);
    shp.shape = ShpRecord{littleInt32(start.data() + 8), 0, 0, std::int64_t{2} * bigInt32(start.data() + 4)};
    if (shp.shape.contentBytes != entry.contentBytes) stopAtIndex(layer, "the lengths of its record differ.");
    if (shp.shape.contentBytes < TYPE_BYTES) STOP_AT(layer, SHP, "the length of its record is too small.", BAD_TYPE);
    return true;
}

void checkType(const GisLayer& layer) {
    const std::int32_t type = SHP_OF(layer).shape.type;
    if (SHP_TYPE_SUPPORTED(type)) return;
    REPORT_PLACE(layer, SHP, SHP_TYPE_NAME(type));
    DMESSAGE("ERROR 0423 - Unsupported .shp object type " + std::to_string(type));
    if (type > SHP_MULTIPOINT && SHP_TYPE_NAME(type) != "Unknown")
        REPORT("   Export the layer without Z and M values.");
    EXITS();
}

/// The counts that a record of the types 3, 5 and 8 opens with, behind its box.
void readCounts(GisLayer& layer) {
    ShpRecord& shape = SHP_OF(layer).shape;
    const bool hasParts = shape.type != SHP_MULTIPOINT;
    std::array<char, BOX_BYTES + 2 * COUNT_BYTES> bytes{};
    const std::int64_t count = BOX_BYTES + (hasParts ? 2 : 1) * COUNT_BYTES;
    if (shape.contentBytes < TYPE_BYTES + count)
        STOP_AT(layer, SHP, "the length of its record is too small.", BAD_OBJECT);
    const Bytes read = readBytes(layer, bytes.data(), count);
    if (read == Bytes::End) STOP_AT(layer, SHP, "", CUT_OBJECT);
    if (read == Bytes::Error) STOP_AT(layer, SHP, diskError(layer), BAD_OBJECT);
    shape.parts = hasParts ? littleInt32(bytes.data() + BOX_BYTES) : 1;
    shape.points = littleInt32(bytes.data() + count - COUNT_BYTES);
}

void checkParts(const GisLayer& layer) {
    const ShpRecord& shape = SHP_OF(layer).shape;
    if (shape.parts <= MOST_POLYGONS) return;
    STOP_AT(layer, SHP, std::to_string(shape.parts) + " parts",
            (shape.type == SHP_POLYLINE
                 ? "ERROR 0421 - Exceeded maximum number of parts in a .shp polyline.  Limit is "
                 : "ERROR 0422 - Exceeded maximum number of regions within a .shp region.  Limit is ") +
                std::to_string(MOST_POLYGONS));
}

GisKind kindOf(const ShpRecord& shape) {
    if (shape.type == SHP_POINT) return GisKind::Point;
    // a null shape, or one with nothing in it
    if (shape.points == 0 && (shape.type == SHP_MULTIPOINT || shape.parts == 0)) return GisKind::None;
    if (shape.type == SHP_POLYGON) return GisKind::Region;
    if (shape.type == SHP_MULTIPOINT) return GisKind::MultiPoint;
    return shape.parts == 1 ? GisKind::Pline : GisKind::PlineMultiple;
}

void startObject(GisLayer& layer, GisObject& o) {
    const ShpRecord& shape = SHP_OF(layer).shape;
    checkType(layer);
    if (shape.type != SHP_NULL && shape.type != SHP_POINT) {
        readCounts(layer);
        checkParts(layer);
    }
    o.start(kindOf(shape));
    if (o.kind == GisKind::Region || o.kind == GisKind::PlineMultiple) o.sectionCount = shape.parts;
    if (o.kind == GisKind::MultiPoint) o.sectionCount = shape.points;
}

/// At the end of the layer: table and index have to tell of the same objects.
void checkEnd(GisLayer& layer) {
    ShpLayer& shp = SHP_OF(layer);
    if (std::exchange(shp.endChecked, true)) return;
    if (layer.files[DBF].count >= shp.table.records || LOAD_DBF_RECORD(layer) == DbfRecord::End) return;
    DMESSAGE("WARNING - " + GETNAM(layer.files[DBF].handle) + " holds more records than there are objects.");
}

/// Reports why the record cannot hold the coordinates that its counts ask for; true when it can.
bool countsHold(GisLayer& layer, GisRead& result) {
    const ShpRecord& shape = SHP_OF(layer).shape;
    const std::int64_t indices = shape.type == SHP_MULTIPOINT ? 0 : COUNT_BYTES * shape.parts;
    const std::int64_t needed = indices + VERTEX_BYTES * shape.points;
    const std::int64_t before = TYPE_BYTES + BOX_BYTES + (shape.type == SHP_MULTIPOINT ? 1 : 2) * COUNT_BYTES;
    result = GisRead::Failed;
    if (shape.points > static_cast<std::int64_t>(MOST_VERTICES)) {
        REPORT_PLACE(layer, SHP, "");
        gisReportTooManyVertices("Exceeded number of allowable nodes in a single .shp polyline or region.",
                                 shape.points);
        return false;
    }
    if (shape.parts < 1 || shape.points < shape.parts)
        FAILED_AT(layer, SHP, "its numbers of parts and points make no object.", BAD_OBJECT);
    else if (shape.contentBytes < before + needed)
        FAILED_AT(layer, SHP, "it has more points than its record holds.", BAD_OBJECT);
    else if (SHP_OF(layer).position + needed > layer.files[SHP].bytes) FAILED_AT(layer, SHP, "", CUT_OBJECT);
    else return true;
    return false;
}

GisRead readFailed(const GisLayer& layer, Bytes read) {
    return read == Bytes::End ? FAILED_AT(layer, SHP, "", CUT_OBJECT)
                              : FAILED_AT(layer, SHP, diskError(layer), BAD_OBJECT);
}

GisRead readVertices(GisLayer& layer, GisObject& o, std::int32_t points) {
    constexpr std::int64_t AT_A_TIME = 4096;
    const auto count = static_cast<std::size_t>(points);
    o.x.resize(count + 1);
    o.y.resize(count + 1);
    std::vector<char>& bytes = SHP_OF(layer).bytes;
    bytes.resize(static_cast<std::size_t>(AT_A_TIME * VERTEX_BYTES));
    for (std::size_t done = 0; done < count;) {
        const std::size_t part = std::min(static_cast<std::size_t>(AT_A_TIME), count - done);
        if (const Bytes read = readBytes(layer, bytes.data(), static_cast<std::int64_t>(part) * VERTEX_BYTES);
            read != Bytes::Read)
            return readFailed(layer, read);
        for (std::size_t i = 0; i < part; ++i) {
            o.x[done + i + 1] = littleDouble(&bytes[i * 16]);
            o.y[done + i + 1] = littleDouble(&bytes[i * 16 + 8]);
        }
        done += part;
    }
    if (gisHasBadCoordinate(o)) return FAILED_AT(layer, SHP, "it has a coordinate that is no number.", BAD_OBJECT);
    return GisRead::Done;
}

/// One part of all the points, read or still to read.
void setOnePart(GisObject& o, std::int32_t points) {
    o.nr = 1;
    o.ir = {0, points};
}

GisRead readPoint(GisLayer& layer, GisObject& o) {
    if (SHP_OF(layer).shape.contentBytes < TYPE_BYTES + VERTEX_BYTES)
        return FAILED_AT(layer, SHP, "the length of its record is too small.", BAD_OBJECT);
    setOnePart(o, 1);
    return readVertices(layer, o, 1);
}

GisRead readMultiPoint(GisLayer& layer, GisObject& o) {
    GisRead result{};
    if (!countsHold(layer, result)) return result;
    setOnePart(o, SHP_OF(layer).shape.points);
    return readVertices(layer, o, SHP_OF(layer).shape.points);
}

/// The index of the first point of each part, from 0, is the number of the last vertex of the part before it.
GisRead readParts(GisLayer& layer, GisObject& o) {
    GisRead result{};
    if (!countsHold(layer, result)) return result;
    const ShpRecord& shape = SHP_OF(layer).shape;
    std::vector<char>& bytes = SHP_OF(layer).bytes;
    const auto parts = static_cast<std::size_t>(shape.parts);
    bytes.resize(std::max(bytes.size(), parts * 4));
    if (const Bytes read = readBytes(layer, bytes.data(), COUNT_BYTES * shape.parts); read != Bytes::Read)
        return readFailed(layer, read);
    o.nr = shape.parts;
    o.ir.resize(parts + 1);
    for (std::size_t part = 0; part < parts; ++part) o.ir[part] = littleInt32(&bytes[part * 4]);
    o.ir[parts] = shape.points;
    for (std::size_t part = 1; part <= parts; ++part)
        if (o.ir[0] != 0 || o.ir[part] <= o.ir[part - 1])
            return FAILED_AT(layer, SHP, "its parts are not in order.", BAD_OBJECT);
    return readVertices(layer, o, shape.points);
}

}  // namespace

GisRead shpObjectType(GisLayer& layer, GisObject& o) {
    // no geometry, or no header read yet
    if (layer.tableOnly || SHP_OF(layer).table.fields.empty()) gisFormatCheck("gisObjectType-shp");
    while (nextShape(layer)) {
        if (LOAD_DBF_RECORD(layer) == DbfRecord::Deleted) continue;
        startObject(layer, o);
        return GisRead::Done;
    }
    checkEnd(layer);
    return GisRead::End;
}

GisRead shpReadObject(GisLayer& layer, GisObject& o) {
    GisRead result = GisRead::Done;
    const std::int32_t type = SHP_OF(layer).shape.type;
    if (o.kind != GisKind::None) {
        switch (type) {
            case SHP_POINT: result = readPoint(layer, o); break;
            case SHP_MULTIPOINT: result = readMultiPoint(layer, o); break;
            case SHP_POLYLINE:
            case SHP_POLYGON: result = readParts(layer, o); break;
            default: gisFormatCheck("shpReadObject");
        }
    }
    SHP_OF(layer).shape.type = -1;
    return result;
}
