// Writes the records of a .dbf table. Layout: dBASE III table file: a deletion flag and the fields one after the other,
// text blank-filled.
#include "gis/code_page.h"
#include "gis/data_line.h"
#include "gis/dbf_number.h"
#include "gis/shp_layer.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace {

constexpr std::int64_t MOST_RECORDS = 2147483647;

std::string place(const GisLayer& layer, const DbfField& field) {
    return GETNAM(layer.files[DBF].handle) + ", field " + field.name + ", record " +
           std::to_string(layer.files[DBF].count + 1);
}

void putText(GisLayer& layer, const DbfField& field, char* at, std::string_view text) {
    ShpLayer& shp = SHP_OF(layer);
    if (!IS_ASCII(text)) {
        shp.text.clear();
        if (!ADD_AS_CODE_PAGE(shp.text, text)) gisWarnOfText(layer);
        text = shp.text;
    }
    const std::size_t width = static_cast<std::size_t>(field.width);
    if (text.size() > width && !shp.warnedOfCut) {
        shp.warnedOfCut = true;
        REPORT(place(layer, field) + ": " + std::string(text));
        DMESSAGE("WARNING - Text is cut to the width of its .dbf field, here and wherever else it does not fit.");
    }
    if (!text.empty()) std::memcpy(at, text.data(), std::min(text.size(), width));
}

bool putNumber(const GisLayer& layer, const DbfField& field, char* at, std::string_view text) {
    if (PUT_DBF_NUMBER(at, text, field.width, field.decimals)) return true;
    REPORT(place(layer, field) + ": " + std::string(text) + " is no number, or does not fit in " +
           std::to_string(field.width) + " characters with " + std::to_string(field.decimals) + " decimals.");
    return false;
}

[[noreturn]] void stopAtMostRecords() {
    STOP_RUN("ERROR 0419 - Exceeded dbf limit of 2,147,483,647 records.  Please contact " +
             std::string(SUPPORT_CONTACT));
}

/// The values into their fields, in order. False: one of them is refused, and that has been said.
bool putValues(GisLayer& layer, char* record, std::string_view line, bool large) {
    const char* check = large ? "dbfdatalinelarge" : "dbfdataline";
    DataLine values(line);
    DataValue value;
    for (const DbfField& field : SHP_OF(layer).table.fields) {
        if (!values.NEXT(value)) SHOULD_NOT_BE_HERE(check);
        char* at = record + field.offset;
        if (!field.isNumber()) putText(layer, field, at, value.text);
        else if (!putNumber(layer, field, at, value.text)) return false;
    }
    if (values.NEXT(value)) SHOULD_NOT_BE_HERE(check);
    return true;
}

}  // namespace

bool shpWriteRecord(GisLayer& layer, std::string_view line, bool large) {
    if (std::exchange(SHP_OF(layer).nullObject, false)) return true;
    GisFile& file = layer.files[DBF];
    const std::int32_t recordBytes = SHP_OF(layer).table.recordBytes;
    if (file.bytes == 0) gisFormatCheck("gisWriteRecord-dbf");  // the header has not been written
    if (file.count >= MOST_RECORDS) stopAtMostRecords();
    if (file.bytes + recordBytes + 1 > MOST_FILE_BYTES)
        gisStopAtFileLimit(GETNAM(file.handle), "Use -mif or a coarser output.");
    char* record = SHP_OF(layer).blocks[DBF].room(static_cast<std::size_t>(recordBytes));
    if (record == nullptr) REPORT_PLACE(layer, DBF, LAST_FILE_ERROR(file.handle));
    // also what fills the fields
    if (record != nullptr) std::memset(record, DBF_NOT_DELETED, static_cast<std::size_t>(recordBytes));
    if (record == nullptr || !putValues(layer, record, line, large)) {
        DMESSAGE(large ? "ERROR 0417 - Writing large .dbf record." : "ERROR 0417 - Writing .dbf record.");
        return false;
    }
    ++file.count;
    file.bytes += recordBytes;
    return true;
}

bool ADD_PLAIN_DBF_RECORD(GrowingBytes& records, const DbfTable& table, std::string_view line) {
    const auto recordBytes = static_cast<std::size_t>(table.recordBytes);
    char* record = records.room(recordBytes);
    std::memset(record, DBF_NOT_DELETED, recordBytes);
    DataLine values(line);
    DataValue value;
    for (const DbfField& field : table.fields) {
        if (!values.NEXT(value)) return false;
        char* at = record + field.offset;
        const std::string_view text = value.text;
        if (field.isNumber()) {
            if (!PUT_DBF_NUMBER(at, text, field.width, field.decimals)) return false;
        } else {
            if (!IS_ASCII(text) || text.size() > static_cast<std::size_t>(field.width)) return false;
            std::copy(text.begin(), text.end(), at);
        }
    }
    if (values.NEXT(value)) return false;
    records.end(record + recordBytes);
    return true;
}

bool PUT_DBF_RECORDS(GisLayer& layer, std::string_view bytes, std::int64_t count) {
    GisFile& file = layer.files[DBF];
    if (!SHP_OF(layer).blocks[DBF].append(bytes)) {
        REPORT_PLACE(layer, DBF, LAST_FILE_ERROR(file.handle));
        DMESSAGE("ERROR 0417 - Writing .dbf record.");
        return false;
    }
    file.count += count;
    file.bytes += static_cast<std::int64_t>(bytes.size());
    return true;
}
