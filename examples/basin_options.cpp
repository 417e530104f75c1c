#include "basin_options.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace {

/// The whole text as a number between the limits.
double numberBetween(std::string_view option, std::string_view text, double lowest, double highest) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !(value >= lowest && value <= highest))
        throw std::invalid_argument("ERROR - " + std::string(option) + " needs a number from " +
                                    std::to_string(lowest) + " to " + std::to_string(highest) + ", not \"" +
                                    std::string(text) + "\"");
    return value;
}

std::int32_t countBetween(std::string_view option, std::string_view text, double lowest, double highest) {
    const double value = numberBetween(option, text, lowest, highest);
    if (value != std::floor(value))
        throw std::invalid_argument("ERROR - " + std::string(option) + " needs a whole number");
    return static_cast<std::int32_t>(value);
}

void readPoint(std::string_view option, std::string_view text, double& x, double& y) {
    constexpr double FARTHEST = 1.0e8;
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) throw std::invalid_argument("ERROR - " + std::string(option) + " needs x,y");
    x = numberBetween(option, text.substr(0, comma), -FARTHEST, FARTHEST);
    y = numberBetween(option, text.substr(comma + 1), -FARTHEST, FARTHEST);
}

/// False for an option that is not known.
bool readValue(BasinOptions& options, std::string_view option, std::string_view text) {
    // ids of 800 million cells fit 32 bits
    if (option == "-cells") options.cells = countBetween(option, text, 2, 20000);
    else if (option == "-side") options.side = numberBetween(option, text, 1.0, 1.0e7);
    else if (option == "-triangles") options.triangles = numberBetween(option, text, 0.0, 1.0);
    else if (option == "-origin") readPoint(option, text, options.originX, options.originY);
    else if (option == "-rotate") options.rotation = numberBetween(option, text, -360.0, 360.0);
    else if (option == "-distort") options.distortion = numberBetween(option, text, 0.0, 0.24);
    else if (option == "-times") options.times = countBetween(option, text, 1, 10000);
    else return false;
    return true;
}

}  // namespace

BasinOptions READ_BASIN_OPTIONS(int argc, char* argv[]) {
    BasinOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "-plane") options.plane = true;
        else if (argument == "-no-flags") options.flags = false;
        else if (argument == "-cell-depths") options.cellDepths = true;
        else if (argument == "-xmdf") options.xmdf = true;
        else if (!argument.empty() && argument.front() != '-') options.base = argument;
        else if (i + 1 == argc || !readValue(options, argument, argv[i + 1]))
            throw std::invalid_argument("ERROR - Unknown option, or one without its value: " + std::string(argument));
        else ++i;
    }
    if (options.base.filename().empty()) throw std::invalid_argument("ERROR - No name given for the files");
    return options;
}

const char* BASIN_USAGE() {
    return "make_parabolic_basin [options] folder/name\n"
           "\n"
           "Writes a flood that swings round a parabolic basin: name.2dm, and water level (name_h.dat), depth "
           "(name_d.dat) and\n"
           "velocity (name_V.dat) with wet/dry flags. name_h.dat and name_V.dat end with stored maximums, name_d.dat "
           "has none.\n"
           "\n"
           "  -cells n        mesh squares across (80)\n"
           "  -side m         side of the mesh in metres (8000)\n"
           "  -triangles s    share of the squares that are split into triangles, 0 to 1 (a third)\n"
           "  -origin x,y     south-west corner (300000,6200000)\n"
           "  -rotate a       turn the mesh about its centre, degrees counter-clockwise (0)\n"
           "  -distort s      shift the inner nodes by up to this share of a square's side, 0 to 0.24 (0)\n"
           "  -times n        output times, a tenth of an hour apart (11: one period)\n"
           "  -no-flags       leave the wet/dry flags out of the .dat files\n"
           "  -cell-depths    also write name_cells_d.dat: one depth per cell, the mean of its corners\n"
           "  -xmdf           also write name.xmdf\n"
           "  -plane          write only a mesh, whose bed is the plane z = x + 10 y\n";
}
