#include "vector_outputs/text_points.h"

#include "gis/attributes.h"
#include "gis/data_line.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <cstdint>

namespace {

std::string headerRow(const RecordColumns& record) {
    const std::vector<std::string> names = CLEANED_NAMES(ATTRIBUTES_OF(record, false), MIF_NAME_WIDTH);
    std::string row = names.front() + ",X,Y";
    for (std::size_t i = 1; i < names.size(); ++i) row += "," + names[i];
    return row + '\n';
}

}  // namespace

void WRITE_TEXT_POINTS(const std::string& name, ItemSource& source, const RecordColumns& record, int coordinateDecimals,
                       std::vector<float>* written) {
    REPORT("Writing " + name + "...");
    BEGIN_OUTPUT(name);
    const int file = OPEN_FILE(name, "O ", "txt");
    WRITE_OR_STOP(file, headerRow(record));
    std::int64_t rows = 0;
    std::string line;
    Progress progress("", static_cast<std::int64_t>(CANDIDATES(source)));
    MapItem item;
    source.next = 0;
    while (NEXT_ITEM(source, item)) {
        line.clear();
        ADD_COLUMN(line, record, item, record.columns.front().column);
        ADD_REAL(line, item.x, coordinateDecimals);
        ADD_REAL(line, item.y, coordinateDecimals);
        for (std::size_t i = 1; i < record.columns.size(); ++i)
            ADD_COLUMN(line, record, item, record.columns[i].column);
        line += '\n';
        WRITE_OR_STOP(file, line);
        if (written != nullptr) written->push_back(SHOWN_VALUE(source, item));
        ++rows;
        progress.show(static_cast<std::int64_t>(source.next));
    }
    CLOSE_FILE(file);
    if (rows == 0) DMESSAGE("WARNING - No wet points to output at this time.");
    REPORT(AINTEGER8(rows) + " objects written.");
    FINISH_OUTPUT(name);
}
