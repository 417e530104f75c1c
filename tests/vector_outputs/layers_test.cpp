// Which objects a layer holds, and what stands beside them: small meshes written as .mif and .txt.
#include "vector_outputs/vector_output.h"

#include "gis/layers.h"
#include "inputs/one_d_triangles.h"
#include "raster/lattice_mesh.h"
#include "run_control/layer_stage.h"
#include "run_control/read_switches.h"
#include "services/files.h"
#include "services/options.h"
#include "services/projection.h"
#include "testing.h"

namespace {

constexpr float MISSING = -99999.0F;

/// Two quads side by side (cells 1 and 2, 10 m, material = number) over a bed z = x / 10, and a 1D triangle (cell 3)
/// apart from them. Nodes 1 2 3 / 4 5 6 from the south-west, 7 8 9 the triangle's, 10 unused.
Mesh smallMesh() {
    Mesh mesh = meshOf({{0, 0}, {10, 0}, {20, 0}, {0, 10}, {10, 10}, {20, 10}, {50, 0}, {60, 0}, {50, 10}, {90, 90}},
                       {{1, 2, 5, 4}, {2, 3, 6, 5}, {7, 8, 9}});
    for (std::size_t id = 1; id <= 10; ++id) {
        mesh.nodes[id].z = static_cast<float>(mesh.nodes[id].x) / 10.0F;
        mesh.nodes[id].kind = {id <= 6 ? 'H' : id <= 9 ? 'T' : ' ', ' '};
    }
    for (std::int32_t id = 1; id <= 3; ++id) mesh.elements[static_cast<std::size_t>(id)].material = id;
    mesh.oneD = ONE_D_TRIANGLES(mesh);
    return mesh;
}

Results resultsOf(const char* quantity, std::vector<float> x, std::vector<std::uint8_t> wet, bool cellCentred = false) {
    Results results;
    results.quantity = quantity;
    results.nodes = static_cast<std::int32_t>(x.size()) - 1;
    results.cells = 3;
    results.cellCentred = cellCentred;
    results.x = std::move(x);
    results.wet = std::move(wet);
    results.time = {2.5};
    return results;
}

class Run {
public:
    explicit Run(const std::string& switches) {
        INITIALISE_FILES();
        gisInitialise();
        readSwitches(wordsOf(switches));
        OPTIONS_TO_FILL().inputFile = folder_.name("x_h.dat");
    }
    ~Run() { INITIALISE_OPTIONS(); }

    static LayerChoice choice() { return LAYER_CHOICE(OUTPUT_FORMAT(OPTIONS()), OPTIONS()); }
    static VectorRun start(const Mesh& mesh, const Grid* header, const ResultsKind& kind) {
        return START_VECTOR_OUTPUTS(mesh, header, kind, choice());
    }
    /// The lines of the table, ";" behind each, of one output time; what was said on the console is kept.
    std::string tableOf(const Mesh& mesh, const Results& results) {
        said = consoleOf([&] {
            VectorRun run = start(mesh, nullptr, {results.vector, results.cellCentred, false});
            WRITE_RESULTS_LAYER(run, results, folder_.name("out"));
        });
        return lines(choice().text ? "out.txt" : "out.mid");
    }
    std::string tableOf(const Mesh& mesh) {
        said = consoleOf([&] {
            VectorRun run = start(mesh, nullptr, {});
            WRITE_MESH_LAYER(run, folder_.name("out"));
        });
        return lines("out.mid");
    }
    std::string tableOf(VectorRun& run, const Results& results) {
        said = consoleOf([&] { WRITE_RESULTS_LAYER(run, results, folder_.name("out")); });
        return lines("out.mid");
    }
    std::string lines(const char* file) const {
        std::string text = folder_.read(file);
        for (char& c : text) c = c == '\n' ? ';' : c;
        return text;
    }
    std::string said;

private:
    TemporaryFolder folder_;
};

}  // namespace

TEST_CASE("Nodes are written where a wet element uses them and they hold a value") {
    const std::vector<float> levels = {
        0, 5, 5, MISSING, 5, 1.005F, std::nanf(""), 5, std::numeric_limits<float>::infinity(), 5, 5};
    const Mesh mesh = smallMesh();
    Run run("-mif -prec8.1");
    // Node 5 is 5 mm deep, nodes 3, 6 and 8 hold nothing, node 10 belongs to nothing.
    CHECK(run.tableOf(mesh, resultsOf("Water Level", levels, {0, 1, 1, 1})) ==
          // 1D nodes: no cutoff
          "1,\"H\",0.0,5.0,5.0;2,\"H\",1.0,5.0,4.0;4,\"H\",0.0,5.0,5.0;7,\"T\",5.0,5.0,0.0;9,\"T\",5.0,5.0,0.0;");
    CHECK(holds(run.said, "\n5 objects written.\n"));
    CHECK(run.tableOf(mesh, resultsOf("Water Level", levels, {0, 0, 1, 0})) == "2,\"H\",1.0,5.0,4.0;");
    CHECK(run.tableOf(mesh, resultsOf("h", levels, {0, 0, 0, 0})).empty());
    CHECK(holds(run.said, "WARNING - No wet points to output at this time."));
    Mesh cut = mesh;
    cut.elements[1].removed = true;
    // no level: no depth, no cutoff
    CHECK(run.tableOf(cut, resultsOf("Froude No", levels, {0, 1, 1, 0})) == "2,\"H\",1.0,5.0;5,\"H\",1.0,1.0;");
    CHECK(run.tableOf(mesh, resultsOf("Depth", {0, 0.009F, 0.01F, 1, 0.02F, 1, 1, 0.001F, 1, 1, 1}, {0, 1, 0, 1})) ==
          "2,\"H\",1.0,0.0;4,\"H\",0.0,0.0;5,\"H\",1.0,1.0;7,\"T\",5.0,0.0;8,\"T\",6.0,1.0;9,\"T\",5.0,1.0;");
    Mesh snapped = mesh;
    snapped.elements[3].nodes = {6, 8, 9};  // the quad's corner keeps its cutoff
    CHECK(run.tableOf(snapped, resultsOf("Depth", {0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1}, {0, 1, 1, 1})) ==
          "8,\"T\",6.0,0.0;9,\"T\",5.0,1.0;");

    Run filtered("-mif -ptsT -prec8.1 -verbose -sec");
    CHECK(filtered.tableOf(mesh, resultsOf("Water Level", levels, {0, 1, 1, 1})) ==
          "7,\"T\",5.0,5.0,0.0,3,9000.0;9,\"T\",5.0,5.0,0.0,3,9000.0;");

    Run text("-txt");
    CHECK(
        text.tableOf(mesh, resultsOf("Water Level", levels, {0, 1, 0, 0})) ==
        "SMS_ID,X,Y,Elevation,Water_Level,Depth;1,0.000,0.000,0.0000,5.0000,5.0000;2,10.000,0.000,1.0000,5.0000,4.0000;"
        "4,0.000,10.000,0.0000,5.0000,5.0000;5,10.000,10.000,1.0000,1.0050,0.0050;");  // no cutoff
}

TEST_CASE("Cells are written as points at their centroids or as regions, 1D triangles never") {
    const Mesh mesh = smallMesh();
    Run points("-mif -prec8.1");
    CHECK(points.tableOf(mesh, resultsOf("Water Level", {0, 3, 4, 5}, {0, 1, 1, 1}, true)) ==
          "1,1,0.5,3.0,2.5;2,2,1.5,4.0,2.5;");
    CHECK(points.lines("out.mif").ends_with(
        "Data;Point         5.000000        5.000000;Point        15.000000        5.000000;"));
    Mesh allTwoD = mesh;  // as with -no1d
    allTwoD.oneD.clear();
    CHECK(points.tableOf(allTwoD, resultsOf("Water Level", {0, 3, 4, 5.4F}, {0, 1, 1, 1}, true))
              .ends_with(";3,3,5.3,5.4,0.1;"));
    // 5 mm deep; missing
    CHECK(points.tableOf(mesh, resultsOf("Water Level", {0, 0.505F, MISSING, 5}, {0, 1, 1, 1}, true)).empty());

    Run regions("-mif -region -prec8.1");
    CHECK(regions.tableOf(mesh) == "1,1,0.5;2,2,1.5;");
    Mesh crossed = mesh;
    crossed.elements[1].nodes = {1, 5, 2, 4};
    CHECK(regions.tableOf(crossed) == "2,2,1.5;");
    CHECK(holds(regions.said, "WARNING - 1 cells would not be valid polygons"));
    CHECK_FALSE(
        holds(regions.tableOf(mesh, resultsOf("Depth", {0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, {0, 1, 1, 1})), "ERROR"));
    CHECK(regions.said.ends_with(
        "ERROR - -region requires High Resolution or cell centred results.\n\nPress Enter to Close\n<stopped>"));

    // A 9-node quad: the value and the place of its centre node, the ring of its corners.
    Mesh nine = mesh;
    nine.highResolution = true;
    nine.elements[1].shape = 9;
    nine.elements[1].nodes = {1, 3, 6, 4, 2, 6, 5, 4, 9};
    nine.elements[3].shape = 0;
    CHECK(regions.tableOf(nine, resultsOf("Depth", {0, 1, 2, 3, 4, 5, 6, 1, 1, 9, 1}, {0, 1, 1, 0})) ==
          "1,1,5.0,9.0;2,2,1.5,4.0;");  // cell 2: the mean
    CHECK(holds(regions.lines("out.mif"),
                "Region 1; 5;        0.000000        0.000000;        0.000000       10.000000;"));
}

TEST_CASE("Vectors come with their columns, missing in one component or at rest") {
    const Mesh mesh = smallMesh();
    Results flow = resultsOf("Vector Velocity", {0, 3, 0, MISSING, 1, 0, 0, 0, 0, 0, 0}, {0, 1, 1, 0});
    flow.vector = true;
    flow.y = {0, 4, 0, 1, MISSING, -2, 0, 0, 0, 0, 0};
    Run points("-mif -prec8.1");
    CHECK(points.tableOf(mesh, flow) ==
          "1,\"H\",0.0,5.0,53.1,3.0,4.0,36.9;2,\"H\",1.0,0.0,0.0,0.0,0.0,0.0;5,\"H\",1.0,2.0,-90.0,0.0,-2.0,180.0;"
          "6,\"H\",2.0,0.0,0.0,0.0,0.0,0.0;");
    Run arrows("-mif -vector -vx -prec8.1");
    CHECK(arrows.tableOf(mesh, flow) == "1,\"H\",0.0,3.0;");
    CHECK(arrows.said.starts_with("Arrow cell size = 10.\n"));
    CHECK(holds(arrows.lines("out.mif"),
                "Data;Pline 5;        0.000000        0.000000;       30.000000        0.000000;"));
    CHECK_FALSE(holds(arrows.tableOf(mesh, resultsOf("Depth", flow.x, flow.wet)), "Depth"));
    CHECK(holds(arrows.said, "WARNING - Depth holds no vectors, no arrows are written."));
}

// Switches; what is said, then what is left of -region, -grid and -pts ("$" ends a line).
TEST_CASE("Switches that rule each other out are dropped with a warning") {
    for (const Row& row : rowsOf(R"(
-mif -region -grid5 -ptsCT | WARNING - The -grid option is ignored with -region.$WARNING - The -pts option is ignored with -region.$RALL
-mif -grid5 -ptsC | WARNING - The -pts option is ignored with -grid.$GALL
-txt -region -ptsCQ | WARNING - Unknown point types "Q" in -ptsCQ are ignored.$WARNING - The -region option is ignored with -txt.$CQ
)")) {
        const Run run(row[0]);
        const RunOptions& o = OPTIONS();
        const std::string said = consoleOf([] { MAKE_LAYER_STAGE(OUTPUT_FORMAT(OPTIONS()), OPTIONS(), {}); });
        CHECK(said + (o.region ? "R" : "") + (o.grid ? "G" : "") + o.pointTypes == replaced(row[1], "$", "\n"));
    }
}

TEST_CASE("A grid's bed lies over the nodes that the level is laid over at its time") {
    Mesh mesh;  // two 9-node quads side by side, 4 m; bed 1 at the corners, 2 in the middle of the common side, else 0
    mesh.highResolution = true;
    Results all = resultsOf("Water Level", {0}, {0, 1, 1});
    for (int i = 0; i < 15; ++i) {
        const bool corner = i / 5 != 1 && i % 5 % 2 == 0;
        addNode(mesh, 2.0 * (i % 5), 2.0 * (i / 5));
        mesh.nodes.back().z = i == 7 ? 2.0F : corner ? 1.0F : 0.0F;
        all.x.push_back(corner ? 3.0F : 5.0F);
    }
    addElement(mesh, 9, {1, 3, 13, 11, 2, 8, 12, 6, 7});
    addElement(mesh, 9, {3, 5, 15, 13, 4, 10, 14, 8, 9});
    all.nodes = 15;
    all.cells = 2;
    Results noCentre = all, halfDry = all;
    noCentre.x[9] = halfDry.x[7] = MISSING;
    for (const std::size_t dry : {4, 5, 9, 10, 14, 15}) halfDry.x[dry] = MISSING;
    halfDry.wet[2] = 0;

    Run run("-mif -prec8.1");
    const Grid header{3, 1, 1.0, 1.0, 2.0, {}};  // points at both centres and in the middle of the common side
    VectorRun outputs;
    consoleOf([&] { outputs = Run::start(mesh, &header, {false, false, true}); });
    const std::string whole = R"("R00001C00001",5.0,5.0;"R00001C00002",5.0,3.0;"R00001C00003",5.0,5.0;)";
    CHECK(run.tableOf(outputs, all) == whole);
    CHECK(run.tableOf(outputs, noCentre) == R"("R00001C00001",5.0,5.0;"R00001C00002",5.0,3.0;"R00001C00003",3.0,2.0;)");
    CHECK(run.tableOf(outputs, halfDry) == R"("R00001C00001",3.0,2.0;"R00001C00002",3.0,2.0;)");
    CHECK(run.tableOf(outputs, all) == whole);
}
