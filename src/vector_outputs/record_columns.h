// The columns of a layer as attributes: their names and types, sized from what will be written, and the data line of an
// object.
#pragma once

#include "gis/layers.h"
#include "vector_outputs/map_item.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The number format of the real columns.
struct RealFormat {
    int width = 10;    ///< characters; grows to the longest text of the layer
    int decimals = 4;  ///< 0 to 20; none, no point
};

struct RecordColumn {
    Column column = Column::SmsId;
    double lowest = 0.0, highest = 0.0;  ///< of a number, over the objects noted
};

/// Filled by RECORD_COLUMNS and NOTE_RECORD; read by the writing of headers and lines.
struct RecordColumns {
    std::vector<RecordColumn> columns;
    RealFormat format;
    std::string valueName;         ///< "Water Level"; blank becomes "Value"
    bool wholeValues = false;      ///< the values are classes: no decimals in their column
    int gridDigits = 5;            ///< of a row and of a column in the grid reference
    std::string westFrom, westTo;  ///< texts of -180 and 180: an angle that rounds to the one is written as the other
    std::string turnFrom, turnTo;  ///< texts of 360 and 0, for bearings
};

/// rows, columns: counts of a grid layer, which the width of its references follows; else 0.
RecordColumns RECORD_COLUMNS(const std::vector<Column>& columns, RealFormat format, std::string valueName,
                             std::int32_t gridRows, std::int32_t gridColumns);

/// Counts an object that will be written into the ranges, which the widths follow.
void NOTE_RECORD(RecordColumns& record, const MapItem& item);
/// The same with all that another record of these columns has noted.
void NOTE_RECORDS(RecordColumns& record, const RecordColumns& noted);

/// The attributes: "Integer", "Char(2)", "Decimal(10,4)". shortIntegers: the format holds integers of 8 characters, so
/// longer ones are Decimal(n,0).
std::vector<GisAttribute> ATTRIBUTES_OF(const RecordColumns& record, bool shortIntegers);

/// The item's data line: values in column order between commas, texts in double quotes.
void FORM_RECORD(const RecordColumns& record, const MapItem& item, std::string& line);
/// The number that ADD_COLUMN would write of a real column.
double SHOWN_REAL(const RecordColumns& record, const MapItem& item, Column column);
/// Adds one value to a line, behind a comma unless it is the first. A negative real that rounds to zero loses its sign,
/// and a direction that rounds out of its range is brought back into it: no "-0.0000", "-180.0000" or "360.0000".
void ADD_COLUMN(std::string& line, const RecordColumns& record, const MapItem& item, Column column);
