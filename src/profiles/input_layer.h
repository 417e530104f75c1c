// A layer of the user's, whoever reads it: .mif and .shp by the layer library, anything else by GDAL.
#pragma once

#include "gdal_outputs/gdal_layers.h"
#include "gis/layers.h"

#include <memory>
#include <string>
#include <string_view>

/// True for a layer that GDAL reads: "a.gpkg", "a.gpkg:banks".
bool IS_READ_BY_GDAL(std::string_view name);

class InputLayer {
public:
    /// Opens it and reads its header; one in another coordinate system than the run's ends in ERROR 0305, as
    /// everywhere. neededBy: the switch, for runs without the GDAL module.
    InputLayer(const std::string& name, std::string_view neededBy);
    InputLayer(const InputLayer&) = delete;
    InputLayer& operator=(const InputLayer&) = delete;

    const GisHeader& header() const { return header_; }
    /// The next object and its data line; false behind the last. An object that its format cannot draw is of no kind.
    bool next(GisObject& o, std::string& record);
    void close();

private:
    void checkSystem(const GdalTable& gdal, const std::string& name) const;

    std::int32_t layer_ = 0;
    std::unique_ptr<LayerReader> reader_;
    GisHeader header_;  ///< of a layer that GDAL reads `prj` is its system as well-known text
};
