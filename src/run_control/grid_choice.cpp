#include "run_control/grid_choice.h"

#include "gdal_outputs/gdal_module.h"
#include "gdal_outputs/gdal_raster.h"
#include "inputs/mesh.h"
#include "inputs/mesh_degrees.h"
#include "platform/platform.h"
#include "raster/default_spacing.h"
#include "raster/external_grid.h"
#include "raster/grid_extent.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/free_form.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace {

struct TemplateGrid {
    Grid grid;  ///< without a cell size: there is none
    std::optional<std::array<double, 6>> transform;
};
TemplateGrid templateGrid;

/// One number above zero and nothing else: the "12" of 12,5 would be a spacing that nobody meant.
std::optional<double> spacingOf(std::string_view answer) {
    double spacing = 0.0;
    FreeForm text(answer);
    const bool read = text.NEXT_REAL(spacing) == FreeForm::Read::Value && text.ENDED();
    if (!read || answer.find(',') != std::string_view::npos || !std::isfinite(spacing) || spacing <= 0.0) return {};
    return spacing;
}

double askSpacing(std::string_view prompt) {
    for (;;) {
        const std::string answer = ASK(prompt);
        if (const std::optional<double> spacing = spacingOf(answer)) return *spacing;
        REPORT("   \"" + answer + "\" is not one number above zero, such as 12.5");
    }
}

/// Header and text formats stay with our own reader, so that a run never depends on what is installed.
bool hasOwnReader(const std::string& name) {
    constexpr std::string_view OWN[] = {".asc", ".flt", ".hdr", ".txt"};
    return std::find(std::begin(OWN), std::end(OWN), FILEEXT(name)) != std::end(OWN);
}

void takeOverHeader(const std::string& name, RunCrs& crs) {
    const ExternalGrid external = READ_EXTERNAL_GRID_HEADER(name);
    templateGrid.grid = external.grid;
    crs.takePrjOf(name, external.projection);
}

void takeOverRaster(const std::string& name, RunCrs& crs) {
    const RasterPlace place = READ_RASTER_PLACE(GDAL_MODULE("-like"), name);
    NOTE_FILE_USED(name);
    Grid& grid = templateGrid.grid;
    grid.ncols = place.columns;
    grid.nrows = place.rows;
    grid.cellSize = place.geoTransform[1];
    grid.xll = place.geoTransform[0];
    grid.yll = place.geoTransform[3] + static_cast<double>(place.rows) * place.geoTransform[5];
    templateGrid.transform = place.geoTransform;
    REPORT("External Grid Info: " + AINTEGER(grid.nrows) + " rows by " + AINTEGER(grid.ncols) + " columns with " +
           AREAL8(grid.cellSize) + " cell size.");
    crs.takeSystemOf(name, place.crs);
}

}  // namespace

void CHECK_GRID_SWITCHES() {
    const RunOptions& options = OPTIONS();
    if (!options.grid || !options.likeGrid.empty()) return;
    if (!GIVEN(options, Family::Raster) && !GIVEN(options, Family::Layer))
        STOP_RUN("ERROR - -grid option must only be specified with -asc, -shp or -mif option");
    if (!options.gridSpacingGiven)
        SET_GRID_SPACING(askSpacing("No grid spacing specified after -grid option.  Enter spacing in metres -> "));
}

void TAKE_OVER_TEMPLATE_GRID(RunCrs& crs) {
    templateGrid = {};
    const std::string& name = OPTIONS().likeGrid;
    if (name.empty()) return;
    if (hasOwnReader(name)) takeOverHeader(name, crs);
    else takeOverRaster(FIND_FILE(name).value_or(name), crs);
}

void CHOOSE_GRID(const Mesh& mesh, CoordinateKind coordinates) {
    const RunOptions& options = OPTIONS();
    if (!GIVEN(options, Family::Raster) || options.grid || templateGrid.grid.cellSize > 0.0) return;
    const bool degrees = IS_IN_DEGREES(mesh, coordinates);
    if (const std::optional<double> spacing = DEFAULT_SPACING(mesh, degrees)) return SET_GRID_SPACING(*spacing);
    SET_GRID_SPACING(askSpacing("No grid spacing specified for QELDRA -asc output.  Enter spacing in metres -> "));
}

Grid GRID_HEADER(const Mesh& mesh, bool cellCentred) {
    if (templateGrid.grid.cellSize > 0.0) return templateGrid.grid;
    return LAYOUT_GRID(mesh, OPTIONS().gridSpacing, cellCentred || OPTIONS().cellCentred);
}

std::uint64_t GRID_MEMORY(const RunOptions& options) {
    constexpr std::uint64_t WHEN_UNKNOWN = std::uint64_t{4} << 30;
    const std::uint64_t known = AVAILABLE_MEMORY();
    const std::uint64_t available = known == 0 ? WHEN_UNKNOWN : known;
    return options.gridMemory ? std::min(*options.gridMemory, available / 2) : available / 4;
}

std::array<double, 6> GRID_TRANSFORM(const Grid& grid) { return templateGrid.transform.value_or(GEO_TRANSFORM(grid)); }
