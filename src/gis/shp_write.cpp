// Writes the objects of a shapefile set: a record of the .shp file and its place in the .shx file.
// Layout: ESRI Shapefile Technical Description, July 1998, tables 3 to 6.
#include "gis/shp_header.h"
#include "gis/shp_layer.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view NOT_WRITTEN = "ERROR 0439 - Writing .shp file object coordinates.";
constexpr std::int64_t TYPE_BYTES = 4, BOX_BYTES = 32, COUNT_BYTES = 4, VERTEX_BYTES = 16;

std::int32_t shapeTypeOf(GisKind kind) {
    const GisShape shape = gisShapeOf(kind);
    if (shape == GisShape::Any)
        STOP_RUN("ERROR 0350 - Trying to write a SHP object that is not yet supported.  Please contact " +
                 std::string(SUPPORT_CONTACT));
    return static_cast<std::int32_t>(shape);
}

std::int64_t contentBytes(std::int32_t type, const GisObject& o) {
    const auto vertices = static_cast<std::int64_t>(o.vertexCount()) * VERTEX_BYTES;
    if (type == SHP_POINT) return TYPE_BYTES + VERTEX_BYTES;
    if (type == SHP_MULTIPOINT) return TYPE_BYTES + BOX_BYTES + COUNT_BYTES + vertices;
    return TYPE_BYTES + BOX_BYTES + 2 * COUNT_BYTES + o.nr * COUNT_BYTES + vertices;
}

/// Looks at all three files: an object whose record no longer fits must not be begun.
void stopBeforeLimit(GisLayer& layer, std::int64_t content) {
    const std::array<std::int64_t, 3> coming = {content + static_cast<std::int64_t>(SHP_RECORD_HEADER_BYTES),
                                                SHP_RECORD_HEADER_BYTES,
                                                SHP_OF(layer).table.recordBytes + 1};  // the table's end byte too
    for (std::size_t place = 0; place < coming.size(); ++place)
        if (layer.files[place].bytes + coming[place] > MOST_FILE_BYTES)
            gisStopAtFileLimit(GETNAM(layer.files[place].handle), "Use -mif or a coarser output.");
}

struct Box {
    double xmin, ymin, xmax, ymax;
};

Box boxOf(const GisObject& o) {
    Box box{o.x[1], o.y[1], o.x[1], o.y[1]};
    for (std::size_t i = 2; i <= o.vertexCount(); ++i) {
        box.xmin = std::min(box.xmin, o.x[i]);
        box.xmax = std::max(box.xmax, o.x[i]);
        box.ymin = std::min(box.ymin, o.y[i]);
        box.ymax = std::max(box.ymax, o.y[i]);
    }
    return box;
}

/// bounds: those of a file or of a batch.
template <typename Bounds>
void widen(Bounds& bounds, const Box& box, bool first) {
    bounds.xmin = first ? box.xmin : std::min(bounds.xmin, box.xmin);
    bounds.ymin = first ? box.ymin : std::min(bounds.ymin, box.ymin);
    bounds.xmax = first ? box.xmax : std::max(bounds.xmax, box.xmax);
    bounds.ymax = first ? box.ymax : std::max(bounds.ymax, box.ymax);
}

/// Room in the .shp file; the run stops when the disk refuses it.
char* room(GisLayer& layer, std::int64_t count) {
    char* at = SHP_OF(layer).blocks[SHP].room(static_cast<std::size_t>(count));
    if (at == nullptr) STOP_AT(layer, SHP, LAST_FILE_ERROR(layer.files[SHP].handle), NOT_WRITTEN);
    return at;
}

char* putVertices(char* at, const GisObject& o, std::size_t first, std::size_t last) {
    for (std::size_t i = first; i <= last; ++i) at = putLittleDouble(putLittleDouble(at, o.x[i]), o.y[i]);
    return at;
}

/// The number of the record that comes next.
std::int32_t nextNumber(const GisLayer& layer) { return static_cast<std::int32_t>(layer.files[SHP].count + 1); }

/// Everything ahead of the part indices and vertices.
char* putStart(char* at, std::int32_t type, std::int32_t number, std::int64_t content, const GisObject& o,
               const Box& box) {
    at = PUT_SHP_RECORD_HEADER(at, number, static_cast<std::int32_t>(content / 2));
    at = putLittleInt32(at, type);  //  0 of the content
    if (type == SHP_POINT) return at;
    for (const double v : {box.xmin, box.ymin, box.xmax, box.ymax}) at = putLittleDouble(at, v);  //  4
    // 36 number of parts
    if (type != SHP_MULTIPOINT) at = putLittleInt32(at, o.nr);
    return putLittleInt32(at, static_cast<std::int32_t>(o.vertexCount()));  // 40, multipoint 36
}

/// An object of any size, a block at a time.
void putLargeObject(GisLayer& layer, std::int64_t content, const GisObject& o, const Box& box) {
    constexpr std::size_t AT_A_TIME = 4096;
    std::array<char, SHP_RECORD_HEADER_BYTES + TYPE_BYTES + BOX_BYTES + 2 * COUNT_BYTES> start{};
    const std::int64_t startBytes =
        putStart(start.data(), SHP_OF(layer).shapeType, nextNumber(layer), content, o, box) - start.data();
    std::copy_n(start.begin(), startBytes, room(layer, startBytes));
    if (SHP_OF(layer).shapeType != SHP_MULTIPOINT)
        for (std::size_t part = 0; part < static_cast<std::size_t>(o.nr); ++part)
            putLittleInt32(room(layer, COUNT_BYTES), o.ir[part]);
    for (std::size_t first = 1; first <= o.vertexCount(); first += AT_A_TIME) {
        const std::size_t last = std::min(first + AT_A_TIME - 1, o.vertexCount());
        putVertices(room(layer, static_cast<std::int64_t>(last - first + 1) * VERTEX_BYTES), o, first, last);
    }
}

/// A whole record: its bytes are content and header.
void putRecord(char* at, std::int32_t type, std::int32_t number, std::int64_t content, const GisObject& o,
               const Box& box) {
    at = putStart(at, type, number, content, o, box);
    if (type == SHP_POLYLINE || type == SHP_POLYGON)
        // 44 first vertex of each part, from 0
        for (std::size_t part = 0; part < static_cast<std::size_t>(o.nr); ++part) at = putLittleInt32(at, o.ir[part]);
    putVertices(at, o, 1, type == SHP_POINT ? 1 : o.vertexCount());
}

void putObject(GisLayer& layer, std::int64_t content, const GisObject& o, const Box& box) {
    const std::int64_t whole = content + static_cast<std::int64_t>(SHP_RECORD_HEADER_BYTES);
    if (whole > static_cast<std::int64_t>(OutputBlock::BYTES)) return putLargeObject(layer, content, o, box);
    putRecord(room(layer, whole), SHP_OF(layer).shapeType, nextNumber(layer), content, o, box);
}

void putIndex(GisLayer& layer, std::int64_t content) {
    char* at = SHP_OF(layer).blocks[SHX].room(SHP_RECORD_HEADER_BYTES);
    if (at == nullptr) STOP_AT(layer, SHX, LAST_FILE_ERROR(layer.files[SHX].handle), NOT_WRITTEN);
    PUT_SHP_RECORD_HEADER(at, static_cast<std::int32_t>(layer.files[SHP].bytes / 2),
                          static_cast<std::int32_t>(content / 2));
}

/// One more object.
void count(GisLayer& layer, std::int64_t content) {
    ++layer.files[SHP].count;
    layer.files[SHP].bytes += content + static_cast<std::int64_t>(SHP_RECORD_HEADER_BYTES);
    ++layer.files[SHX].count;
    layer.files[SHX].bytes += SHP_RECORD_HEADER_BYTES;
}

}  // namespace

void shpWriteObject(GisLayer& layer, const GisObject& o) {
    ShpLayer& shp = SHP_OF(layer);
    shp.nullObject = o.kind == GisKind::None;
    if (shp.nullObject) {
        ++shp.nullObjects;
        return;
    }
    const std::int32_t type = shapeTypeOf(o.kind);
    if (shp.shapeType == SHP_NULL) shp.shapeType = type;
    const bool begun = layer.files[SHP].bytes > 0;  // not before the header, and not without a .shp file
    if (!begun || shp.shapeType != type) gisFormatCheck("gisWriteObject-shp");
    if (gisHasBadCoordinate(o)) STOP_AT(layer, SHP, "the next object has a coordinate that is no number.", NOT_WRITTEN);
    const std::int64_t content = contentBytes(type, o);
    stopBeforeLimit(layer, content);

    const Box box = boxOf(o);
    putObject(layer, content, o, box);
    putIndex(layer, content);
    widen(layer.files[SHP], box, layer.files[SHP].count == 0);
    count(layer, content);
}

void shpAddToBatch(const GisLayer& layer, GisBatch& batch, const GisObject& o, std::string_view line) {
    const std::int32_t type = static_cast<std::int32_t>(gisShapeOf(o.kind));
    batch.plain = batch.plain && type == SHP_OF(layer).shapeType && !gisHasBadCoordinate(o) &&
                  ADD_PLAIN_DBF_RECORD(batch.records, SHP_OF(layer).table, line);
    if (!batch.plain) return;
    const std::int64_t content = contentBytes(type, o);
    const std::size_t whole = static_cast<std::size_t>(content) + SHP_RECORD_HEADER_BYTES;
    const Box box = boxOf(o);
    char* at = batch.objects.room(whole);
    putRecord(at, type, 0, content, o, box);
    batch.objects.end(at + whole);
    widen(batch, box, batch.count == 0);
}

GisBatchWrite shpWriteBatch(GisLayer& layer, GisBatch& batch) {
    const std::array<std::size_t, 3> coming = {batch.objects.size(),
                                               static_cast<std::size_t>(batch.count) * SHP_RECORD_HEADER_BYTES,
                                               batch.records.size() + 1};
    for (std::size_t place = 0; place < coming.size(); ++place)
        if (layer.files[place].bytes + static_cast<std::int64_t>(coming[place]) > MOST_FILE_BYTES)
            return GisBatchWrite::Unfit;
    widen(layer.files[SHP], {batch.xmin, batch.ymin, batch.xmax, batch.ymax}, layer.files[SHP].count == 0);
    char* const end = batch.objects.begin() + batch.objects.size();
    for (char* at = batch.objects.begin(); at != end;) {
        const std::int64_t content = std::int64_t{2} * bigInt32(at + COUNT_BYTES);
        putBigInt32(at, nextNumber(layer));
        putIndex(layer, content);
        count(layer, content);
        at += content + static_cast<std::int64_t>(SHP_RECORD_HEADER_BYTES);
    }
    if (!SHP_OF(layer).blocks[SHP].append(batch.objects.text()))
        STOP_AT(layer, SHP, LAST_FILE_ERROR(layer.files[SHP].handle), NOT_WRITTEN);
    return PUT_DBF_RECORDS(layer, batch.records.text(), batch.count) ? GisBatchWrite::Done : GisBatchWrite::Failed;
}
