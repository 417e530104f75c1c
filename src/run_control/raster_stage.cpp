#include "run_control/raster_stage.h"

#include "inputs/difference.h"
#include "inputs/difference_report.h"
#include "raster/grid_difference.h"
#include "raster/grid_writer.h"
#include "raster/mesh_to_grid.h"
#include "run_control/geotiff_output.h"
#include "run_control/grid_choice.h"
#include "run_control/grid_write_behind.h"
#include "services/files.h"
#include "services/workers.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

std::optional<GridPrecision> givenPrecision(const RunOptions& options) {
    if (!options.precisionGiven) return {};
    return GridPrecision{options.precisionWidth, options.precisionDecimals};
}

class RasterStage : public OutputStage {
public:
    RasterStage(const OutputFormat& format, const RunOptions& options, const Projection& projection)
        : format_(format), options_(options), projection_(projection), choice_(VECTOR_CHOICE(options)) {
        if (format.driver.empty()) return;
        geoTiff_.emplace(options, projection);
        classTiff_.emplace(options, projection);
    }

    DiskUse diskUse(const Mesh& mesh, const ResultsKind& kind, const Dataset& dataset) const override {
        const Grid grid = GRID_HEADER(mesh, kind.cellCentred);
        const double grids = static_cast<double>(dataset.outputs) * (kind.difference ? 2.0 : 1.0);
        const double values = grids * static_cast<double>(grid.ncols) * static_cast<double>(grid.nrows);
        if (format_.bytesOfValue) {
            const ValueBytes bytes = format_.bytesOfValue(options_);
            return {values * bytes.most, values * bytes.least};
        }
        constexpr double WITH_OVERVIEWS = 4.0 / 3.0;
        return {values * sizeof(float) * WITH_OVERVIEWS, 0.0};
    }

    void begin(const Mesh& mesh, const ResultsKind& kind) override {
        behind_.finish();
        mesh_ = &mesh;
        run_ = {};
        was_ = {};
        const PlanKind plan = PLAN_KIND(kind.cellCentred, kind.cornersOnly);
        // A difference has two grids, and tables of where each is dry.
        const std::uint64_t limit = GRID_MEMORY(options_) / (kind.difference ? 3 : 1);
        run_ = START_GRID(GRID_HEADER(mesh, kind.cellCentred), plan, kind, limit);
        const std::uint64_t bytes = CELL_COUNT(run_.grid) * sizeof(float);
        writesBehind_ = format_.writeBehind != nullptr && kind.severalTimes && JOBS() > 1 && run_.bandRows == 0 &&
                        bytes <= limit / 2;
    }

    void take(const Results& results, OutputLabel label) override {
        if (results.parts != nullptr) return takeDifference(*results.parts, std::move(label), results.times);
        GRID_RESULTS(run_, *mesh_, results, choice_);
        write(*mesh_, std::move(label), results.times);
    }

    void takeMesh(const Mesh& mesh, OutputLabel label) override {
        run_ = START_GRID(GRID_HEADER(mesh, false), PlanKind::Corners, {}, GRID_MEMORY(options_));
        GRID_BATHYMETRY(run_, mesh);
        if (label.quantity.empty()) label.quantity = "Bathymetry";
        write(mesh, std::move(label), {});
    }

    void finish() override {
        behind_.finish();
        if (!geoTiff_) return;
        geoTiff_->finish();
        classTiff_->finish();
    }

private:
    void write(const Mesh& mesh, OutputLabel label, const std::vector<OutputTime>& times) {
        behind_.finish();
        const GridBands grid = BANDS_OF(run_, mesh);
        label.gridSize = run_.grid.cellSize;
        if (geoTiff_) return geoTiff_->take(grid, label, times);
        const GridPrecision precision = SET_OUTPUT_PRECISION(grid, givenPrecision(options_));
        const std::string name = OUTPUT_NAME(label, format_.files);
        if (writesBehind_ && behind_.makeRoom(1, run_.grid.values.size())) return writeBehind({{name, &run_.grid}});
        writeGrid(grid, name, precision);
    }

    using NamedGrids = std::vector<std::pair<std::string, Grid*>>;

    void writeBehind(const NamedGrids& grids) {
        std::vector<GridUnderWay> underWay;
        std::vector<std::string> names;
        for (const auto& [name, grid] : grids) BEGIN_OUTPUT(mainFileOf(name));
        for (const auto& [name, grid] : grids) {
            underWay.push_back({format_.writeBehind(name, *grid), grid});
            names.push_back(name);
        }
        behind_.begin(std::move(underWay), [this, names] {
            for (const std::string& name : names) WRITE_GRID_PROJECTION(name, projection_.prj);
            for (const std::string& name : names) FINISH_OUTPUT(mainFileOf(name));
        });
    }

    void writeGrid(const GridBands& grid, const std::string& name, GridPrecision precision) {
        BEGIN_OUTPUT(mainFileOf(name));
        WRITE_GRID(format_.writer, name, grid, precision, projection_.prj);
        FINISH_OUTPUT(mainFileOf(name));
    }

    std::string mainFileOf(const std::string& name) const { return name + std::string(format_.files.front()); }

    /// Neither comes to its place before both are whole.
    void writeBoth(const GridDifference& difference, const std::string& name) {
        behind_.finish();
        constexpr GridPrecision WHOLE_NUMBERS = {10, 0};
        const std::string classes = name + std::string(CLASS_ENDING);
        const GridPrecision precision = SET_OUTPUT_PRECISION(difference.values, givenPrecision(options_));
        if (writesBehind_ && behind_.makeRoom(2, run_.grid.values.size()))
            return writeBehind({{name, &run_.grid}, {classes, &was_.run.grid}});
        for (const std::string& grid : {name, classes}) BEGIN_OUTPUT(mainFileOf(grid));
        WRITE_GRID(format_.writer, name, difference.values, precision, projection_.prj);
        WRITE_GRID(format_.writer, classes, difference.classes, WHOLE_NUMBERS, projection_.prj);
        for (const std::string& grid : {name, classes}) FINISH_OUTPUT(mainFileOf(grid));
    }

    /// The difference, and beside it the classes: where it is wet in both, and where only now or no longer.
    void takeDifference(const DifferenceParts& parts, OutputLabel label, const std::vector<OutputTime>& times) {
        const GridDifference difference = GRID_DIFFERENCE(run_, was_, *mesh_, parts, choice_);
        const double cellArea = run_.grid.cellSize * run_.grid.cellSize;
        const Statistics statistics =
            STATISTICS_OF({CELL_COUNT(run_.grid), [&](const auto& takeStretch) {
                               FROM_SOUTH(difference.values, [&] { takeStretch(run_.grid.values); });
                           }});
        label.gridSize = run_.grid.cellSize;
        if (geoTiff_) {
            geoTiff_->take(difference.values, label, times, CLASS_ENDING);
            label.quantity = "Class";
            classTiff_->take(difference.classes, label, times, {}, geoTiff_->stem() + std::string(CLASS_ENDING));
        } else {
            writeBoth(difference, OUTPUT_NAME(label, format_.files, CLASS_ENDING));
        }
        REPORT_DIFFERENCE(statistics, {static_cast<double>(difference.changes.nowWet) * cellArea,
                                       static_cast<double>(difference.changes.nowDry) * cellArea, parts.degrees});
    }

    const OutputFormat& format_;
    const RunOptions& options_;
    const Projection& projection_;
    VectorChoice choice_;
    std::optional<GeoTiffOutput> geoTiff_, classTiff_;  ///< of a format that GDAL writes; the classes of a difference
    const Mesh* mesh_ = nullptr;
    GridRun run_;  ///< from one output time to the next: the cells of each element are found once
    GridWas was_;  ///< of a difference
    bool writesBehind_ = false;
    GridWriteBehind behind_;
};

}  // namespace

std::unique_ptr<OutputStage> MAKE_RASTER_STAGE(const OutputFormat& format, const RunOptions& options,
                                               const Projection& projection) {
    return std::make_unique<RasterStage>(format, options, projection);
}
