#include "gdal_outputs/module/layer_output.h"

#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/driver_options.h"
#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/shapes.h"

#include <cpl_vsi.h>

#include <array>
#include <climits>
#include <iterator>
#include <string_view>

namespace {

/// What a GeoPackage calls a plane without a known system; without any, GDAL would take degrees of an unknown one.
constexpr const char* UNDEFINED_CARTESIAN =
    R"(LOCAL_CS["Undefined Cartesian SRS",UNIT["metre",1],AXIS["Easting",EAST],AXIS["Northing",NORTH]])";

struct TypePair {
    OGRFieldType type;
    OGRFieldSubType subType;
};
/// By GdalFieldType.
constexpr TypePair TYPES[] = {{OFTInteger, OFSTNone}, {OFTInteger64, OFSTNone},  {OFTReal, OFSTNone},
                              {OFTString, OFSTNone},  {OFTInteger, OFSTBoolean}, {OFTDate, OFSTNone},
                              {OFTDateTime, OFSTNone}};
static_assert(std::size(TYPES) == GdalDateTime + 1);

bool hasField(const GdalLayerFacts& facts, const std::string& name) {
    for (std::int32_t i = 0; i < facts.fieldCount; ++i)
        if (EQUAL(facts.fields[i].name, name.c_str())) return true;
    return false;
}

/// The name, with "_" behind it as often as a field of the layer has it.
std::string freeName(const GdalLayerFacts& facts, std::string name) {
    while (hasField(facts, name)) name += '_';
    return name;
}

void addField(OGRLayerH layer, const GdalField& field) {
    if (field.type < 0 || field.type > GdalDateTime) throw GdalFailure{"a field of a type that there is not"};
    const TypePair& type = TYPES[field.type];
    OGRFieldDefnH definition = OGR_Fld_Create(field.name, type.type);
    OGR_Fld_SetSubType(definition, type.subType);
    if (type.type == OFTString) OGR_Fld_SetWidth(definition, field.width);
    const OGRErr failed = OGR_L_CreateField(layer, definition, FALSE);
    OGR_Fld_Destroy(definition);
    if (failed != OGRERR_NONE) FAIL("field " + std::string(field.name) + " could not be created");
}

void putValue(OGRFeatureH feature, int field, std::int32_t type, const GdalValue& value) {
    if (value.set == 0) return OGR_F_SetFieldNull(feature, field);
    switch (type) {
        case GdalInteger:
        case GdalLogical:
            if (value.integer < INT_MIN || value.integer > INT_MAX)
                throw GdalFailure{"a number that its column cannot hold"};
            return OGR_F_SetFieldInteger(feature, field, static_cast<int>(value.integer));
        case GdalInteger64: return OGR_F_SetFieldInteger64(feature, field, value.integer);
        case GdalReal: return OGR_F_SetFieldDouble(feature, field, value.real);
        default: return OGR_F_SetFieldString(feature, field, value.text);
    }
}

/// GDAL goes on where the disk refused the marks of a GeoPackage, which it writes among the first and never reads
/// itself.
void checkMarks(const std::string& path) {
    constexpr std::size_t VERSION = 60;  // bytes before it in the header of the database; then, behind 4 more, the mark
    std::array<char, VERSION + 12> header{};
    VSILFILE* const file = VSIFOpenL(path.c_str(), "rb");
    const std::size_t got = file != nullptr ? VSIFReadL(header.data(), 1, header.size(), file) : 0;
    if (file != nullptr) VSIFCloseL(file);
    const std::string_view bytes(header.data(), got);
    if (got < header.size() || bytes.substr(VERSION, 4) == std::string_view("\0\0\0\0", 4) ||
        bytes.substr(VERSION + 8, 4) != "GPKG")
        throw GdalFailure{"the header could not be written"};
}

}  // namespace

GdalLayerOutput::GdalLayerOutput(const char* path, const char* driver, GdalTexts options)
    : path_(path), driver_(driver), options_(OPTIONS_OVER({}, options)) {
    const bool flat = driver_ == "FlatGeobuf";
    if (flat && !EQUAL(CPLGetExtension(path), "fgb"))
        throw GdalFailure{"a FlatGeobuf whose name does not end in .fgb would become a folder"};
    VSIUnlink(path);
    if (!flat) createFile();  // a FlatGeobuf begins with its only layer
}

void GdalLayerOutput::createFile() {
    // a file that is not completed is removed, so neither journal nor waiting for the disk is needed
    const ConfigScope noWaiting("OGR_SQLITE_SYNCHRONOUS", "OFF");
    const ConfigScope noJournal("OGR_SQLITE_JOURNAL", "OFF");
    CPLStringList options = OPTIONS_FOR(driver_.c_str(), {options_.List(), options_.Count()}, false);
    file_.reset(GDALCreate(DRIVER(driver_.c_str()), path_.c_str(), 0, 0, 0, GDT_Unknown, options.List()));
    if (!file_) FAIL("the file could not be created");
    if (GDALDatasetTestCapability(file_.get(), ODsCTransactions) != 0 &&
        GDALDatasetStartTransaction(file_.get(), FALSE) != OGRERR_NONE)
        FAIL("the file could not be written");
}

CPLStringList GdalLayerOutput::layerOptions(const GdalLayerFacts& facts) const {
    CPLStringList options;
    const bool flat = driver_ == "FlatGeobuf";
    if (flat) options.SetNameValue("SPATIAL_INDEX", "NO");  // its index would put the features in another order
    if (!flat) options.SetNameValue("FID", freeName(facts, "fid").c_str());
    if (!flat) options.SetNameValue("GEOMETRY_NAME", freeName(facts, "geom").c_str());
    CPLStringList ofRun = OPTIONS_FOR(driver_.c_str(), {options_.List(), options_.Count()}, true);
    options = OPTIONS_OVER(options, {ofRun.List(), ofRun.Count()});
    return OPTIONS_OVER(options, facts.options);
}

OGRLayerH GdalLayerOutput::createLayer(const GdalLayerFacts& facts) {
    SrsHandle crs;
    if (*facts.crs != '\0') crs = SRS_OF(facts.crs);
    else if (driver_ == "GPKG") {
        crs.reset(OSRNewSpatialReference(UNDEFINED_CARTESIAN));
    }
    CPLStringList options = layerOptions(facts);
    OGRLayerH layer =
        GDALDatasetCreateLayer(file_.get(), facts.name, crs.get(), OGR_TYPE(facts.geometry), options.List());
    if (layer == nullptr) FAIL("layer " + std::string(facts.name) + " could not be created");
    for (std::int32_t i = 0; i < facts.fieldCount; ++i) addField(layer, facts.fields[i]);
    return layer;
}

std::int32_t GdalLayerOutput::add(const GdalLayerFacts& facts) {
    if (!file_) createFile();
    Layer layer{createLayer(facts), facts.geometry, {}, nullptr};
    for (std::int32_t i = 0; i < facts.fieldCount; ++i) layer.types.push_back(facts.fields[i].type);
    layer.feature.reset(OGR_F_Create(OGR_L_GetLayerDefn(layer.handle)));
    CHECK_FAILURES();
    written_.indexed = CPLTestBool(layerOptions(facts).FetchNameValueDef("SPATIAL_INDEX", "YES"));
    layers_.push_back(std::move(layer));
    return static_cast<std::int32_t>(layers_.size()) - 1;
}

void GdalLayerOutput::feature(std::int32_t number, const GdalShape& shape, const GdalValue* values) {
    if (number < 0 || static_cast<std::size_t>(number) >= layers_.size())
        throw GdalFailure{"a layer that the file does not have"};
    Layer& layer = layers_[static_cast<std::size_t>(number)];
    OGRFeatureH feature = layer.feature.get();
    OGR_F_SetFID(feature, OGRNullFID);
    PUT_SHAPE(feature, layer.geometry, shape);
    for (std::size_t i = 0; i < layer.types.size(); ++i)
        putValue(feature, static_cast<int>(i), layer.types[i], values[i]);
    if (OGR_L_CreateFeature(layer.handle, feature) != OGRERR_NONE) FAIL("an object could not be written");
    if (driver_ == "FlatGeobuf") written_.add(OGR_F_GetGeometryRef(feature));
}

void GdalLayerOutput::close() {
    layers_.clear();
    if (!file_) throw GdalFailure{"a file without a layer"};
    if (GDALDatasetTestCapability(file_.get(), ODsCTransactions) != 0 &&
        GDALDatasetCommitTransaction(file_.get()) != OGRERR_NONE)
        FAIL("the file could not be completed");
    file_.reset();  // builds the spatial indexes
    CHECK_FAILURES();
    if (driver_ == "FlatGeobuf") CHECK_FLATGEOBUF(path_, written_);
    if (driver_ == "GPKG") checkMarks(path_);
}

void GdalLayerOutput::abandon() {
    layers_.clear();
    file_.reset();
    VSIUnlink(path_.c_str());
}
