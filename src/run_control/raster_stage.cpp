#include "run_control/raster_stage.h"

#include "inputs/difference_report.h"
#include "raster/grid_difference.h"
#include "raster/grid_writer.h"
#include "raster/mesh_to_grid.h"
#include "run_control/grid_choice.h"
#include "services/files.h"

#include <string>

namespace {

class RasterStage : public OutputStage {
public:
    RasterStage(const OutputFormat& format, const RunOptions& options)
        : format_(format), choice_(VECTOR_CHOICE(options)) {}

    void begin(const Mesh& mesh, const ResultsKind& kind) override {
        mesh_ = &mesh;
        run_ = {};
        was_ = {};
        const PlanKind plan = PLAN_KIND(kind.cellCentred, kind.cornersOnly);
        run_ = START_GRID(GRID_HEADER(mesh, kind.cellCentred), plan, kind);
    }

    void take(const Results& results, OutputLabel label) override {
        if (results.parts != nullptr) return takeDifference(*results.parts, std::move(label));
        GRID_RESULTS(run_, *mesh_, results, choice_);
        write(std::move(label));
    }

    void takeMesh(const Mesh& mesh, OutputLabel label) override {
        run_ = START_GRID(GRID_HEADER(mesh, false), PlanKind::Corners, {});
        GRID_BATHYMETRY(run_, mesh);
        write(std::move(label));
    }

private:
    void write(OutputLabel label) {
        label.gridSize = run_.grid.cellSize;
        writeGrid(run_.grid, OUTPUT_NAME(label, format_.files), SET_OUTPUT_PRECISION(run_.grid));
    }

    void writeGrid(const Grid& grid, const std::string& name, GridPrecision precision) {
        const std::string mainFile = name + std::string(format_.files.front());
        BEGIN_OUTPUT(mainFile);
        WRITE_GRID(format_.writer, name, grid, precision, PROJECTION().prj);
        FINISH_OUTPUT(mainFile);
    }

    /// The difference, and beside it the classes: where it is wet in both, and where only now or no longer.
    void takeDifference(const DifferenceParts& parts, OutputLabel label) {
        constexpr GridPrecision WHOLE_NUMBERS = {10, 0};
        const GridChanges changes = GRID_DIFFERENCE(run_, was_, *mesh_, parts, choice_);
        label.gridSize = run_.grid.cellSize;
        const std::string name = OUTPUT_NAME(label, format_.files, CLASS_ENDING);
        writeGrid(run_.grid, name, SET_OUTPUT_PRECISION(run_.grid));
        writeGrid(was_.run.grid, name + std::string(CLASS_ENDING), WHOLE_NUMBERS);
        const double cellArea = run_.grid.cellSize * run_.grid.cellSize;
        REPORT_DIFFERENCE(run_.grid.values, {static_cast<double>(changes.nowWet) * cellArea,
                                             static_cast<double>(changes.nowDry) * cellArea, parts.degrees});
    }

    const OutputFormat& format_;
    VectorChoice choice_;
    const Mesh* mesh_ = nullptr;
    GridRun run_;  ///< from one output time to the next: the cells of each element are found once
    GridWas was_;  ///< of a difference
};

}  // namespace

std::unique_ptr<OutputStage> MAKE_RASTER_STAGE(const OutputFormat& format, const RunOptions& options) {
    return std::make_unique<RasterStage>(format, options);
}
