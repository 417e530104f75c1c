#include "run_control/geotiff_output.h"

#include "gdal_outputs/gdal_module.h"
#include "raster/node_scalars.h"
#include "run_control/grid_choice.h"
#include "run_control/quantity_units.h"
#include "services/console.h"
#include "services/files.h"
#include "services/version.h"
#include "services/workers.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>

namespace {

std::string joined(const std::vector<std::string>& texts) {
    std::string line;
    for (const std::string& text : texts) line += (line.empty() ? "" : " ") + text;
    return line;
}

/// "1.5 h", "5400 s", "0 h", "Max".
std::string timeText(const OutputLabel& label, bool seconds) {
    if (!label.time.ordinary()) return TIME_TAG(label, seconds);
    std::string text = TIME_TEXT(label.time, label.timeDecimals, seconds);
    if (text.ends_with('.')) text.pop_back();
    return text + (seconds ? " s" : " h");
}

struct Shown {
    std::string quantity, unit;
};

/// What the grid shows of a quantity: of vectors a component or the direction.
Shown shownOf(const OutputLabel& label, const RunOptions& options, bool feet) {
    Shown shown{label.quantity.empty() ? "Value" : label.quantity,
                UNIT_OF(label.quantity, label.time.kind, feet, options.seconds)};
    if (shown.quantity == "Class") return shown;
    if (!label.ending.empty()) shown.quantity += " difference";
    if (!label.vector) return shown;
    switch (VECTOR_CHOICE(options).scalar) {
        case VectorScalar::Magnitude: break;
        case VectorScalar::XComponent: shown.quantity += " X component"; break;
        case VectorScalar::YComponent: shown.quantity += " Y component"; break;
        case VectorScalar::Direction:
            return {shown.quantity + (options.compass ? " bearing" : " direction"), "degrees"};
    }
    return shown;
}

}  // namespace

GeoTiffOutput::GeoTiffOutput(const RunOptions& options, const Projection& projection)
    : options_(options), projection_(projection), gdal_(GDAL_MODULE("-gtif")) {
    CHECK_GDAL_OPTIONS(gdal_, options.multiband ? "GTiff" : "COG", options.driverOptions);
}

RasterBand GeoTiffOutput::bandOf(const OutputLabel& label) const {
    const Shown shown = shownOf(label, options_, IS_IN_FEET(projection_.text()));
    const std::string time = label.timed ? timeText(label, options_.seconds) : "";
    RasterBand band;
    band.unit = shown.unit;
    band.description =
        shown.quantity + (shown.unit.empty() ? "" : ", " + shown.unit) + (time.empty() ? "" : ", " + time);
    if (options_.multiband && !label.time.ordinary()) band.description = time;
    if (options_.multiband && !time.empty()) band.metadata = {"TIME=" + time};
    return band;
}

RasterFile GeoTiffOutput::fileOf(const Grid& grid, const OutputLabel& label) const {
    RasterFile file;
    file.shown = name_;
    file.path = WORKING_NAME(name_, LibraryMakes::OverOld);
    file.multiband = options_.multiband;
    file.columns = grid.ncols;
    file.rows = grid.nrows;
    file.geoTransform = GRID_TRANSFORM(grid);
    file.crs = projection_.text();
    file.metadata = {"TIFFTAG_SOFTWARE=VORANT_to_GIS " + std::string(VERSION_TEXT),
                     "INPUT=" + FILENAMEEXT(options_.inputFile), "SWITCHES=" + joined(options_.resultSwitches)};
    if (!options_.multiband && label.timed) file.metadata.push_back("TIME=" + timeText(label, options_.seconds));
    file.options = options_.driverOptions;
    file.threads = JOBS();
    file.memory = static_cast<std::int64_t>(GRID_MEMORY(options_));
    return file;
}

void GeoTiffOutput::open(const Grid& grid, const OutputLabel& label, const std::vector<OutputTime>& times) {
    std::vector<RasterBand> bands{bandOf(label)};
    if (options_.multiband && times.size() > 1) {
        bands.clear();
        for (const OutputTime& time : times) {
            OutputLabel ofBand = label;
            ofBand.time = time;
            bands.push_back(bandOf(ofBand));
        }
    }
    BEGIN_OUTPUT(name_);
    NOTE_FILE_USED(name_);
    RasterFile file = fileOf(grid, label);
    file.bands = std::move(bands);
    bands_ = static_cast<std::int32_t>(file.bands.size());
    written_ = 0;
    writer_ = std::make_unique<RasterWriter>(gdal_, file);
}

void GeoTiffOutput::take(const GridBands& bands, const OutputLabel& label, const std::vector<OutputTime>& times,
                         std::string_view beside, const std::string& stem) {
    if (writer_ && (label.base != base_ || label.quantity != quantity_)) finish();
    if (!writer_) {
        base_ = label.base;
        quantity_ = label.quantity;
        OutputLabel named = label;
        named.timed = named.timed && !options_.multiband;
        stem_ = stem.empty() ? OUTPUT_NAME(named, {".tif"}, beside) : stem;
        name_ = stem_ + ".tif";
        open(bands.grid, label, times);
    }
    REPORT("Writing TIF grid...");
    ++written_;
    FROM_SOUTH(bands, [&] {
        const RowRange rows = HELD_ROWS(bands.grid);
        writer_->rows(written_, rows.first, rows.end - rows.first, bands.grid.values.data());
    });
    if (written_ == bands_) end();
}

void GeoTiffOutput::end() {
    writer_->close();
    writer_.reset();
    REPORT("Finished writing TIF grid.");
    FINISH_OUTPUT(name_);
}

void GeoTiffOutput::finish() {
    if (!writer_) return;
    writer_.reset();
    DMESSAGE("WARNING - Only " + AINTEGER(written_) + " of " + AINTEGER(bands_) + " times of " + name_ +
             " could be read; it is not written.");
}
