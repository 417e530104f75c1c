// GeoPackages and FlatGeobufs of a run: one GeoPackage with a layer a dataset, or one FlatGeobuf a dataset. All times
// of a dataset stand in its one layer.
#pragma once

#include "gdal_outputs/layer_file.h"
#include "run_control/output_formats.h"
#include "run_control/output_names.h"
#include "services/options.h"
#include "services/projection.h"
#include "vector_outputs/layer_target.h"
#include "vector_outputs/layer_writer.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The columns of an output time: what "Time" and "DateTime" hold, null for stored extremes.
class TimeFields {
public:
    explicit TimeFields(const RunOptions& options) : options_(options) {}
    /// None unless the run converts all times.
    void add(std::vector<LayerField>& fields) const;
    void set(const OutputLabel& label);
    /// Appends the values, which stay valid until the next `set`.
    void put(std::vector<GdalValue>& values) const;

private:
    const RunOptions& options_;
    GdalValue time_{};
    std::string date_;
};

class GdalLayerOutput : public LayerTarget {
public:
    /// Loads the GDAL module and checks -co, or stops the run. All must live as long as this.
    GdalLayerOutput(const OutputFormat& format, const RunOptions& options, const Projection& projection);

    /// What `begin` will bring. Returns the name that its layer is to have, without extension. beside: as OUTPUT_NAME
    /// has it.
    std::string next(const OutputLabel& label, std::string_view beside);
    /// job.name: the layer's, with the format's extension.
    void begin(const LayerJob& job) override;
    void object(const MapItem& item, const GisObject& o) override;
    /// Behind the last one.
    void finish();

private:
    struct Layer {
        LayerFile* file;
        std::int32_t number;
    };
    Layer addLayer(const LayerJob& job, const std::string& name);
    std::string stemOf(OutputLabel label, std::string_view beside) const;

    const OutputFormat& format_;
    const RunOptions& options_;
    const Projection& projection_;
    std::string dataset_;  ///< whose layers are open; of a format that gathers all the same from the first on
    std::string stem_;     ///< name without extension of its file
    std::string layerName_;
    std::map<std::string, LayerFile> files_;  ///< by what stands behind the stem
    std::map<std::string, Layer> layers_;     ///< by name, quantity and columns
    Layer layer_{};
    const RecordColumns* record_ = nullptr;
    TimeFields times_;
    std::vector<GdalValue> values_;
    std::vector<std::string> texts_;  ///< by column
};
