#include "profiles/profile_file.h"

#include "geometry/direction.h"
#include "geometry/no_value.h"
#include "gis/attributes.h"
#include "profiles/csv_row.h"
#include "profiles/layer_fields.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <string_view>

namespace {

constexpr std::size_t LONGEST_FILE_NAME = 255;  ///< bytes of a name without its folder, on every usual file system
constexpr std::size_t ROOM_FOR_NUMBER = 8;      ///< "_2" and on
constexpr std::string_view EXTENSION = ".csv";
constexpr std::size_t BLOCK = 1U << 20;  ///< bytes of text written at a time

std::string cleanedName(std::string_view name) {
    constexpr std::string_view REFUSED = "\\/:*?\"<>|";
    std::string clean(TRIMMED(name));
    for (char& c : clean)
        if (REFUSED.find(c) != std::string_view::npos || static_cast<unsigned char>(c) < 32) c = '_';
    return clean;
}

/// Cut so that the whole name fits a file system, between characters of UTF-8.
std::string cutToFile(const std::string& base, std::string name) {
    const std::size_t used = FILENAMEEXT(base).size() + 1 + EXTENSION.size() + ROOM_FOR_NUMBER;
    std::size_t room = LONGEST_FILE_NAME > used ? LONGEST_FILE_NAME - used : 1;
    if (name.size() <= room) return name;
    while (room > 0 && (static_cast<unsigned char>(name[room]) & 0xC0U) == 0x80U) --room;
    name.resize(room);
    DMESSAGE("Check - A profile's name is cut to what file names hold: " + name);
    return name;
}

std::vector<std::string> fieldNames(const CalibrationPoints& points, UniqueNames& taken) {
    std::vector<std::string> names;
    for (const GisAttribute& attribute : points.header.attributes)
        names.push_back(taken.take("CP_" + CLEANATTRIBUTENAME(attribute.name)));
    return names;
}

void addHeader(CsvText& csv, const ProfileSet& set, const CalibrationPoints* points) {
    for (const char* name : {"Chainage", "X", "Y", "Type", "Elevation"}) csv.add(name);
    for (const ProfileColumn& column : set.columns) csv.add(column.name);
    csv.add("Label");
    csv.add("Offset");
    if (points != nullptr) {
        // The points' own fields give way where names clash: layers often carry an X and a Y.
        UniqueNames taken;
        std::vector<std::string> own;
        for (const char* name : {"CP_X", "CP_Y", "CP_Elevation"}) own.push_back(taken.take(name));
        for (const ProfileColumn& column : set.columns) own.push_back(taken.take("CP_" + column.name));
        for (const std::string& name : fieldNames(*points, taken)) csv.add(name);
        for (const std::string& name : own) csv.add(name);
    }
    csv.endRow();
}

void addBlanks(CsvText& csv, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) csv.addBlank();
}

/// What a column holds at the calibration point of a station.
float valueAtPoint(const ProfileColumn& column, const Station& station) {
    const auto point = static_cast<std::size_t>(station.point);
    const float value = column.points[point];
    if (column.pointsNorth.empty() || IS_MISSING(value)) return value;
    return COMPONENT_ALONG(value, column.pointsNorth[point], station.east, station.north);
}

void addPoint(CsvText& csv, const ProfileSet& set, const CalibrationPoints& points, const Station& station,
              const ProfileRules& rules) {
    const auto point = static_cast<std::size_t>(station.point);
    const auto object = static_cast<std::size_t>(points.objectOf[point]);
    const std::vector<std::string> fields = RECORD_VALUES(points.objects[object].record);
    for (std::size_t i = 0; i < points.header.attributes.size(); ++i)
        csv.add(i < fields.size() ? std::string_view(fields[i]) : std::string_view{});
    csv.addReal(points.x[point], rules.coordinateDecimals);
    csv.addReal(points.y[point], rules.coordinateDecimals);
    csv.addValue(set.pointElevation[point], rules.valueDecimals);
    for (const ProfileColumn& column : set.columns) csv.addValue(valueAtPoint(column, station), rules.valueDecimals);
}

std::size_t pointColumns(const ProfileSet& set, const CalibrationPoints& points) {
    return points.header.attributes.size() + 3 + set.columns.size();
}

void addLabel(CsvText& csv, const Station& station, const CalibrationPoints* points, int decimals) {
    const bool isPoint = station.kind == StationKind::Point;
    if (isPoint) csv.add(points->labels[static_cast<std::size_t>(station.point)]);
    else if (station.kind == StationKind::Marker) csv.addReal(station.chainage, decimals);
    else csv.addBlank();
    if (isPoint) csv.addReal(station.offset, decimals);
    else csv.addBlank();
}

void addStation(CsvText& csv, const ProfileSet& set, std::size_t i, const CalibrationPoints* points,
                const ProfileRules& rules) {
    const Station& station = set.stations[i];
    const char kind = static_cast<char>(station.kind);
    for (const double place : {station.chainage, station.x, station.y}) csv.addReal(place, rules.coordinateDecimals);
    csv.add(std::string_view(&kind, 1));
    csv.addValue(set.elevation[i], rules.valueDecimals);
    for (const ProfileColumn& column : set.columns) csv.addValue(column.stations[i], rules.valueDecimals);
    addLabel(csv, station, points, rules.coordinateDecimals);
    if (station.kind == StationKind::Point) addPoint(csv, set, *points, station, rules);
    else if (points != nullptr) addBlanks(csv, pointColumns(set, *points));
    csv.endRow();
}

}  // namespace

std::string PROFILE_FILE_NAME(const std::string& base, const std::string& lineName, UniqueNames& taken) {
    const std::string name = base + "_" + cutToFile(base, cleanedName(lineName));
    const auto isFree = [](const std::string& free) { return !NAME_IN_USE(free + std::string(EXTENSION)); };
    return taken.take(name, "_", isFree) + std::string(EXTENSION);
}

void WRITE_PROFILE(const std::string& file, const ProfileSet& set, std::size_t line, const CalibrationPoints* points,
                   const ProfileRules& rules) {
    REPORT("Writing " + file + "...");
    BEGIN_OUTPUT(file);
    const int handle = OPEN_FILE(file, "O ", "csv");
    CsvText csv;
    addHeader(csv, set, points);
    for (std::size_t i = set.firstStation[line]; i < set.firstStation[line + 1]; ++i) {
        addStation(csv, set, i, points, rules);
        if (csv.text().size() < BLOCK) continue;
        WRITE_OR_STOP(handle, csv.text());
        csv.text().clear();
    }
    WRITE_OR_STOP(handle, csv.text());
    CLOSE_FILE(handle);
    FINISH_OUTPUT(file);
}
