#include "run_control/grid_choice.h"

#include "inputs/mesh.h"
#include "raster/default_spacing.h"
#include "raster/external_grid.h"
#include "raster/grid_extent.h"
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

/// Asks until the answer is a number above zero.
double askSpacing(std::string_view prompt) {
    for (;;) {
        const std::string answer = ASK(prompt);
        double spacing = 0.0;
        if (FreeForm(answer).NEXT_REAL(spacing) == FreeForm::Read::Value && spacing > 0.0 && std::isfinite(spacing))
            return spacing;
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
    templateGrid = Grid{};
    if (!options.likeGrid.empty()) return takeOverTemplate(options);
    if (!options.grid) return;
    if (!options.raster() && !options.shp && !options.mif)
        STOP_RUN("ERROR - -grid option must only be specified with -asc, -shp or -mif option");
    if (!options.gridSpacingGiven)
        SET_GRID_SPACING(askSpacing("No grid spacing specified after -grid option.  Enter spacing in metres -> "));
}

void CHOOSE_GRID() {
    const RunOptions& options = OPTIONS();
    if (!options.raster() || options.grid || templateGrid.cellSize > 0.0) return;
    if (const std::optional<double> spacing = DEFAULT_SPACING(MESH())) return SET_GRID_SPACING(*spacing);
    SET_GRID_SPACING(askSpacing("No grid spacing specified for QELDRA -asc output.  Enter spacing in metres -> "));
}

Grid GRID_HEADER(bool cellCentred) {
    if (templateGrid.cellSize > 0.0) return templateGrid;
    return LAYOUT_GRID(MESH(), OPTIONS().gridSpacing, cellCentred || OPTIONS().cellCentred);
}
