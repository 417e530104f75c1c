// GeoTIFFs of a run: one Cloud Optimized GeoTIFF an output time, or with -multiband one tiled GeoTIFF a dataset.
#pragma once

#include "gdal_outputs/gdal_raster.h"
#include "raster/grid_bands.h"
#include "run_control/output_names.h"
#include "services/options.h"
#include "services/projection.h"

#include <memory>
#include <string>
#include <vector>

class GeoTiffOutput {
public:
    /// Loads the GDAL module and checks -co, or stops the run. Both must live as long as this.
    GeoTiffOutput(const RunOptions& options, const Projection& projection);

    /// Writes one output time. times: all of its dataset, which -multiband makes bands of. beside: as OUTPUT_NAME has
    /// it. stem: the file's name without extension; blank for OUTPUT_NAME's.
    void take(const GridBands& bands, const OutputLabel& label, const std::vector<OutputTime>& times,
              std::string_view beside = {}, const std::string& stem = {});
    /// The name, without extension, of the file that has been begun last.
    const std::string& stem() const { return stem_; }
    /// Behind the last one. A dataset of which times are missing leaves no file, with a WARNING.
    void finish();

private:
    RasterFile fileOf(const Grid& grid, const OutputLabel& label) const;
    RasterBand bandOf(const OutputLabel& label) const;
    void open(const Grid& grid, const OutputLabel& label, const std::vector<OutputTime>& times);
    void end();

    const RunOptions& options_;
    const Projection& projection_;
    const GdalTable& gdal_;
    std::unique_ptr<RasterWriter> writer_;  ///< of the file being written
    std::string stem_, name_;               ///< its name without and with extension
    std::string base_, quantity_;           ///< what it holds
    std::int32_t bands_ = 0, written_ = 0;
};
