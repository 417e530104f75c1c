#include "vector_outputs/vector_output.h"

#include "gis/layers.h"
#include "inputs/coordinate_decimals.h"
#include "inputs/one_d_triangles.h"
#include "inputs/output_types.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "services/projection.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"
#include "vector_outputs/layer_writer.h"
#include "vector_outputs/text_points.h"

#include <algorithm>
#include <optional>
#include <span>

namespace {

constexpr double MIF_STEP = 1.0e-6;  ///< map units: coordinates are written with six decimals
constexpr double CAP_OF_VELOCITY_FILES = 10.0;

/// Results named after velocity vectors (x_V.dat) are capped unless -vmax says otherwise.
double defaultCap() { return LOWERCASE(TRIMF(OPTIONS().inputFile)).ends_with("_v.dat") ? CAP_OF_VELOCITY_FILES : 0.0; }

double arrowCellSize(const VectorRun& run) {
    if (run.gridded) return run.grid.run.grid.cellSize;
    const std::optional<double> size = MEDIAN_CELL_SIZE(*run.mesh);
    if (!size) STOP_RUN("ERROR - The mesh has no cells to scale arrows by.");
    REPORT("Arrow cell size = " + AREAL8(*size));
    return *size;
}

void startArrows(VectorRun& run) {
    run.arrows = ARROW_RULES(OPTIONS(), arrowCellSize(run), defaultCap());
    run.arrows.step = OPTIONS().mif ? MIF_STEP : 0.0;
    if (PROJECTION().geographic()) DMESSAGE("WARNING - Arrows are drawn in map units; use a projected mesh.");
}

void startLayerLibrary(const Mesh& mesh) {
    if (mesh.xmin <= mesh.xmax) gisSetExtent(mesh.xmin, mesh.ymin, mesh.xmax, mesh.ymax);
}

LayerKind layerOf(const VectorRun& run, const Results& results) {
    const RunOptions& options = OPTIONS();
    LayerKind kind;
    kind.content = results.vector ? LayerContent::Vector : LayerContent::Scalar;
    kind.items = run.gridded                             ? ItemKind::GridCell
                 : results.cellCentred || options.region ? ItemKind::Cell
                                                         : ItemKind::Node;
    kind.drawnAs = options.vector ? DrawnAs::Arrow : options.region ? DrawnAs::Region : DrawnAs::Point;
    kind.waterLevel = !results.vector && IS_WATER_LEVEL(results.quantity);
    return kind;
}

Cutoff cutoffOf(const VectorRun& run, const Results& results) {
    Cutoff cutoff;
    if (OPTIONS().txt || results.vector) return cutoff;
    if (IS_WATER_LEVEL(results.quantity)) cutoff.of = Cutoff::Of::WaterLevel;
    if (IS_DEPTH(results.quantity)) cutoff.of = Cutoff::Of::Depth;
    cutoff.depth = static_cast<double>(OPTIONS().cutoffDepth);
    cutoff.exemptNodes = run.oneDNodes;
    return cutoff;
}

/// The nodes or cells that may be written, numbered from 1. wet: empty when all are.
std::vector<std::uint8_t> chosenOf(const VectorRun& run, ItemKind items, std::span<const std::uint8_t> wet) {
    if (items == ItemKind::Cell) return WET_CELLS(*run.mesh, wet);
    std::vector<std::uint8_t> nodes = WET_NODES(*run.mesh, wet);
    for (std::size_t id = 1; id < nodes.size(); ++id)
        if (nodes[id] != 0 && !PASSES(run.pointTypes, run.mesh->nodes[id].kind)) nodes[id] = 0;
    return nodes;
}

/// The columns of the text file, less the kind of node and the bearing of a whole vector, which it does not carry.
std::vector<Column> textColumns(const LayerKind& kind) {
    RunOptions plain = OPTIONS();
    plain.verbose = false;
    std::vector<Column> columns = LAYER_COLUMNS(kind, plain);
    const bool wholeVector = std::find(columns.begin(), columns.end(), Column::Magnitude) != columns.end();
    std::erase_if(columns, [wholeVector](Column column) {
        return column == Column::PtType || column == Column::MatId || (wholeVector && column == Column::Bearing);
    });
    return columns;
}

void gridResults(VectorRun& run, const Results& results, const LayerKind& kind, ItemSource& source) {
    REPORT("Writing gridded .mif or .shp files...");
    GriddedValues& grid = run.grid;
    GRID_VALUES(grid, *run.mesh, results);
    if (kind.waterLevel || OPTIONS().verbose) GRID_BED(grid, *run.mesh, results);
    if (grid.materials.empty() && OPTIONS().verbose) GRID_MATERIALS(grid, *run.mesh);
    source.grid = &grid.run.grid;
    source.x = grid.x;
    if (results.vector) source.y = grid.y;
    source.bed = grid.bed;
    source.materials = grid.materials;
}

void write(const VectorRun& run, LayerJob& job, const std::string& valueName, const std::string& base) {
    const RunOptions& options = OPTIONS();
    const LayerKind& kind = job.source.kind;
    const Grid* grid = job.source.grid;
    const std::vector<Column> columns = options.txt ? textColumns(kind) : LAYER_COLUMNS(kind, options);
    job.record = RECORD_COLUMNS(columns, {options.precisionWidth, options.precisionDecimals}, valueName,
                                grid ? grid->nrows : 0, grid ? grid->ncols : 0);
    job.name = base + std::string(VECTOR_FILES().front());
    if (options.txt) return WRITE_TEXT_POINTS(job.name, job.source, job.record, run.coordinateDecimals);
    job.arrows = run.arrows;
    job.step = options.mif ? MIF_STEP : 0.0;
    WRITE_LAYER(job);
}

}  // namespace

bool IS_VECTOR_OUTPUT() { return OPTIONS().mif || OPTIONS().shp || OPTIONS().txt; }

std::vector<std::string_view> VECTOR_FILES() {
    if (OPTIONS().txt) return {".txt"};
    if (OPTIONS().mif) return {".mif", ".mid"};
    return {".shp", ".shx", ".dbf", ".prj", ".cpg"};
}

void CHECK_VECTOR_SWITCHES() {
    const RunOptions& options = OPTIONS();
    if (!IS_VECTOR_OUTPUT()) return;
    const PointTypes types = READ_POINT_TYPES(options.pointTypes);
    if (!types.unknown.empty())
        DMESSAGE("WARNING - Unknown point types \"" + types.unknown + "\" in -pts" + options.pointTypes +
                 " are ignored.");
    if (options.region && options.txt) {
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

void REPORT_POINT_FILTER(const Mesh& mesh) {
    if (!IS_VECTOR_OUTPUT() || READ_POINT_TYPES(OPTIONS().pointTypes).all) return;
    REPORT("Setting filter flags based on Zpt types: " + OPTIONS().pointTypes);
    Progress("Node: ").finish(mesh.nodeCount);
    REPORT("   Done");
}

VectorRun START_VECTOR_OUTPUTS(const Mesh& mesh, const Grid* header, bool vector, bool cellCentred, bool severalTimes) {
    const RunOptions& options = OPTIONS();
    VectorRun run;
    run.mesh = &mesh;
    run.pointTypes = READ_POINT_TYPES(options.pointTypes);
    run.oneDNodes = ONE_D_NODES(mesh);
    if (options.verbose) run.nodeMaterials = NODE_MATERIALS(mesh);
    if (cellCentred && !run.pointTypes.all) DMESSAGE("WARNING - The -pts option is ignored with cell centred results.");
    if (options.txt) {
        run.coordinateDecimals = COORDINATE_DECIMALS(mesh, PROJECTION().kind());
        return run;
    }
    startLayerLibrary(mesh);
    run.gridded = header != nullptr;
    if (run.gridded) run.grid = START_GRIDDED(*header, vector, cellCentred, severalTimes);
    if (vector && options.vector) startArrows(run);
    return run;
}

void WRITE_RESULTS_LAYER(VectorRun& run, const Results& results, const std::string& base) {
    if (OPTIONS().vector && !results.vector)
        return DMESSAGE("WARNING - " + results.quantity + " holds no vectors, no arrows are written.");
    if (OPTIONS().region && !results.cellCentred && !run.mesh->highResolution)
        STOP_RUN("ERROR - -region requires High Resolution or cell centred results.");
    LayerJob job;
    ItemSource& source = job.source;
    source.mesh = run.mesh;
    source.kind = layerOf(run, results);
    source.cutoff = cutoffOf(run, results);
    source.axes = TURNED_AXES(OPTIONS().slantAngle);
    source.time = SHOWN_TIME(results.time, OPTIONS().seconds);
    std::vector<std::uint8_t> chosen;
    if (run.gridded) {
        gridResults(run, results, source.kind, source);
    } else {
        chosen =
            chosenOf(run, source.kind.items,
                     results.cells > 0 ? std::span<const std::uint8_t>(results.wet) : std::span<const std::uint8_t>{});
        source.cellValues = results.cellCentred;
        source.x = results.x;
        if (results.vector) source.y = results.y;
        source.nodeMaterials = run.nodeMaterials;
        source.chosen = chosen;
    }
    write(run, job, results.quantity, base);
}

void WRITE_MESH_LAYER(VectorRun& run, const std::string& base) {
    if (OPTIONS().vector) DMESSAGE("WARNING - A mesh alone holds no vectors, its nodes are written as points.");
    LayerJob job;
    job.source.mesh = run.mesh;
    if (OPTIONS().region) job.source.kind = {LayerContent::Bed, ItemKind::Cell, DrawnAs::Region, false};
    const std::vector<std::uint8_t> chosen = chosenOf(run, job.source.kind.items, {});
    job.source.chosen = chosen;
    job.source.nodeMaterials = run.nodeMaterials;
    write(run, job, {}, base);
}
