#include "profiles/sample_package.h"

#include "geometry/no_value.h"
#include "gis/attributes.h"
#include "profiles/layer_fields.h"
#include "text_utils/numbers.h"

#include <charconv>
#include <deque>
#include <optional>
#include <span>

namespace {

GdalFieldType typeOf(const GisAttribute& attribute) {
    const std::optional<ColumnType> type = COLUMN_TYPE(attribute.type);
    if (!type) return GdalTextField;
    if (type->word == "INTEGER" || type->word == "SMALLINT") return GdalInteger;
    if (type->word == "LARGEINT" || (type->word == "DECIMAL" && type->decimals == 0)) return GdalInteger64;
    if (type->word == "FLOAT" || type->word == "DECIMAL") return GdalReal;
    return type->word == "LOGICAL" ? GdalLogical : GdalTextField;
}

/// The values of one object, with the texts that they point to.
class Values {
public:
    void addText(std::string text) {
        texts_.push_back(std::move(text));
        values_.push_back({1, 0, 0.0, texts_.back().c_str()});
    }
    void addReal(double value, int decimals) { values_.push_back({1, 0, ROUNDED(value, decimals), ""}); }
    /// NO_VALUE is null.
    void addValue(float value, int decimals) {
        if (IS_MISSING(value)) addNull();
        else addReal(static_cast<double>(value), decimals);
    }
    void addInteger(std::int64_t value) { values_.push_back({1, value, 0.0, ""}); }
    void addNull() { values_.push_back({0, 0, 0.0, ""}); }
    void add(const std::vector<GdalValue>& values) { values_.insert(values_.end(), values.begin(), values.end()); }
    /// A value of a data line; a blank number is null.
    void addOwn(const std::string& text, GdalFieldType type);
    void clear() {
        values_.clear();
        texts_.clear();
    }
    std::span<const GdalValue> all() const { return values_; }

private:
    std::vector<GdalValue> values_;
    std::deque<std::string> texts_;  // never moves what is in it
};

void Values::addOwn(const std::string& text, GdalFieldType type) {
    const char* const end = text.data() + text.size();
    std::int64_t integer = 0;
    double real = 0.0;
    switch (type) {
        case GdalReal:
            if (std::from_chars(text.data(), end, real).ec != std::errc{}) return addNull();
            return values_.push_back({1, 0, real, ""});
        case GdalInteger:
        case GdalInteger64:
            if (std::from_chars(text.data(), end, integer).ec != std::errc{}) return addNull();
            return addInteger(integer);
        case GdalLogical:
            if (text.empty()) return addNull();
            return addInteger(text.front() == 'T' || text.front() == 't' || text.front() == '1' ? 1 : 0);
        default: return addText(text);
    }
}

/// Kinds that only .mif files know have no geometry here.
bool hasGeometry(GisKind kind) {
    return kind != GisKind::Ellipse && kind != GisKind::Rect && kind != GisKind::RoundRect && kind != GisKind::Arc &&
           kind != GisKind::Text;
}

std::int32_t pointLayer(SamplePackage& package, const std::string& name, const CalibrationPoints& points,
                        const std::vector<AppendedColumn>& columns) {
    const auto known = package.layers.find(name);
    if (known != package.layers.end()) return known->second;
    LayerFacts facts;
    facts.name = name;
    facts.geometry = points.others.empty() ? GdalPoint : GdalAnyGeometry;
    facts.crs = package.crs.empty() ? points.header.prj : package.crs;
    for (const GisAttribute& attribute : points.header.attributes)
        facts.fields.push_back({attribute.name, typeOf(attribute)});
    for (const AppendedColumn& column : columns)
        facts.fields.push_back({column.name, column.reals.empty() ? GdalInteger : GdalReal});
    facts.fields.insert(facts.fields.end(), package.timeFields.begin(), package.timeFields.end());
    return package.layers[name] = package.file.add(facts);
}

void addAppended(Values& values, const std::vector<AppendedColumn>& columns, std::int32_t point, int decimals) {
    const auto at = static_cast<std::size_t>(point);
    for (const AppendedColumn& column : columns) {
        if (point < 0) values.addNull();
        else if (!column.reals.empty()) values.addValue(column.reals[at], decimals);
        else values.addInteger(column.integers[at]);
    }
}

std::vector<LayerField> stationFields(const ProfileSet& set) {
    std::vector<LayerField> fields = {
        {"Profile", GdalTextField}, {"Chainage", GdalReal}, {"Type", GdalTextField}, {"Elevation", GdalReal}};
    for (const ProfileColumn& column : set.columns) fields.push_back({column.name, GdalReal});
    fields.push_back({"Label", GdalTextField});
    fields.push_back({"Offset", GdalReal});
    return fields;
}

void addStation(Values& values, const ProfileSet& set, std::size_t i, const CalibrationPoints* points,
                const ProfileRules& rules) {
    const Station& station = set.stations[i];
    values.addReal(station.chainage, rules.coordinateDecimals);
    values.addText(std::string(1, static_cast<char>(station.kind)));
    values.addValue(set.elevation[i], rules.valueDecimals);
    for (const ProfileColumn& column : set.columns) values.addValue(column.stations[i], rules.valueDecimals);
    const bool point = station.kind == StationKind::Point;
    if (point) values.addText(points->labels[static_cast<std::size_t>(station.point)]);
    else values.addNull();
    if (point) values.addReal(station.offset, rules.coordinateDecimals);
    else values.addNull();
}

}  // namespace

void PUT_POINTS(SamplePackage& package, const std::string& name, const CalibrationPoints& points,
                const std::vector<AppendedColumn>& columns, int decimals) {
    const std::int32_t layer = pointLayer(package, name, points, columns);
    std::vector<GdalFieldType> types;
    for (const GisAttribute& attribute : points.header.attributes) types.push_back(typeOf(attribute));
    GisObject o;
    Values values;
    for (const CalibrationObject& object : points.objects) {
        const auto point = static_cast<std::size_t>(object.point);
        if (object.point >= 0) o.setPoint(points.x[point], points.y[point]);
        else o = points.others[static_cast<std::size_t>(object.other)];
        if (!hasGeometry(o.kind)) o.start(GisKind::None);
        values.clear();
        std::vector<std::string> own = RECORD_VALUES(object.record);
        own.resize(types.size());
        for (std::size_t i = 0; i < own.size(); ++i) values.addOwn(own[i], types[i]);
        addAppended(values, columns, object.point, decimals);
        values.add(package.timeValues);
        package.file.writer().feature(layer, o, values.all());
    }
}

void PUT_LINES(SamplePackage& package, const std::string& name, const std::vector<ProfileLine>& lines, int decimals) {
    const std::int32_t layer =
        package.file.add({name, GdalLine, package.crs, {{"Profile", GdalTextField}, {"Length", GdalReal}}, {}});
    GisObject o;
    Values values;
    for (const ProfileLine& line : lines) {
        o.start(GisKind::Pline);
        for (std::size_t i = 0; i < line.x.size(); ++i) o.add(line.x[i], line.y[i]);
        o.endPart();
        values.clear();
        values.addText(line.name);
        values.addReal(line.length(), decimals);
        package.file.writer().feature(layer, o, values.all());
    }
}

void PUT_STATIONS(SamplePackage& package, const std::string& name, const ProfileSet& set,
                  const std::vector<ProfileLine>& lines, const CalibrationPoints* points, const ProfileRules& rules) {
    const std::int32_t layer = package.file.add({name, GdalPoint, package.crs, stationFields(set), {}});
    GisObject o;
    Values values;
    for (std::size_t line = 0; line < lines.size(); ++line)
        for (std::size_t i = set.firstStation[line]; i < set.firstStation[line + 1]; ++i) {
            o.setPoint(set.stations[i].x, set.stations[i].y);
            values.clear();
            values.addText(lines[line].name);
            addStation(values, set, i, points, rules);
            package.file.writer().feature(layer, o, values.all());
        }
}
