#include "profiles/point_layer.h"

#include "geometry/no_value.h"
#include "gis/data_line.h"
#include "gis/fixed_text.h"
#include "gis/layers.h"
#include "profiles/sample_package.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

bool hasFormat(GisKind kind) {
    return kind != GisKind::Ellipse && kind != GisKind::Rect && kind != GisKind::RoundRect && kind != GisKind::Arc;
}

std::string_view realOf(RealText& buffer, const AppendedColumn& column, std::int32_t point, int decimals) {
    const float value = point < 0 ? NO_VALUE : column.reals[static_cast<std::size_t>(point)];
    return REAL_TEXT(buffer, static_cast<double>(IS_MISSING(value) ? NO_VALUE : value), decimals);
}

std::string typeOf(const AppendedColumn& column, int width, int decimals) {
    if (column.reals.empty()) return "Integer";
    RealText buffer;
    auto longest = std::max(static_cast<std::size_t>(width), realOf(buffer, column, -1, decimals).size());
    for (std::size_t i = 0; i < column.reals.size(); ++i)
        longest = std::max(longest, realOf(buffer, column, static_cast<std::int32_t>(i), decimals).size());
    return "Decimal(" + std::to_string(longest) + "," + std::to_string(decimals) + ")";
}

void appendValues(std::string& line, const std::vector<AppendedColumn>& columns, std::int32_t point, int decimals) {
    RealText buffer;
    for (const AppendedColumn& column : columns) {
        line += ',';
        if (!column.reals.empty()) line += realOf(buffer, column, point, decimals);
        else line += AINTEGER(point < 0 ? 0 : column.integers[static_cast<std::size_t>(point)]);
    }
}

void writePackage(const std::string& file, const CalibrationPoints& points, const std::vector<AppendedColumn>& columns,
                  int decimals) {
    SamplePackage package{LayerFile("-cp", "GPKG", {})};
    package.file.expect(file);
    PUT_POINTS(package, FILENAMEEXT(FILENAMEPATH(file)), points, columns, decimals);
    package.file.close();
}

std::int32_t openCopy(const std::string& file, const CalibrationPoints& points,
                      const std::vector<AppendedColumn>& columns, int width, int decimals) {
    const std::int32_t layer = gisOpenLayer(file, "R", "O ");
    GisHeader& header = gisHeader(layer);
    header = points.header;
    header.shape = FILEEXT(file) == ".shp" ? GisShape::Point : GisShape::Any;
    for (const AppendedColumn& column : columns)
        header.attributes.push_back({column.name, typeOf(column, width, decimals)});
    gisWriteHeader(layer);
    return layer;
}

}  // namespace

void WRITE_POINT_LAYER(const std::string& file, const CalibrationPoints& points,
                       const std::vector<AppendedColumn>& columns, int width, int decimals) {
    if (FILEEXT(file) == ".gpkg") return writePackage(file, points, columns, decimals);
    BEGIN_OUTPUT(file);
    const std::int32_t layer = openCopy(file, points, columns, width, decimals);
    GisObject o;
    std::string line;
    int withoutFormat = 0;
    for (const CalibrationObject& object : points.objects) {
        const auto point = static_cast<std::size_t>(object.point);
        if (object.point >= 0) o.setPoint(points.x[point], points.y[point]);
        else o = points.others[static_cast<std::size_t>(object.other)];
        if (!hasFormat(o.kind)) {
            o.start(GisKind::None);
            ++withoutFormat;
        }
        line = object.record;
        appendValues(line, columns, object.point, decimals);
        gisWriteObject(layer, o);
        gisWriteRecord(layer, line);
    }
    gisCloseLayer(layer);
    if (withoutFormat > 0)
        DMESSAGE("WARNING - " + AINTEGER(withoutFormat) +
                 " ellipses, rectangles and arcs of the CP layer keep their records only.");
    FINISH_OUTPUT(file);
}
