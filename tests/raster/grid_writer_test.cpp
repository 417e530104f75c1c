#include "raster/grid_writer.h"

#include "raster/asc_writer.h"
#include "raster/flt_writer.h"
#include "raster/header_numbers.h"
#include "scratch_folder.h"
#include "services/files.h"
#include "services/options.h"
#include "testing.h"

namespace {

constexpr float MISSING = -99999.0F;
using namespace std::string_literals;

/// Two rows of three: row 1, the southern one, first.
Grid smallGrid() { return {3, 2, 500000.0, 6250000.25, 2.5, {1, 2, 3.5F, -4, MISSING, 6.0625F}}; }

}  // namespace

TEST_CASE("An .asc holds its header, then the northern row first") {
    const ScratchFolder folder;
    const std::string console = consoleOf([&] { WRITE_GRID(WRITE_ASC, folder.name("a"), smallGrid(), {10, 3}, " "); });
    CHECK(console == "Writing ASCII grid file...\n   Done.\n");
    CHECK(folder.read("a.asc") ==
          "ncols        3\nnrows        2\nxllcorner       500000.000\nyllcorner      6250000.250\ncellsize        "
          "2.500\nNODATA_value    -99999.\n"
          "     -4.000 -99999.000      6.062\n      1.000      2.000      3.500\n");
    CHECK_FALSE(std::filesystem::exists(folder.name("a.prj")));  // a blank projection leaves none
}

TEST_CASE("A .flt holds little-endian values, northern row first, beside its .hdr and .prj") {
    const ScratchFolder folder;
    Grid grid = smallGrid();
    grid.values[0] = std::numeric_limits<float>::quiet_NaN();
    const std::string console = consoleOf([&] {
        WRITE_GRID(WRITE_FLT, folder.name("f"), grid, {10, 3}, "PROJCS[\"x\"]  ");
    });
    CHECK(console == "Writing FLT grid...\nFinished writing FLT grid.\n");
    CHECK(folder.read("f.hdr") ==
          "ncols 3\nnrows 2\nxllcorner 500000.\nyllcorner 6250000.25\ncellsize 2.5\nNODATA_value -99999.0\nbyteorder "
          "LSBFIRST\n");
    CHECK(folder.read("f.flt") ==
          "\x00\x00\x80\xC0\x80\x4F\xC3\xC7\x00\x00\xC2\x40\x80\x4F\xC3\xC7\x00\x00\x00\x40\x00\x00\x60\x40"s);
    CHECK(folder.read("f.prj") == "PROJCS[\"x\"]\n");
}

TEST_CASE("Rows longer than a block keep their order and lose nothing") {
    const ScratchFolder folder;
    Grid grid{150001, 2, 0, 0, 1, std::vector<float>(300002)};
    for (std::size_t i = 0; i < grid.values.size(); ++i) grid.values[i] = static_cast<float>(i);
    consoleOf([&] { WRITE_GRID(WRITE_ASC, folder.name("l"), grid, {10, 3}, ""); });
    consoleOf([&] { WRITE_GRID(WRITE_FLT, folder.name("l"), grid, {10, 3}, ""); });
    const std::string text = folder.read("l.asc");
    const std::size_t body = text.find("-99999.\n") + 8;
    CHECK(text.size() - body == 300002 * 11 + 2);
    CHECK(text.substr(body + 150000 * 11, 23) == " 300001.000\n      0.000");
    CHECK(text.ends_with(" 149999.000 150000.000\n"));
    const std::string bytes = folder.read("l.flt");
    CHECK(bytes.size() == 4 * 300002);
    CHECK(bytes.substr(4 * 150000, 8) == "\x20\x7C\x92\x48\x00\x00\x00\x00"s);  // 300001 ends the northern row
}

TEST_CASE("SET_OUTPUT_PRECISION follows the largest value unless -prec is given") {
    constexpr float INFINITE = std::numeric_limits<float>::infinity();
    const std::tuple<std::vector<float>, const char*, int> rows[] = {
        {{MISSING, 12000.5F}, "12000.", 14}, {{9999, 3}, "9999.", 10},
        {{99999, MISSING}, "99999.", 14},    {{100000}, "100000.", 15},
        {{MISSING, MISSING}, "-99999.", 10},  // nothing but missing cells
        {{-20000, MISSING}, "-20000.", 14},   // its size counts, not its sign
        {{NAN, 5, INFINITE}, "5.", 10},      {std::vector<float>(40, 2), "2.", 10},
    };
    for (const auto& [values, largest, width] : rows) {
        GridPrecision precision;
        const std::string said = consoleOf([&, v = values] {
            precision = SET_OUTPUT_PRECISION(Grid{1, 1, 0, 0, 1, v});
        });
        CHECK(said ==
              "Determining maximum value for setting precision...\n   Done.\nSetting output precision.\n"
              "Setting output precision based on maximum value of "s +
                  largest + "\n");
        CHECK((precision.width == width && precision.decimals == 3));
    }
}

TEST_CASE("Headers take more decimals where three would misplace the grid") {
    const std::tuple<double, double, double, std::int32_t, int, const char*, const char*> rows[] = {
        // 0.4 mm is less than a thousandth of a cell
        {500000.1234, 6250000, 2.5, 4000, 3, "500000.1234", "2.5"},
        {500000, 6250000, 0.1, 4000, 3, "500000.", "0.1"},
        {151.2345678, -33, 0.0001, 10, 7, "151.2345678", "0.0001"},
        {151, -33, 0.00027777777777777778, 3600, 10, "151.", "0.0002777778"},
        // AREAL8's seven decimals are not enough
        {151.123456789, -33, 0.00001, 1, 8, "151.12345679", "0.00001"},
        {0, 0, 1.2345, 1000, 4, "0.", "1.2345"},  // half a millimetre times 1000 columns
    };
    for (const auto& [x, y, cellSize, ncols, asc, hdrX, hdrSize] : rows) {
        const Grid grid{ncols, 1, x, y, cellSize, {}};
        CAPTURE(cellSize);
        CHECK(ASC_HEADER_DECIMALS(grid) == asc);
        CHECK(HDR_NUMBER(x, CORNER_TOLERANCE(grid)) == hdrX);
        CHECK(HDR_NUMBER(cellSize, CELL_SIZE_TOLERANCE(grid)) == hdrSize);
    }
}
