#include "run_control/raster_stage.h"

#include "inputs/difference.h"
#include "inputs/difference_report.h"
#include "raster/grid_difference.h"
#include "raster/grid_writer.h"
#include "raster/mesh_to_grid.h"
#include "run_control/geotiff_output.h"
#include "run_control/grid_choice.h"
#include "services/files.h"

#include <optional>
#include <string>
#include <vector>

namespace {

class RasterStage : public OutputStage {
public:
    RasterStage(const OutputFormat& format, const RunOptions& options, const Projection& projection)
        : format_(format), projection_(projection), choice_(VECTOR_CHOICE(options)) {
        if (format.driver.empty()) return;
        geoTiff_.emplace(options, projection);
        classTiff_.emplace(options, projection);
    }

    void begin(const Mesh& mesh, const ResultsKind& kind) override {
        mesh_ = &mesh;
        run_ = {};
        was_ = {};
        const PlanKind plan = PLAN_KIND(kind.cellCentred, kind.cornersOnly);
        run_ = START_GRID(GRID_HEADER(mesh, kind.cellCentred), plan, kind);
    }

    void take(const Results& results, OutputLabel label) override {
        if (results.parts != nullptr) return takeDifference(*results.parts, std::move(label), results.times);
        GRID_RESULTS(run_, *mesh_, results, choice_);
        write(std::move(label), results.times);
    }

    void takeMesh(const Mesh& mesh, OutputLabel label) override {
        run_ = START_GRID(GRID_HEADER(mesh, false), PlanKind::Corners, {});
        GRID_BATHYMETRY(run_, mesh);
        if (label.quantity.empty()) label.quantity = "Bathymetry";
        write(std::move(label), {});
    }

    void finish() override {
        if (!geoTiff_) return;
        geoTiff_->finish();
        classTiff_->finish();
    }

private:
    void write(OutputLabel label, const std::vector<OutputTime>& times) {
        label.gridSize = run_.grid.cellSize;
        if (geoTiff_) return geoTiff_->take(run_.grid, label, times);
        writeGrid(run_.grid, OUTPUT_NAME(label, format_.files), SET_OUTPUT_PRECISION(run_.grid));
    }

    void writeGrid(const Grid& grid, const std::string& name, GridPrecision precision) {
        const std::string mainFile = name + std::string(format_.files.front());
        BEGIN_OUTPUT(mainFile);
        WRITE_GRID(format_.writer, name, grid, precision, projection_.prj);
        FINISH_OUTPUT(mainFile);
    }

    /// The difference, and beside it the classes: where it is wet in both, and where only now or no longer.
    void takeDifference(const DifferenceParts& parts, OutputLabel label, const std::vector<OutputTime>& times) {
        constexpr GridPrecision WHOLE_NUMBERS = {10, 0};
        const GridChanges changes = GRID_DIFFERENCE(run_, was_, *mesh_, parts, choice_);
        label.gridSize = run_.grid.cellSize;
        if (geoTiff_) {
            geoTiff_->take(run_.grid, label, times, CLASS_ENDING);
            label.quantity = "Class";
            classTiff_->take(was_.run.grid, label, times, {}, geoTiff_->stem() + std::string(CLASS_ENDING));
        } else {
            const std::string name = OUTPUT_NAME(label, format_.files, CLASS_ENDING);
            writeGrid(run_.grid, name, SET_OUTPUT_PRECISION(run_.grid));
            writeGrid(was_.run.grid, name + std::string(CLASS_ENDING), WHOLE_NUMBERS);
        }
        const double cellArea = run_.grid.cellSize * run_.grid.cellSize;
        REPORT_DIFFERENCE(run_.grid.values, {static_cast<double>(changes.nowWet) * cellArea,
                                             static_cast<double>(changes.nowDry) * cellArea, parts.degrees});
    }

    const OutputFormat& format_;
    const Projection& projection_;
    VectorChoice choice_;
    std::optional<GeoTiffOutput> geoTiff_, classTiff_;  ///< of a format that GDAL writes; the classes of a difference
    const Mesh* mesh_ = nullptr;
    GridRun run_;  ///< from one output time to the next: the cells of each element are found once
    GridWas was_;  ///< of a difference
};

}  // namespace

std::unique_ptr<OutputStage> MAKE_RASTER_STAGE(const OutputFormat& format, const RunOptions& options,
                                               const Projection& projection) {
    return std::make_unique<RasterStage>(format, options, projection);
}
