// A file of layers as an output of the run: announced, checked, and complete behind `close`.
#pragma once

#include "gdal_outputs/gdal_layers.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Stops the run when another program has a GeoPackage of that name open.
void REFUSE_OPEN_ELSEWHERE(const std::string& name);

class LayerFile {
public:
    /// Loads the GDAL module and checks the options of -co, or stops the run. neededBy: the switch ("-gpkg"). driver:
    /// as LayersWriter has it.
    LayerFile(std::string_view neededBy, std::string driver, std::vector<std::string> options);

    /// The file to come. name: with its extension. Stops the run when another program has it open.
    void expect(const std::string& name);
    /// The number of the new layer, whose name and field names are made unique in the file whatever their letter case.
    /// The first layer announces and creates the file.
    std::int32_t add(LayerFacts facts);
    LayersWriter& writer() { return *writer_; }
    /// Completes the file; nothing where it has no layer.
    void close();

private:
    void open();

    const GdalTable& gdal_;
    std::string driver_;
    std::vector<std::string> options_;
    std::unique_ptr<LayersWriter> writer_;
    std::string name_;
    std::vector<std::string> layers_;
};
