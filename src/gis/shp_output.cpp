// The headers of a shapefile set: provisional when it is begun, final when it is complete.
#include "gis/shp_header.h"
#include "gis/shp_layer.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/projection_text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

std::array<char, SHP_HEADER_BYTES> geometryHeader(const GisLayer& layer, std::size_t place) {
    const GisFile& box = layer.files[SHP];
    return SHP_HEADER(layer.files[place].bytes, SHP_OF(layer).shapeType, {box.xmin, box.ymin, box.xmax, box.ymax});
}

bool append(GisLayer& layer, std::size_t place, std::string_view bytes) {
    char* at = SHP_OF(layer).blocks[place].room(bytes.size());
    if (at == nullptr) return false;
    std::copy(bytes.begin(), bytes.end(), at);
    layer.files[place].bytes += static_cast<std::int64_t>(bytes.size());
    return true;
}

/// Writes over the start of the file and stands at its end again.
bool replaceHeader(const GisFile& file, std::string_view bytes) {
    return SEEK_FILE(file.handle, 0) && WRITE_BYTES(file.handle, bytes) && SEEK_FILE(file.handle, file.bytes);
}

void writeCodePage(const std::string& base) {
    const int file = OPEN_COMPANION(base + ".cpg", "cpg");
    if (file == 0) return;
    WRITE_OR_STOP(file, "1252");
    CLOSE_FILE(file);
}

void completeGeometry(GisLayer& layer, std::size_t place) {
    const GisFile& file = layer.files[place];
    if (!SHP_OF(layer).blocks[place].flush())
        STOP_AT(layer, place, LAST_FILE_ERROR(file.handle), "ERROR 0439 - Writing .shp file object coordinates.");
    const auto header = geometryHeader(layer, place);
    if (!replaceHeader(file, {header.data(), header.size()}))
        STOP_AT(layer, place, LAST_FILE_ERROR(file.handle), "ERROR 0437 - Writing .shp file header.");
}

void completeTable(GisLayer& layer) {
    const GisFile& file = layer.files[DBF];
    char* end = SHP_OF(layer).blocks[DBF].room(1);  // no part of file.bytes: a record written later takes its place
    if (end != nullptr) *end = DBF_END_OF_FILE;
    if (end == nullptr || !SHP_OF(layer).blocks[DBF].flush())
        STOP_AT(layer, DBF, LAST_FILE_ERROR(file.handle), "ERROR 0417 - Writing .dbf record.");
    SHP_OF(layer).table.records = file.count;
    if (!replaceHeader(file, DBF_HEADER(SHP_OF(layer).table)))
        STOP_AT(layer, DBF, LAST_FILE_ERROR(file.handle),
                "ERROR 0413 - Rewriting .dbf file header with final information.");
}

}  // namespace

void shpWriteHeader(GisLayer& layer) {
    ShpLayer& shp = SHP_OF(layer);
    shp.table = DBF_TABLE_OF(DBF_FIELDS_OF(layer.header.attributes));
    if (!layer.tableOnly) {
        if (layer.files[SHP].handle == 0) SHOULD_NOT_BE_HERE("shpnotopen");
        shp.shapeType = static_cast<std::int32_t>(layer.header.shape);
        for (const std::size_t place : {SHP, SHX}) {
            const auto header = SHP_HEADER(SHP_HEADER_BYTES, shp.shapeType, {});
            if (!append(layer, place, {header.data(), header.size()}))
                STOP_AT(layer, place, LAST_FILE_ERROR(layer.files[place].handle),
                        "ERROR 0437 - Writing .shp file header.");
        }
        WRITE_PRJ(shp.base, layer.header.prj.empty() ? gisProjection().prj : layer.header.prj);
    }
    if (!append(layer, DBF, DBF_HEADER(shp.table)))
        STOP_AT(layer, DBF, LAST_FILE_ERROR(layer.files[DBF].handle), "ERROR 0413 - Writing .dbf file header.");
    writeCodePage(shp.base);
}

void shpWriteEoF(GisLayer& layer) {
    if (!layer.tableOnly) {
        if (layer.files[SHP].count != layer.files[DBF].count) SHOULD_NOT_BE_HERE("gisWriteEoF-shp");
        completeGeometry(layer, SHP);
        completeGeometry(layer, SHX);
        if (const std::int64_t nulls = std::exchange(SHP_OF(layer).nullObjects, 0); nulls > 0)
            DMESSAGE("WARNING - " + std::to_string(nulls) + " objects without geometry are left out of " + layer.path +
                     ".");
    }
    completeTable(layer);
}
