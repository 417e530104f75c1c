#include "gis/dbf_fields.h"

#include "gis/attributes.h"
#include "services/exits.h"
#include "text_utils/text.h"

#include <string_view>

namespace {

constexpr std::int64_t LONGEST_FIELDS = 65534;  ///< the record length, with its flag, is a 16-bit number

struct TypeRow {
    std::string_view word;
    char type;
    std::int32_t width, decimals;  ///< 0: as the attribute type says
    bool alsoRead = false;         ///< a number field of this size is read as this type; others hold more than it does
};
constexpr TypeRow TYPES[] = {
    // GIS packages show a dBASE logical in their own words, a letter as it is
    {"Char", 'C', 0, 0},          {"Logical", 'C', 1, 0}, {"Float", 'N', 16, 5, true},
    {"Integer", 'N', 8, 0, true}, {"Decimal", 'N', 0, 0}, {"SmallInt", 'N', 6, 0},
    {"LargeInt", 'N', 20, 0},     {"Date", 'D', 8, 0},  // YYYYMMDD in both formats
    {"Time", 'C', 9, 0},                                // HHMMSSmmm; a table has no field for times
    {"DateTime", 'C', 17, 0},                           // the two together
};

DbfField fieldOf(const GisAttribute& attribute) {
    const ColumnType column = COLUMN_TYPE(attribute.type).value_or(ColumnType{});
    for (const TypeRow& row : TYPES) {
        if (!ASAME(column.word, row.word)) continue;
        const bool asSaid = row.width == 0;
        return {{},
                row.type,
                asSaid ? column.width : row.width,
                asSaid && row.type == 'N' ? column.decimals : row.decimals};
    }
    SHOULD_NOT_BE_HERE("Unrecognised DBF field");
}

void checkWidth(const DbfField& field) {
    if (field.width < 1 || field.width > MOST_DBF_WIDTH)
        STOP_RUN("ERROR 0412 - dbf field length of " + std::to_string(field.width) +
                 " is outside allowable range of 1 to 255 when writing dbf file.");
}

}  // namespace

std::int64_t PLACE_FIELDS(std::vector<DbfField>& fields) {
    std::size_t offset = 1;
    for (DbfField& field : fields) {
        field.offset = offset;
        offset += static_cast<std::size_t>(field.width);
    }
    return static_cast<std::int64_t>(offset);
}

std::vector<DbfField> DBF_FIELDS_OF(const std::vector<GisAttribute>& attributes) {
    if (attributes.size() > MOST_DBF_FIELDS)
        STOP_RUN("ERROR 0411 - Exceeded maximum number of dbf Fields trying to write dbf file.");
    if (attributes.empty()) STOP_RUN("ERROR 0319 - No attributes specified when writing .dbf file.");
    const std::vector<std::string> names = CLEANED_NAMES(attributes, DBF_NAME_WIDTH);
    std::vector<DbfField> fields;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        fields.push_back(fieldOf(attributes[i]));
        fields.back().name = names[i];
        checkWidth(fields.back());
    }
    // the name is older than the limit
    if (PLACE_FIELDS(fields) - 1 > LONGEST_FIELDS) SHOULD_NOT_BE_HERE("dbfTotLen>32767");
    return fields;
}

std::string ATTRIBUTE_TYPE_OF(const DbfField& field) {
    if (field.type == 'L') return "Logical";
    if (field.type == 'D') return "Date";
    const std::string width = std::to_string(field.width);
    if (!field.isNumber()) return "Char(" + width + ")";
    for (const TypeRow& row : TYPES)
        if (row.alsoRead && row.width == field.width && row.decimals == field.decimals) return std::string(row.word);
    return "Decimal(" + width + "," + std::to_string(field.decimals) + ")";
}
