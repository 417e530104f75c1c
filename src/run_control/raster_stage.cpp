#include "run_control/raster_stage.h"

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
        const PlanKind plan = kind.cellCentred ? PlanKind::Cells : PlanKind::Nodes;
        run_ = START_GRID(GRID_HEADER(mesh, kind.cellCentred), plan, kind);
    }

    void take(const Results& results, OutputLabel label) override {
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
        const GridPrecision precision = SET_OUTPUT_PRECISION(run_.grid);
        const std::string name = OUTPUT_NAME(label, format_.files);
        const std::string mainFile = name + std::string(format_.files.front());
        BEGIN_OUTPUT(mainFile);
        WRITE_GRID(format_.writer, name, run_.grid, precision, PROJECTION().prj);
        FINISH_OUTPUT(mainFile);
    }

    const OutputFormat& format_;
    VectorChoice choice_;
    const Mesh* mesh_ = nullptr;
    GridRun run_;  ///< from one output time to the next: the cells of each element are found once
};

}  // namespace

std::unique_ptr<OutputStage> MAKE_RASTER_STAGE(const OutputFormat& format, const RunOptions& options) {
    return std::make_unique<RasterStage>(format, options);
}
