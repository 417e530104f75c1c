#include "profiles/point_table.h"

#include "gis/attributes.h"
#include "profiles/csv_row.h"
#include "services/console.h"
#include "services/files.h"

#include <cstddef>

namespace {

constexpr std::size_t BLOCK = 1U << 20;  ///< bytes of text written at a time

void addHeader(CsvText& csv, const PointStage& stage, const PointColumns& columns) {
    for (const char* name : {"Label", "X", "Y", "Elevation", "SMS_ID"}) csv.add(name);
    if (!columns.value.empty()) {
        csv.add("Time");
        csv.add(CLEANATTRIBUTENAME(VALUE_COLUMN_NAME(stage.facts)));
    }
    if (!columns.angle.empty()) csv.add("Angle");
    if (!columns.difference.empty()) csv.add("Difference");
    csv.endRow();
}

void addRow(CsvText& csv, const PointStage& stage, const PointColumns& columns, std::size_t point) {
    const PointRules& rules = stage.rules;
    csv.add(stage.points->labels[point]);
    csv.addReal(stage.points->x[point], rules.coordinateDecimals);
    csv.addReal(stage.points->y[point], rules.coordinateDecimals);
    csv.addValue(stage.elevation[point], rules.valueDecimals);
    if (columns.element[point] != 0) csv.addInteger(columns.element[point]);
    else csv.addBlank();
    if (!columns.value.empty()) {
        csv.add(columns.time);
        csv.addValue(columns.value[point], rules.valueDecimals);
    }
    if (!columns.angle.empty()) csv.addValue(columns.angle[point], rules.valueDecimals);
    if (!columns.difference.empty()) csv.addValue(columns.difference[point], rules.valueDecimals);
    csv.endRow();
}

}  // namespace

std::string VALUE_COLUMN_NAME(const DatasetFacts& facts) {
    if (facts.vector) return "Magnitude";
    return facts.quantity.empty() ? "Value" : facts.quantity;
}

void WRITE_POINT_TABLE(const std::string& file, const PointStage& stage) {
    if (stage.taken.empty()) return;
    REPORT("Writing " + file + "...");
    BEGIN_OUTPUT(file);
    const int handle = OPEN_FILE(file, "O ", "csv");
    CsvText csv;
    addHeader(csv, stage, stage.taken.front());
    for (std::size_t point = 0; point < stage.points->count(); ++point) {
        for (const PointColumns& columns : stage.taken) addRow(csv, stage, columns, point);
        if (csv.text().size() < BLOCK) continue;
        WRITE_OR_STOP(handle, csv.text());
        csv.text().clear();
    }
    WRITE_OR_STOP(handle, csv.text());
    CLOSE_FILE(handle);
    FINISH_OUTPUT(file);
}
