// Any vector layer that GDAL reads, feature by feature.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "gdal_outputs/module/gdal_handles.h"
#include "gdal_outputs/module/shapes.h"

#include <cstdint>
#include <string>
#include <vector>

struct GdalLayerInput {
    /// As inputOpen of the table.
    GdalLayerInput(const char* path, const char* layer);
    bool next(GdalShape& shape, const GdalValue*& values);
    void rewind() { OGR_L_ResetReading(layer_); }

    GdalInputFacts facts{};

private:
    void findLayer(const std::string& named);
    void describe();
    void takeValue(int field);

    DatasetHandle file_;
    OGRLayerH layer_ = nullptr;
    FeatureHandle feature_;
    ReadShape shape_;
    std::string name_, crs_;
    std::vector<GdalField> fields_;
    std::vector<std::string> texts_;  ///< one for each field
    std::vector<GdalValue> values_;
};
