// Makes a model whose exact solution is known: a mesh of triangles and quads over a parabolic basin, and the flood that
// circles it.
#include "basin_options.h"
#include "flood.h"
#include "flood_files.h"
#include "parabolic_basin.h"
#include "square_mesh.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>

namespace {

constexpr double TIMES_AN_HOUR = 10.0;

void writeMesh(const SquareMesh& mesh) {
    const std::filesystem::path name = FILE_OF(mesh.options, ".2dm");
    WRITE_2DM(mesh, name);
    std::printf("Wrote %s: %lld nodes, %lld cells.\n", name.string().c_str(), static_cast<long long>(mesh.x.size()),
                static_cast<long long>(mesh.elementCount()));
}

void makePlane(const BasinOptions& options) {
    SquareMesh mesh = MAKE_SQUARE_MESH(options);
    for (std::size_t i = 0; i < mesh.z.size(); ++i) mesh.z[i] = static_cast<float>(mesh.x[i] + 10.0 * mesh.y[i]);
    writeMesh(mesh);
}

void makeFlood(const BasinOptions& options) {
    const ParabolicBasin basin(options.side);
    SquareMesh mesh = MAKE_SQUARE_MESH(options);
    for (std::size_t i = 0; i < mesh.z.size(); ++i)
        mesh.z[i] = static_cast<float>(basin.bed({mesh.x[i] - mesh.centreX, mesh.y[i] - mesh.centreY}));
    writeMesh(mesh);

    FloodFiles files(mesh);
    FloodState state;
    FloodExtremes extremes;
    for (std::int32_t k = 0; k < options.times; ++k) {
        FLOOD_AT(basin, mesh, k / TIMES_AN_HOUR, state);
        files.write(state);
        extremes.add(state);
    }
    files.finish(extremes);
    std::printf("Wrote %s_h.dat, _d.dat, _V.dat%s: %d times.\n", options.base.string().c_str(),
                options.xmdf ? " and .xmdf" : "", static_cast<int>(options.times));
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        const BasinOptions options = READ_BASIN_OPTIONS(argc, argv);
        if (options.base.has_parent_path()) std::filesystem::create_directories(options.base.parent_path());
        if (options.plane) makePlane(options);
        else makeFlood(options);
        return 0;
    } catch (const std::invalid_argument& wrong) {
        std::fprintf(stderr, "%s\n\n%s", wrong.what(), BASIN_USAGE());
        return 2;
    } catch (const std::exception& failed) {
        std::fprintf(stderr, "%s\n", failed.what());
        return 1;
    }
}
