// What GDAL hands out closes itself.
#pragma once

#include <cpl_conv.h>
#include <cpl_string.h>
#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

#include <memory>
#include <string>
#include <type_traits>

/// A destroyer for std::unique_ptr from a function of GDAL's.
template <auto Destroy>
struct DestroyWith {
    template <typename Handle>
    void operator()(Handle* handle) const {
        Destroy(handle);
    }
};

using SrsHandle = std::unique_ptr<std::remove_pointer_t<OGRSpatialReferenceH>, DestroyWith<OSRRelease>>;
using DatasetHandle = std::unique_ptr<std::remove_pointer_t<GDALDatasetH>, DestroyWith<GDALClose>>;
using FeatureHandle = std::unique_ptr<std::remove_pointer_t<OGRFeatureH>, DestroyWith<OGR_F_Destroy>>;
using TransformHandle = std::unique_ptr<std::remove_pointer_t<OGRCoordinateTransformationH>,
                                        DestroyWith<OCTDestroyCoordinateTransformation>>;

/// Setting of GDAL's for this thread, until the end of the block.
class ConfigScope {
public:
    ConfigScope(const char* key, const std::string& value) : key_(key) {
        const char* before = CPLGetThreadLocalConfigOption(key, nullptr);
        had_ = before != nullptr;
        if (had_) before_ = before;
        CPLSetThreadLocalConfigOption(key, value.c_str());
    }
    ~ConfigScope() { CPLSetThreadLocalConfigOption(key_, had_ ? before_.c_str() : nullptr); }
    ConfigScope(const ConfigScope&) = delete;
    ConfigScope& operator=(const ConfigScope&) = delete;

private:
    const char* key_;
    bool had_ = false;
    std::string before_;
};
