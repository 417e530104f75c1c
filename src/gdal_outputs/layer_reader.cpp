#include "gdal_outputs/gdal_layers.h"
#include "gis/data_line.h"
#include "services/exits.h"
#include "services/file_table.h"

#include <algorithm>

namespace {

constexpr std::int32_t LONGEST_TEXT = 254;  ///< of an attribute whose width nobody told

GisKind kindOf(const GdalShape& shape) {
    switch (shape.geometry) {
        case GdalPoint: return GisKind::Point;
        case GdalMultiPoint: return GisKind::MultiPoint;
        case GdalLine:
        case GdalMultiLine: return shape.parts > 1 ? GisKind::PlineMultiple : GisKind::Pline;
        case GdalRegion:
        case GdalMultiRegion: return GisKind::Region;
        default: return GisKind::None;
    }
}

void toObject(const GdalShape& shape, GisObject& o) {
    o.start(kindOf(shape));
    if (shape.parts == 0) return;
    const std::int32_t vertices = shape.lastVertex[shape.parts - 1];
    o.x.insert(o.x.end(), shape.x, shape.x + vertices);
    o.y.insert(o.y.end(), shape.y, shape.y + vertices);
    const bool onePart = o.kind == GisKind::MultiPoint;  // all points, as in a shapefile
    if (onePart) o.ir.push_back(vertices);
    else o.ir.insert(o.ir.end(), shape.lastVertex, shape.lastVertex + shape.parts);
    o.nr = static_cast<std::int32_t>(o.ir.size()) - 1;
    const bool counted = onePart || o.kind == GisKind::PlineMultiple || o.kind == GisKind::Region;
    o.sectionCount = counted ? shape.parts : 0;
}

bool isNumber(GdalFieldType type) { return type == GdalInteger || type == GdalInteger64 || type == GdalReal; }

}  // namespace

LayerReader::LayerReader(const GdalTable& gdal, const std::string& name) : gdal_(gdal), name_(name), input_(nullptr) {
    const LayerPath path = SPLIT_LAYER_PATH(name);
    input_ = gdal_.inputOpen(path.file.c_str(), path.layer.c_str());
    if (input_ == nullptr) STOP_RUN(CANNOT_READ(name_, std::string(gdal_.reason()) + "."));
    const GdalInputFacts& found = *gdal_.inputFacts(input_);
    facts_.name = found.name;
    facts_.geometry = static_cast<GdalGeometry>(found.geometry);
    facts_.crs = found.crs;
    for (std::int32_t i = 0; i < found.fieldCount; ++i)
        facts_.fields.push_back({found.fields[i].name, static_cast<GdalFieldType>(found.fields[i].type),
                                 found.fields[i].width, found.fields[i].decimals});
}

LayerReader::~LayerReader() {
    if (input_ != nullptr) gdal_.inputClose(input_);
}

bool LayerReader::next(GisObject& o) {
    GdalShape shape{};
    const std::int32_t found = gdal_.inputNext(input_, &shape, &values_);
    if (found < 0) STOP_RUN(CANNOT_READ(name_, std::string(gdal_.reason()) + "."));
    if (found > 0) toObject(shape, o);
    return found > 0;
}

void LayerReader::dataLine(std::string& line) const {
    line.clear();
    for (std::size_t i = 0; i < facts_.fields.size(); ++i) {
        const GdalValue& value = values_[i];
        if (!isNumber(facts_.fields[i].type)) {
            ADD_TEXT(line, value.text);
            continue;
        }
        if (i > 0) line += ',';
        line += value.text;
    }
}

std::string ATTRIBUTE_TYPE_OF(const LayerField& field) {
    const std::string width = std::to_string(field.width);
    switch (field.type) {
        case GdalInteger: return "Integer";
        case GdalInteger64: return "Decimal(" + (field.width > 0 ? width : "20") + ",0)";
        case GdalReal:
            return field.width > 0 ? "Decimal(" + width + "," + std::to_string(field.decimals) + ")" : "Float";
        case GdalLogical: return "Logical";
        case GdalDate: return "Char(10)";
        case GdalDateTime: return "Char(32)";
        case GdalTextField: break;
    }
    return "Char(" + std::to_string(field.width > 0 ? std::min(field.width, LONGEST_TEXT) : LONGEST_TEXT) + ")";
}
