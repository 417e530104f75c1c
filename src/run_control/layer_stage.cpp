#include "run_control/layer_stage.h"

#include "inputs/difference.h"
#include "run_control/gdal_layer_output.h"
#include "run_control/grid_choice.h"
#include "services/console.h"
#include "text_utils/text.h"
#include "vector_outputs/vector_output.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

constexpr double CAP_OF_VELOCITY_FILES = 10.0;

/// Results named after velocity vectors (x_V.dat) are capped unless -vmax says otherwise.
double arrowCap(const RunOptions& options) {
    if (!options.vmaxNotGiven) return std::max(static_cast<double>(options.vmax), 0.0);
    return LOWERCASE(TRIMF(options.inputFile)).ends_with("_v.dat") ? CAP_OF_VELOCITY_FILES : 0.0;
}

ArrowChoice arrowChoice(const OutputFormat& format, const RunOptions& options) {
    using Along = ArrowRules::Along;
    ArrowChoice choice;
    choice.along = options.vy ? Along::YAxis : options.vx ? Along::XAxis : Along::Flow;
    choice.slantAngle = options.slantAngle;
    choice.outlined = format.outlinedArrows;
    choice.scaleFactor = static_cast<double>(options.scaleFactor);
    if (options.fixedVectorLength) choice.fixedLength = static_cast<double>(options.vectorLength);
    choice.cap = arrowCap(options);
    choice.tailThickness = static_cast<double>(options.tailThicknessFactor);
    choice.thicknessPerCellSize = options.tailThicknessPerCellSize;
    choice.step = format.coordinateStep;
    return choice;
}

VectorColumns vectorColumns(const RunOptions& options) {
    if (options.vx) return VectorColumns::XComponent;
    if (options.vy) return VectorColumns::YComponent;
    return options.va || options.vdir ? VectorColumns::Direction : VectorColumns::All;
}

void checkSwitches(const OutputFormat& format, const RunOptions& options) {
    const PointTypes types = READ_POINT_TYPES(options.pointTypes);
    if (!types.unknown.empty())
        DMESSAGE("WARNING - Unknown point types \"" + types.unknown + "\" in -pts" + options.pointTypes +
                 " are ignored.");
    if (options.region && format.family == Family::Text) {
        DMESSAGE("WARNING - The -region option is ignored with -txt.");
        DROP_REGION();
    }
    if (options.region && options.grid) {
        DMESSAGE("WARNING - The -grid option is ignored with -region.");
        DROP_GRID();
    }
    const bool gridded = options.grid && !options.inputIsMesh;
    if (types.all || (!options.region && !gridded)) return;
    DMESSAGE("WARNING - The -pts option is ignored with " + std::string(options.region ? "-region." : "-grid."));
    DROP_POINT_TYPES();
}

class LayerStage : public OutputStage {
public:
    LayerStage(const OutputFormat& format, const RunOptions& options, const Projection& projection)
        : format_(format), options_(options), projection_(projection) {
        if (!format.driver.empty()) gdal_.emplace(format, options, projection);
    }

    void meshRead(const Mesh& mesh) override {
        if (READ_POINT_TYPES(options_.pointTypes).all) return;
        REPORT("Setting filter flags based on Zpt types: " + options_.pointTypes);
        Progress("Node: ").finish(mesh.nodeCount);
        REPORT("   Done");
    }

    /// Few objects come near this: a dozen columns of fifteen characters, and an outline of nine corners as text.
    DiskUse diskUse(const Mesh& mesh, const ResultsKind& kind, const Dataset& dataset) const override {
        constexpr double COLUMNS = 180.0, POINT = 60.0, OUTLINE = 420.0;  // bytes
        double objects = static_cast<double>(std::max(mesh.nodeCount, mesh.elementCount));
        if (options_.grid && !options_.inputIsMesh) {
            const Grid grid = GRID_HEADER(mesh, kind.cellCentred);
            objects = static_cast<double>(grid.ncols) * static_cast<double>(grid.nrows);
        }
        const bool outlines = options_.region || options_.vector;
        const double files = static_cast<double>(dataset.outputs) * (kind.difference && options_.region ? 2.0 : 1.0);
        return {files * objects * (COLUMNS + (outlines ? OUTLINE : POINT)), 0.0};
    }

    void begin(const Mesh& mesh, const ResultsKind& kind) override {
        std::optional<Grid> header;
        if (options_.grid) header = GRID_HEADER(mesh, kind.cellCentred);
        run_ = {};
        LayerChoice choice = LAYER_CHOICE(format_, options_);
        choice.coordinates = projection_.kind();
        if (gdal_) choice.target = &*gdal_;
        run_ = START_VECTOR_OUTPUTS(mesh, header ? &*header : nullptr, kind, choice);
    }

    void take(const Results& results, OutputLabel label) override {
        if (options_.grid) label.gridSize = run_.grid.run.grid.cellSize;
        const bool classes = results.parts != nullptr && options_.region;
        WRITE_RESULTS_LAYER(run_, results, nameOf(label, classes ? CLASS_ENDING : std::string_view{}));
    }

    void takeMesh(const Mesh& mesh, OutputLabel label) override {
        if (options_.grid) {
            DMESSAGE("WARNING - Grid option not supported when converting .2dm to .mif or .shp");
            REPORT("Use -asc output to convert elevations to a regular raster grid.");
            DROP_GRID();
        }
        begin(mesh, {});
        WRITE_MESH_LAYER(run_, nameOf(label));
    }

    void finish() override {
        if (gdal_) gdal_->finish();
    }

private:
    std::string nameOf(const OutputLabel& label, std::string_view beside = {}) {
        return gdal_ ? gdal_->next(label, beside) : OUTPUT_NAME(label, format_.files, beside);
    }

    const OutputFormat& format_;
    const RunOptions& options_;
    const Projection& projection_;
    std::optional<GdalLayerOutput> gdal_;
    VectorRun run_;
};

}  // namespace

LayerChoice LAYER_CHOICE(const OutputFormat& format, const RunOptions& options) {
    LayerChoice choice;
    choice.extension = format.files.front();
    choice.text = format.family == Family::Text;
    choice.coordinateStep = format.coordinateStep;
    choice.arrows = options.vector;
    choice.regions = options.region;
    choice.shown = {vectorColumns(options), options.compass, options.slantAngle, options.verbose};
    choice.arrow = arrowChoice(format, options);
    choice.pointTypes = READ_POINT_TYPES(options.pointTypes);
    choice.format = {options.precisionWidth, options.precisionDecimals};
    choice.cutoffDepth = static_cast<double>(options.cutoffDepth);
    choice.seconds = options.seconds;
    return choice;
}

std::unique_ptr<OutputStage> MAKE_LAYER_STAGE(const OutputFormat& format, const RunOptions& options,
                                              const Projection& projection) {
    checkSwitches(format, options);
    return std::make_unique<LayerStage>(format, options, projection);
}
