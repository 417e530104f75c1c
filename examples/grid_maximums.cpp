// The library in a program of one's own: "grid_maximums basin.2dm basin_h.dat 20 highest" leaves highest.asc.
#include "inputs/dat_reader.h"
#include "inputs/mesh_reader.h"
#include "raster/asc_writer.h"
#include "raster/grid_extent.h"
#include "raster/mesh_to_grid.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"

#include <cstdlib>
#include <iostream>

/// Says nothing unless something is wrong.
struct OnlyFaults : ConsoleSink {
    void line(std::string_view text, MessageLevel level) override {
        if (level == MessageLevel::Error || level == MessageLevel::Warning) std::cerr << text << '\n';
    }
};

int main(int argc, char* argv[]) try {
    if (argc != 5) return STATUS_USAGE;
    OnlyFaults faults;
    SET_CONSOLE_SINK(&faults);
    INITIALISE_FILES();
    Mesh mesh;
    const int meshFile = OPEN_FILE(argv[1], "I ", "2dm");
    SCAN_2DM(meshFile, mesh);
    SIZE_MESH_TABLES(mesh);
    READ_2DM(meshFile, {}, mesh);
    Results results;
    const DatFile dat = READ_DAT_HEADER(OPEN_FILE(argv[2], "I ", "dat"), false);
    ALLOCATE_DAT_RESULTS(dat, false, "Water Level", "h", results);
    EXTRACT_DAT_MAXIMUMS(dat, results);
    GridRun run = START_GRID(LAYOUT_GRID(mesh, std::atof(argv[3]), false), PlanKind::Nodes, {});
    GRID_RESULTS(run, mesh, results, {});
    WRITE_ASC(argv[4], run.grid, SET_OUTPUT_PRECISION(run.grid));
} catch (const RunStopped& stopped) {
    return stopped.status;
}
