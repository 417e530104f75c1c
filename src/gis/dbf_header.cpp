#include "gis/dbf_header.h"

#include "gis/attributes.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <limits>
#include <string_view>
#include <utility>

namespace {

constexpr std::size_t START_BYTES = 32, DESCRIPTOR_BYTES = 32;
constexpr char VERSION_WITHOUT_MEMO = 3, END_OF_FIELDS = 13;
constexpr char LANGUAGE_1252 = 0x57;

/// A number that its bytes cannot hold is a fault of the program, named by `check`.
template <typename Unsigned>
void put(std::string& out, std::int64_t value, std::string_view check) {
    if (value < 0 || value > std::int64_t{std::numeric_limits<Unsigned>::max()}) SHOULD_NOT_BE_HERE(check);
    std::array<char, sizeof(Unsigned)> bytes{};
    putLittle(bytes.data(), static_cast<Unsigned>(value));
    out.append(bytes.data(), bytes.size());
}
void put1u(std::string& out, std::int32_t value) { put<std::uint8_t>(out, value, "i1u: i4 outside range"); }
void put2u(std::string& out, std::int32_t value) { put<std::uint16_t>(out, value, "i2u: i4 outside range"); }
void put4u(std::string& out, std::int64_t value) { put<std::uint32_t>(out, value, "i4u: i8 outside range"); }

void putDescriptor(std::string& out, const DbfField& field) {
    const std::size_t start = out.size();
    ADD_AS_CODE_PAGE(out, field.name);
    out.resize(start + DBF_NAME_WIDTH, '\0');  //  0 name
    out += field.type;                         // 11
    put4u(out, 0);                             // 12 address in memory
    put1u(out, field.width);                   // 16
    put1u(out, field.decimals);                // 17
    out.resize(start + DESCRIPTOR_BYTES, '\0');
}

[[noreturn]] void stopReading(int file, std::string_view why, std::string_view message) {
    REPORT(GETNAM(file) + (why.empty() ? "" : ": ") + std::string(why));
    STOP_RUN(message);
}

void readHeaderBytes(int file, char* to, std::size_t count) {
    const std::int64_t got = READ_BYTES(file, to, count);
    if (got < 0) stopReading(file, LAST_FILE_ERROR(file), "ERROR 0403 - Reading .dbf file header.");
    if (got < static_cast<std::int64_t>(count))
        stopReading(file, "", "ERROR 0404 - End of .dbf file encountered whilst reading header.");
}

DbfField fieldIn(const char* descriptor, const TextDecoder& text) {
    DbfField field;
    std::string_view name(descriptor, DBF_NAME_WIDTH);
    name = TRIMMED(name.substr(0, name.find('\0')));
    text.add(field.name, name);
    field.type = descriptor[11];
    field.width = littleUnsigned<std::uint8_t>(descriptor + 16);
    field.decimals = field.isNumber() ? littleUnsigned<std::uint8_t>(descriptor + 17) : 0;
    return field;
}

void checkField(int file, const DbfField& field) {
    if (field.width < 1)
        stopReading(file, "field " + field.name,
                    "ERROR 0402 - dbf field length of " + std::to_string(field.width) +
                        " is outside allowable range of 1 to 255.");
    if (std::string_view("CNFDLM").find(field.type) == std::string_view::npos)
        stopReading(file, "field " + field.name + " is of a type that is not read, neither text nor number.",
                    "ERROR 0403 - Reading .dbf file header.");
}

/// The descriptors up to the byte 13, or to the end of the header in files that leave the byte out.
void readFields(int file, const TextDecoder& text, DbfTable& table) {
    std::array<char, DESCRIPTOR_BYTES> bytes{};
    for (std::size_t at = START_BYTES; at < static_cast<std::size_t>(table.headerBytes); at += DESCRIPTOR_BYTES) {
        readHeaderBytes(file, bytes.data(), 1);
        if (bytes[0] == END_OF_FIELDS) break;
        if (table.fields.size() == MOST_DBF_FIELDS)
            stopReading(file, "", "ERROR 0401 - Exceeded maximum number of dbf Fields.");
        readHeaderBytes(file, bytes.data() + 1, DESCRIPTOR_BYTES - 1);
        table.fields.push_back(fieldIn(bytes.data(), text));
        checkField(file, table.fields.back());
    }
    if (table.fields.empty()) stopReading(file, "", "ERROR 0319 - No attributes specified in .dbf file.");
}

}  // namespace

DbfTable DBF_TABLE_OF(std::vector<DbfField> fields) {
    DbfTable table;
    table.recordBytes = static_cast<std::int32_t>(PLACE_FIELDS(fields));
    table.headerBytes = static_cast<std::int32_t>(START_BYTES + DESCRIPTOR_BYTES * fields.size() + 1);
    table.fields = std::move(fields);
    return table;
}

std::string DBF_HEADER(const DbfTable& table) {
    const std::time_t now = std::time(nullptr);
    const std::tm today = *std::localtime(&now);
    std::string out;
    out += VERSION_WITHOUT_MEMO;    //  0
    put1u(out, today.tm_year);      //  1 date of the last change: years since 1900,
    put1u(out, today.tm_mon + 1);   //  2 month
    put1u(out, today.tm_mday);      //  3 and day
    put4u(out, table.records);      //  4 little-endian, as all that follow
    put2u(out, table.headerBytes);  //  8
    put2u(out, table.recordBytes);  // 10
    out.resize(29, '\0');           // 12 reserved
    out += LANGUAGE_1252;           // 29
    out.resize(START_BYTES, '\0');
    for (const DbfField& field : table.fields) putDescriptor(out, field);
    out += END_OF_FIELDS;
    return out;
}

int READ_DBF_PAGE(int file) {
    std::array<char, START_BYTES> start{};
    const bool whole = READ_BYTES(file, start.data(), start.size()) == static_cast<std::int64_t>(start.size());
    if (!SEEK_FILE(file, 0)) stopReading(file, LAST_FILE_ERROR(file), "ERROR 0403 - Reading .dbf file header.");
    return whole ? PAGE_OF_LANGUAGE(static_cast<unsigned char>(start[29])) : PAGE_NOT_SAID;
}

DbfTable READ_DBF_HEADER(int file, const TextDecoder& text) {
    std::array<char, START_BYTES> start{};
    readHeaderBytes(file, start.data(), start.size());
    DbfTable table;
    table.records = littleUnsigned<std::uint32_t>(start.data() + 4);
    table.headerBytes = littleUnsigned<std::uint16_t>(start.data() + 8);
    table.recordBytes = littleUnsigned<std::uint16_t>(start.data() + 10);
    readFields(file, text, table);
    if (FILE_POSITION(file) > table.headerBytes)
        stopReading(file, "its fields are longer than its header.", "ERROR 0403 - Reading .dbf file header.");
    if (PLACE_FIELDS(table.fields) > table.recordBytes)
        stopReading(file, "its fields are longer than its records.", "ERROR 0403 - Reading .dbf file header.");
    if (table.headerBytes > FILE_LENGTH(file))
        stopReading(file, "", "ERROR 0404 - End of .dbf file encountered whilst reading header.");
    if (!SEEK_FILE(file, table.headerBytes))
        stopReading(file, LAST_FILE_ERROR(file), "ERROR 0403 - Reading .dbf file header.");
    return table;
}
