#include "vector_outputs/vector_output.h"

#include "gis/layers.h"
#include "inputs/coordinate_decimals.h"
#include "inputs/difference_report.h"
#include "inputs/one_d_triangles.h"
#include "inputs/output_types.h"
#include "inputs/wet_mesh.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/output_time.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"
#include "vector_outputs/cell_difference.h"
#include "vector_outputs/layer_writer.h"
#include "vector_outputs/text_points.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

namespace {

double arrowCellSize(const VectorRun& run) {
    if (run.gridded) return run.grid.run.grid.cellSize;
    const std::optional<double> size = MEDIAN_CELL_SIZE(*run.mesh);
    if (!size) STOP_RUN("ERROR - The mesh has no cells to scale arrows by.");
    REPORT("Arrow cell size = " + AREAL8(*size));
    return *size;
}

LayerKind layerOf(const VectorRun& run, const Results& results) {
    LayerKind kind;
    kind.content = results.vector ? LayerContent::Vector : LayerContent::Scalar;
    kind.items = run.gridded                                 ? ItemKind::GridCell
                 : results.cellCentred || run.choice.regions ? ItemKind::Cell
                                                             : ItemKind::Node;
    kind.drawnAs = run.choice.arrows ? DrawnAs::Arrow : run.choice.regions ? DrawnAs::Region : DrawnAs::Point;
    kind.waterLevel = !results.vector && results.parts == nullptr && IS_WATER_LEVEL(results.quantity);
    return kind;
}

Cutoff cutoffOf(const VectorRun& run, const Results& results) {
    Cutoff cutoff;
    if (run.choice.text || results.vector || results.parts != nullptr) return cutoff;
    if (IS_WATER_LEVEL(results.quantity)) cutoff.of = Cutoff::Of::WaterLevel;
    if (IS_DEPTH(results.quantity)) cutoff.of = Cutoff::Of::Depth;
    cutoff.depth = run.choice.cutoffDepth;
    cutoff.exemptNodes = run.oneDNodes;
    return cutoff;
}

/// The nodes or cells that may be written, numbered from 1. wet: empty when all are.
std::vector<std::uint8_t> chosenOf(const VectorRun& run, ItemKind items, std::span<const std::uint8_t> wet) {
    if (items == ItemKind::Cell) return WET_CELLS(*run.mesh, wet);
    std::vector<std::uint8_t> nodes = WET_NODES(*run.mesh, wet);
    for (std::size_t id = 1; id < nodes.size(); ++id)
        if (nodes[id] != 0 && !PASSES(run.choice.pointTypes, run.mesh->nodes[id].kind)) nodes[id] = 0;
    return nodes;
}

/// The columns of the text file, less the kind of node and the bearing of a whole vector, which it does not carry.
std::vector<Column> textColumns(const LayerKind& kind, ShownColumns plain) {
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
    if (kind.waterLevel || run.choice.shown.verbose) GRID_BED(grid, *run.mesh, results);
    if (grid.materials.empty() && run.choice.shown.verbose) GRID_MATERIALS(grid, *run.mesh);
    source.grid = &grid.run.grid;
    source.x = grid.x;
    if (results.vector) source.y = grid.y;
    source.bed = grid.bed;
    source.materials = grid.materials;
}

void write(const VectorRun& run, LayerJob& job, const std::string& valueName, const std::string& base) {
    const LayerChoice& choice = run.choice;
    const LayerKind& kind = job.source.kind;
    const Grid* grid = job.source.grid;
    const std::vector<Column> columns =
        choice.text ? textColumns(kind, choice.shown) : LAYER_COLUMNS(kind, choice.shown);
    const bool wholeValues = job.record.wholeValues;
    job.record = RECORD_COLUMNS(columns, choice.format, valueName, grid ? grid->nrows : 0, grid ? grid->ncols : 0);
    job.record.wholeValues = wholeValues;
    job.name = base + choice.extension;
    if (choice.text) return WRITE_TEXT_POINTS(job.name, job.source, job.record, run.coordinateDecimals, job.written);
    job.arrows = run.arrows;
    job.step = choice.coordinateStep;
    if (choice.target != nullptr) return HAND_OVER_LAYER(job, *choice.target);
    WRITE_LAYER(job);
}

/// One layer. job: what is not the rule.
void writeResults(VectorRun& run, const Results& results, const std::string& base, LayerJob job = {}) {
    ItemSource& source = job.source;
    source.mesh = run.mesh;
    source.kind = layerOf(run, results);
    source.cutoff = cutoffOf(run, results);
    source.axes = TURNED_AXES(run.choice.shown.slantAngle);
    source.time = SHOWN_TIME(results.time, run.choice.seconds);
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

/// The layer, and what there is to say of its values.
void writeDifference(VectorRun& run, const Results& results, const std::string& base) {
    std::vector<float> written;
    LayerJob job;
    job.written = &written;
    writeResults(run, results, base, std::move(job));
    ChangedAreas areas = CHANGED_AREAS(*run.mesh, *results.parts);
    if (run.gridded) {
        const double cellArea = run.grid.run.grid.cellSize * run.grid.run.grid.cellSize;
        areas.nowWet = static_cast<double>(run.grid.changes.nowWet) * cellArea;
        areas.nowDry = static_cast<double>(run.grid.changes.nowDry) * cellArea;
    }
    REPORT_DIFFERENCE(written, areas);
}

}  // namespace

VectorRun START_VECTOR_OUTPUTS(const Mesh& mesh, const Grid* header, const ResultsKind& kind,
                               const LayerChoice& choice) {
    VectorRun run;
    run.mesh = &mesh;
    run.choice = choice;
    run.oneDNodes = ONE_D_NODES(mesh);
    if (choice.shown.verbose) run.nodeMaterials = NODE_MATERIALS(mesh);
    if (kind.cellCentred && !choice.pointTypes.all)
        DMESSAGE("WARNING - The -pts option is ignored with cell centred results.");
    if (choice.text) {
        run.coordinateDecimals = COORDINATE_DECIMALS(mesh, choice.coordinates);
        return run;
    }
    if (mesh.xmin <= mesh.xmax) gisSetExtent(mesh.xmin, mesh.ymin, mesh.xmax, mesh.ymax);
    run.gridded = header != nullptr;
    if (run.gridded) run.grid = START_GRIDDED(*header, kind);
    if (!kind.vector || !choice.arrows) return run;
    run.arrows = ARROW_RULES(choice.arrow, arrowCellSize(run));
    if (choice.coordinates == CoordinateKind::Geographic)
        DMESSAGE("WARNING - Arrows are drawn in map units; use a projected mesh.");
    return run;
}

void WRITE_RESULTS_LAYER(VectorRun& run, const Results& results, const std::string& base) {
    if (run.choice.arrows && !results.vector)
        return DMESSAGE("WARNING - " + results.quantity + " holds no vectors, no arrows are written.");
    if (run.choice.regions && !results.cellCentred && !results.cornersOnly && !run.mesh->highResolution)
        STOP_RUN("ERROR - -region requires High Resolution or cell centred results.");
    if (results.parts == nullptr) return writeResults(run, results, base);
    if (!run.choice.regions) return writeDifference(run, results, base);
    const DifferenceParts cells = CELL_PARTS(*run.mesh, *results.parts);
    writeDifference(run, CELL_DIFFERENCE(*run.mesh, cells), base);
    LayerJob classes;
    classes.record.wholeValues = true;
    writeResults(run, CLASS_RESULTS(*run.mesh, cells), base + std::string(CLASS_ENDING), std::move(classes));
}

void WRITE_MESH_LAYER(VectorRun& run, const std::string& base) {
    if (run.choice.arrows) DMESSAGE("WARNING - A mesh alone holds no vectors, its nodes are written as points.");
    LayerJob job;
    job.source.mesh = run.mesh;
    if (run.choice.regions) job.source.kind = {LayerContent::Bed, ItemKind::Cell, DrawnAs::Region, false};
    const std::vector<std::uint8_t> chosen = chosenOf(run, job.source.kind.items, {});
    job.source.chosen = chosen;
    job.source.nodeMaterials = run.nodeMaterials;
    write(run, job, {}, base);
}
