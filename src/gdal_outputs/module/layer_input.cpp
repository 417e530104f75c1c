#include "gdal_outputs/module/layer_input.h"

#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/failures.h"

#include <cstdlib>

namespace {

GdalFieldType typeOf(OGRFieldDefnH field) {
    switch (OGR_Fld_GetType(field)) {
        case OFTInteger: return OGR_Fld_GetSubType(field) == OFSTBoolean ? GdalLogical : GdalInteger;
        case OFTInteger64: return GdalInteger64;
        case OFTReal: return GdalReal;
        case OFTDate: return GdalDate;
        case OFTDateTime: return GdalDateTime;
        default: return GdalTextField;  // times, lists and bytes as GDAL writes them down
    }
}

/// "2020-01-31", or with its time "2020-01-31T12:00:00.000", where the zone is known "Z" or "+05:30" behind it.
std::string dateText(OGRFeatureH feature, int field, std::int32_t type) {
    constexpr int UTC = 100;  // zones are quarters of an hour from it; 0: unknown, 1: local
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, zone = 0;
    float second = 0.0F;
    OGR_F_GetFieldAsDateTimeEx(feature, field, &year, &month, &day, &hour, &minute, &second, &zone);
    std::string text = CPLSPrintf("%04d-%02d-%02d", year, month, day);
    if (type == GdalDate) return text;
    text += CPLSPrintf("T%02d:%02d:%06.3f", hour, minute, static_cast<double>(second));
    if (zone == UTC) return text + "Z";
    const int minutes = std::abs(zone - UTC) * 15;
    if (zone > 1) text += CPLSPrintf("%c%02d:%02d", zone < UTC ? '-' : '+', minutes / 60, minutes % 60);
    return text;
}

std::string layerNames(GDALDatasetH file) {
    std::string names;
    for (int i = 0; i < GDALDatasetGetLayerCount(file); ++i)
        names += (i == 0 ? "" : ", ") + std::string(OGR_L_GetName(GDALDatasetGetLayer(file, i)));
    return names;
}

}  // namespace

GdalLayerInput::GdalLayerInput(const char* path, const char* layer)
    : file_(GDALOpenEx(path, GDAL_OF_VECTOR | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR, nullptr, nullptr, nullptr)) {
    if (!file_) FAIL("no vector file that GDAL can read");
    findLayer(layer);
    describe();
}

void GdalLayerInput::findLayer(const std::string& named) {
    const int count = GDALDatasetGetLayerCount(file_.get());
    if (count == 0) throw GdalFailure{"it holds no layer"};
    if (!named.empty()) {
        layer_ = GDALDatasetGetLayerByName(file_.get(), named.c_str());
        if (layer_ == nullptr) throw GdalFailure{"it has no layer " + named + "; it holds " + layerNames(file_.get())};
    } else if (count > 1) {
        throw GdalFailure{"it holds several layers, and none is named; put :name behind the file for one of " +
                          layerNames(file_.get())};
    } else {
        layer_ = GDALDatasetGetLayer(file_.get(), 0);
    }
}

void GdalLayerInput::describe() {
    OGRFeatureDefnH definition = OGR_L_GetLayerDefn(layer_);
    for (int i = 0; i < OGR_FD_GetFieldCount(definition); ++i) {
        OGRFieldDefnH field = OGR_FD_GetFieldDefn(definition, i);
        fields_.push_back(
            {OGR_Fld_GetNameRef(field), typeOf(field), OGR_Fld_GetWidth(field), OGR_Fld_GetPrecision(field)});
    }
    texts_.resize(fields_.size());
    values_.resize(fields_.size());
    name_ = OGR_L_GetName(layer_);
    crs_ = WKT_OF(OGR_L_GetSpatialRef(layer_));
    const OGRwkbGeometryType type = OGR_L_GetGeomType(layer_);
    facts = {name_.c_str(),     GEOMETRY_OF(type),
             OGR_GT_HasZ(type), OGR_L_GetFeatureCount(layer_, TRUE),
             fields_.data(),    static_cast<std::int32_t>(fields_.size()),
             crs_.c_str(),      GDALGetDriverShortName(GDALGetDatasetDriver(file_.get()))};
    CHECK_FAILURES();
    rewind();
}

void GdalLayerInput::takeValue(int field) {
    const auto at = static_cast<std::size_t>(field);
    GdalValue& value = values_[at];
    value = {};
    texts_[at].clear();
    value.text = texts_[at].c_str();
    if (OGR_F_IsFieldSetAndNotNull(feature_.get(), field) == 0) return;
    value.set = 1;
    if (fields_[at].type == GdalReal) value.real = OGR_F_GetFieldAsDouble(feature_.get(), field);
    else if (fields_[at].type <= GdalInteger64 || fields_[at].type == GdalLogical)
        value.integer = OGR_F_GetFieldAsInteger64(feature_.get(), field);
    texts_[at] = fields_[at].type >= GdalDate ? dateText(feature_.get(), field, fields_[at].type)
                                              : OGR_F_GetFieldAsString(feature_.get(), field);
    value.text = texts_[at].c_str();
}

bool GdalLayerInput::next(GdalShape& shape, const GdalValue*& values) {
    feature_.reset(OGR_L_GetNextFeature(layer_));
    CHECK_FAILURES();  // the end and a damaged file both come as no feature
    if (!feature_) return false;
    TAKE_SHAPE(OGR_F_GetGeometryRef(feature_.get()), shape_);
    for (int i = 0; i < static_cast<int>(fields_.size()); ++i) takeValue(i);
    shape = shape_.shape;
    values = values_.data();
    return true;
}
