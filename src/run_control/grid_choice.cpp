#include "run_control/grid_choice.h"

#include "inputs/mesh.h"
#include "inputs/mesh_degrees.h"
#include "raster/default_spacing.h"
#include "raster/external_grid.h"
#include "raster/grid_extent.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "services/projection.h"
#include "text_utils/free_form.h"

#include <cmath>
#include <optional>
#include <string>

namespace {

Grid templateGrid;

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

void takeOverTemplate(const RunOptions& options) {
    const ExternalGrid external = READ_EXTERNAL_GRID_HEADER(options.likeGrid);
    templateGrid = external.grid;
    if (!external.projection.empty()) SET_PRJ(external.projection);
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

void TAKE_OVER_TEMPLATE_GRID() {
    templateGrid = Grid{};
    if (!OPTIONS().likeGrid.empty()) takeOverTemplate(OPTIONS());
}

void CHOOSE_GRID(const Mesh& mesh) {
    const RunOptions& options = OPTIONS();
    if (!GIVEN(options, Family::Raster) || options.grid || templateGrid.cellSize > 0.0) return;
    const bool degrees = IS_IN_DEGREES(mesh, PROJECTION().kind());
    if (const std::optional<double> spacing = DEFAULT_SPACING(mesh, degrees)) return SET_GRID_SPACING(*spacing);
    SET_GRID_SPACING(askSpacing("No grid spacing specified for QELDRA -asc output.  Enter spacing in metres -> "));
}

Grid GRID_HEADER(const Mesh& mesh, bool cellCentred) {
    if (templateGrid.cellSize > 0.0) return templateGrid;
    return LAYOUT_GRID(mesh, OPTIONS().gridSpacing, cellCentred || OPTIONS().cellCentred);
}
