// A vector file that is being written: layers of features, in the order in which they come.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "gdal_outputs/module/flatgeobuf_check.h"
#include "gdal_outputs/module/gdal_handles.h"

#include <cstdint>
#include <string>
#include <vector>

struct GdalLayerOutput {
    /// As layersOpen of the table.
    GdalLayerOutput(const char* path, const char* driver, GdalTexts options);
    std::int32_t add(const GdalLayerFacts& facts);
    void feature(std::int32_t layer, const GdalShape& shape, const GdalValue* values);
    /// Completes the file, or throws; `abandon` is then still to be called.
    void close();
    /// Removes whatever has been written.
    void abandon();

private:
    struct Layer {
        OGRLayerH handle;
        std::int32_t geometry;
        std::vector<std::int32_t> types;  ///< GdalFieldType
        FeatureHandle feature;            ///< used again for each
    };
    void createFile();
    CPLStringList layerOptions(const GdalLayerFacts& facts) const;
    OGRLayerH createLayer(const GdalLayerFacts& facts);

    std::string path_, driver_;
    CPLStringList options_;
    FlatGeobufContents written_;  ///< of one
    DatasetHandle file_;
    std::vector<Layer> layers_;  ///< before the file goes, so do they
};
