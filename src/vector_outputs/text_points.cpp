#include "vector_outputs/text_points.h"

#include "gis/attributes.h"
#include "gis/data_line.h"
#include "services/console.h"
#include "services/files.h"
#include "services/workers.h"
#include "text_utils/numbers.h"

#include <cstdint>
#include <vector>

namespace {

std::string headerRow(const RecordColumns& record) {
    const std::vector<std::string> names = CLEANED_NAMES(ATTRIBUTES_OF(record, false), MIF_NAME_WIDTH);
    std::string row = names.front() + ",X,Y";
    for (std::size_t i = 1; i < names.size(); ++i) row += "," + names[i];
    return row + '\n';
}

struct Rows {
    std::string text;
    std::vector<float> values;  ///< a row each
};

Rows rowsOf(const ItemSource& source, std::size_t first, std::size_t end, const RecordColumns& record,
            int coordinateDecimals) {
    Rows rows;
    std::string line;
    MapItem item;
    for (std::size_t next = first; NEXT_ITEM(source, next, end, item);) {
        line.clear();
        ADD_COLUMN(line, record, item, record.columns.front().column);
        ADD_REAL(line, item.x, coordinateDecimals);
        ADD_REAL(line, item.y, coordinateDecimals);
        for (std::size_t i = 1; i < record.columns.size(); ++i)
            ADD_COLUMN(line, record, item, record.columns[i].column);
        rows.text += line;
        rows.text += '\n';
        rows.values.push_back(SHOWN_VALUE(source, item));
    }
    return rows;
}

}  // namespace

void WRITE_TEXT_POINTS(const std::string& name, const ItemSource& source, const RecordColumns& record,
                       int coordinateDecimals, std::vector<float>* written) {
    REPORT("Writing " + name + "...");
    BEGIN_OUTPUT(name);
    const int file = OPEN_FILE(name, "O ", "txt");
    WRITE_OR_STOP(file, headerRow(record));
    std::int64_t rows = 0;
    const ItemPieces pieces{CANDIDATES(source)};
    Progress progress("", static_cast<std::int64_t>(pieces.candidates));
    std::vector<Rows> slots(SLOTS_IN_ORDER());
    DO_IN_ORDER(
        pieces.count(),
        [&](std::size_t piece, std::size_t slot) {
            slots[slot] = rowsOf(source, pieces.first(piece), pieces.end(piece), record, coordinateDecimals);
        },
        [&](std::size_t piece, std::size_t slot) {
            const Rows& made = slots[slot];
            WRITE_OR_STOP(file, made.text);
            if (written != nullptr) written->insert(written->end(), made.values.begin(), made.values.end());
            rows += static_cast<std::int64_t>(made.values.size());
            progress.show(static_cast<std::int64_t>(pieces.end(piece)));
        });
    CLOSE_FILE(file);
    if (rows == 0) DMESSAGE("WARNING - No wet points to output at this time.");
    REPORT(AINTEGER8(rows) + " objects written.");
    FINISH_OUTPUT(name);
}
