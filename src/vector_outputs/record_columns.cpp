#include "vector_outputs/record_columns.h"

#include "gis/data_line.h"
#include "gis/fixed_text.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <array>

namespace {

constexpr int SHORT_INTEGER = 8;  ///< characters
constexpr int LEAST_GRID_DIGITS = 5;
constexpr int GRID_REF_WIDTH = 16;

/// By Column. The name of the value is the layer's.
constexpr std::string_view NAMES[] = {"Elevation", "",     "Depth",  "Magnitude", "Angle", "X_component", "Y_component",
                                      "Bearing",   "Time", "SMS_ID", "PtType",    "MatID", "Grid_Ref"};
static_assert(std::size(NAMES) == static_cast<std::size_t>(Column::GridRef) + 1);

std::string realText(double value, int decimals) {
    RealText buffer;
    return std::string(REAL_TEXT(buffer, value, decimals));
}

void add(std::string& line, std::string_view text) {
    if (!line.empty()) line += ',';
    line += text;
}

int decimalsOf(const RecordColumns& record, Column column) {
    return record.wholeValues && column == Column::Value ? 0 : record.format.decimals;
}

void addReal(std::string& line, const RecordColumns& record, Column column, double value) {
    RealText buffer;
    const std::string_view text = REAL_TEXT(buffer, value, decimalsOf(record, column));
    if (column == Column::Angle && text == record.westFrom) return add(line, record.westTo);
    if (column == Column::Bearing && text == record.turnFrom) return add(line, record.turnTo);
    add(line, text);
}

char* putPadded(char* at, std::int32_t number, int digits) {
    for (char* to = at + digits; to != at; number /= 10) *--to = static_cast<char>('0' + number % 10);
    return at + digits;
}

void addGridRef(std::string& line, const MapItem& item, int digits) {
    std::array<char, 32> text;
    char* at = text.data();
    *at++ = '"';
    *at++ = 'R';
    at = putPadded(at, item.row, digits);
    *at++ = 'C';
    at = putPadded(at, item.column, digits);
    *at++ = '"';
    add(line, {text.data(), static_cast<std::size_t>(at - text.data())});
}

void addPointType(std::string& line, NodeKind kind) {
    ADD_TEXT(line, {kind.data(), kind[1] == ' ' ? std::size_t{1} : std::size_t{2}});
}

double numberOf(const MapItem& item, Column column) {
    if (column < Column::SmsId) return item[column];
    return static_cast<double>(column == Column::SmsId ? item.id : item.material);
}

bool isNumber(Column column) { return column != Column::PtType && column != Column::GridRef; }

int digitsOf(std::int32_t number) { return static_cast<int>(std::to_string(number).size()); }

int longest(const RecordColumn& column, int decimals) {
    return static_cast<int>(
        std::max(realText(column.lowest, decimals).size(), realText(column.highest, decimals).size()));
}

std::string decimalType(int width, int decimals) {
    return "Decimal(" + std::to_string(width) + "," + std::to_string(decimals) + ")";
}

std::string typeOf(const RecordColumns& record, const RecordColumn& column, bool shortIntegers) {
    switch (column.column) {
        case Column::PtType: return "Char(2)";
        case Column::GridRef:
            return "Char(" + std::to_string(std::max(GRID_REF_WIDTH, 2 + 2 * record.gridDigits)) + ")";
        case Column::SmsId:
        case Column::MatId: {
            const int width = longest(column, 0);
            return shortIntegers && width > SHORT_INTEGER ? decimalType(width, 0) : "Integer";
        }
        default: {
            const int decimals = decimalsOf(record, column.column);
            return decimalType(std::max(record.format.width, longest(column, decimals)), decimals);
        }
    }
}

}  // namespace

RecordColumns RECORD_COLUMNS(const std::vector<Column>& columns, RealFormat format, std::string valueName,
                             std::int32_t gridRows, std::int32_t gridColumns) {
    RecordColumns record;
    for (const Column column : columns) record.columns.push_back({column, 0.0, 0.0});
    record.format = format;
    record.valueName = valueName.empty() ? "Value" : std::move(valueName);
    record.gridDigits = std::max(LEAST_GRID_DIGITS, digitsOf(std::max(gridRows, gridColumns)));
    record.westFrom = realText(-180.0, format.decimals);
    record.westTo = realText(180.0, format.decimals);
    record.turnFrom = realText(360.0, format.decimals);
    record.turnTo = realText(0.0, format.decimals);
    return record;
}

void NOTE_RECORD(RecordColumns& record, const MapItem& item) {
    for (RecordColumn& column : record.columns) {
        if (!isNumber(column.column)) continue;
        const double number = numberOf(item, column.column);
        column.lowest = std::min(column.lowest, number);
        column.highest = std::max(column.highest, number);
    }
}

void NOTE_RECORDS(RecordColumns& record, const RecordColumns& noted) {
    for (std::size_t i = 0; i < record.columns.size(); ++i) {
        record.columns[i].lowest = std::min(record.columns[i].lowest, noted.columns[i].lowest);
        record.columns[i].highest = std::max(record.columns[i].highest, noted.columns[i].highest);
    }
}

std::vector<GisAttribute> ATTRIBUTES_OF(const RecordColumns& record, bool shortIntegers) {
    std::vector<GisAttribute> attributes;
    for (const RecordColumn& column : record.columns) {
        const std::string_view name = column.column == Column::Value ? std::string_view(record.valueName)
                                                                     : NAMES[static_cast<std::size_t>(column.column)];
        attributes.push_back({std::string(name), typeOf(record, column, shortIntegers)});
    }
    return attributes;
}

void FORM_RECORD(const RecordColumns& record, const MapItem& item, std::string& line) {
    line.clear();
    for (const RecordColumn& column : record.columns) ADD_COLUMN(line, record, item, column.column);
}

void ADD_COLUMN(std::string& line, const RecordColumns& record, const MapItem& item, Column column) {
    switch (column) {
        case Column::SmsId: return ADD_INTEGER(line, item.id);
        case Column::MatId: return ADD_INTEGER(line, item.material);
        case Column::PtType: return addPointType(line, item.kind);
        case Column::GridRef: return addGridRef(line, item, record.gridDigits);
        default: return addReal(line, record, column, item[column]);
    }
}

double SHOWN_REAL(const RecordColumns& record, const MapItem& item, Column column) {
    const double value = ROUNDED(item[column], record.format.decimals);
    if (column == Column::Angle && value == -180.0) return 180.0;
    return column == Column::Bearing && value == 360.0 ? 0.0 : value;
}
