// The command line of make_parabolic_basin.
#pragma once

#include <cstdint>
#include <filesystem>

struct BasinOptions {
    /// folder and name of the files without extension: "out/basin" gives out/basin.2dm
    std::filesystem::path base;
    std::int32_t cells = 80;  ///< mesh squares across, and down
    double side = 8000.0;     ///< of the mesh, metres
    /// share of the columns, from the east, whose squares are split into two triangles
    double triangles = 1.0 / 3.0;
    double originX = 300000.0;  ///< south-west corner before the rotation, map units
    double originY = 6200000.0;
    double rotation = 0.0;  ///< of the mesh about its centre, degrees counter-clockwise
    /// largest shift of an inner node in x and in y, as a share of a square's side; below 0.25
    double distortion = 0.0;
    std::int32_t times = 11;  ///< written, a tenth of an hour apart from 0; 11 cover one period
    bool plane = false;       ///< only a mesh, with bed elevation x + 10 y in place of the basin
    bool flags = true;        ///< wet/dry flags in the .dat files; without them every cell counts as wet
    bool cellDepths = false;  ///< also depths per cell, in a .dat of their own
    bool xmdf = false;        ///< also an .xmdf file
};

/// Throws std::invalid_argument with the reason for an argument that cannot be used.
BasinOptions READ_BASIN_OPTIONS(int argc, char* argv[]);
/// What to type, for a console.
const char* BASIN_USAGE();
