// Reads the records of a .dbf table. Layout: dBASE III table file: a deletion flag and the fields one after the other.
#include "gis/code_page.h"
#include "gis/data_line.h"
#include "gis/shp_layer.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/text.h"

#include <string>
#include <string_view>
#include <utility>

namespace {

void warnOfEnd(GisLayer& layer) {
    if (std::exchange(SHP_OF(layer).warnedOfEnd, true)) return;
    REPORT(GETNAM(layer.files[DBF].handle));
    DMESSAGE("WARNING 0405 - Insufficient number of records found in .dbf file.");
    REPORT("Found " + std::to_string(layer.files[DBF].count) + ", expecting " +
           std::to_string(SHP_OF(layer).table.records));
}

DbfRecord loadedRecord(GisLayer& layer) {
    ShpLayer& shp = SHP_OF(layer);
    GisFile& file = layer.files[DBF];
    if (file.count >= shp.table.records) return DbfRecord::End;
    const std::int64_t got = READ_BYTES(file.handle, shp.record.data(), shp.record.size());
    if (got < 0) return DbfRecord::Unreadable;
    if (got < static_cast<std::int64_t>(shp.record.size())) {
        if (got > 0 && shp.record[0] != DBF_END_OF_FILE) return DbfRecord::CutShort;
        warnOfEnd(layer);
        return DbfRecord::End;
    }
    ++file.count;
    if (shp.record[0] == DBF_DELETED) return DbfRecord::Deleted;
    return shp.record[0] == DBF_NOT_DELETED ? DbfRecord::Loaded : DbfRecord::Unrecognised;
}

/// What stands for no value: asterisks in a number, zeros in a date, a question mark in a logical.
bool isNull(const DbfField& field, std::string_view value) {
    const char mark = field.isNumber() ? '*' : field.type == 'D' ? '0' : field.type == 'L' ? '?' : '\0';
    return value.find_first_not_of(mark) == std::string_view::npos;
}

std::string_view logical(std::string_view value) {
    if (std::string_view("YyTt").find(value[0]) != std::string_view::npos) return "T";
    return std::string_view("NnFf").find(value[0]) != std::string_view::npos ? "F" : "";
}

/// Numbers, dates and logicals travel as they stand, blank ones too. A number written with a decimal comma goes in
/// quotes, so that it stays one value.
void addField(ShpLayer& shp, const DbfField& field, std::string& line) {
    std::string_view value(&shp.record[field.offset], static_cast<std::size_t>(field.width));
    // some writers end a text with a zero byte and leave the rest as it was
    value = TRIMMED(value.substr(0, value.find('\0')));
    if (field.offset > 1) line += ',';
    const bool plain = field.isNumber() || field.type == 'D' || field.type == 'L';
    if (plain && isNull(field, value)) return;
    if (plain && value.find_first_of(",\"") == std::string_view::npos) {
        line += field.type == 'L' ? logical(value) : value;
        return;
    }
    if (!IS_ASCII(value)) {
        shp.text.clear();
        shp.decoder.add(shp.text, value);
        value = shp.text;
    }
    shp.quoted.clear();
    ADD_TEXT(shp.quoted, value);
    line += shp.quoted;
}

}  // namespace

DbfRecord LOAD_DBF_RECORD(GisLayer& layer) { return SHP_OF(layer).recordState = loadedRecord(layer); }

GisRead shpReadRecord(GisLayer& layer, std::string& line) {
    ShpLayer& shp = SHP_OF(layer);
    if (shp.table.fields.empty()) gisFormatCheck("gisReadRecord-dbf");  // the header has not been read
    while (shp.recordState == DbfRecord::None || shp.recordState == DbfRecord::Deleted) LOAD_DBF_RECORD(layer);
    line.clear();
    switch (std::exchange(shp.recordState, DbfRecord::None)) {
        case DbfRecord::Loaded: break;
        case DbfRecord::Unrecognised:
            return FAILED_AT(layer, DBF, "", "ERROR 0406 - Unrecognised record identifier found in .dbf file.");
        case DbfRecord::Unreadable:
            return FAILED_AT(layer, DBF, LAST_FILE_ERROR(layer.files[DBF].handle), "ERROR 0407 - Reading .dbf record.");
        case DbfRecord::End:
            if (layer.tableOnly) return GisRead::End;
            [[fallthrough]];
        default: return FAILED_AT(layer, DBF, "", "ERROR 0408 - End of .dbf file encountered whilst reading record.");
    }
    for (const DbfField& field : shp.table.fields) addField(shp, field, line);
    return GisRead::Done;
}
