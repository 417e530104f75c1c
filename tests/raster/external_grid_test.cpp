#include "raster/external_grid.h"

#include "platform/shared_library.h"
#include "scratch_folder.h"
#include "services/files.h"
#include "testing.h"

namespace {

const std::string CORNER = "xllcorner 100.5\nyllcorner 200\ncellsize 2.5\n";
const std::string GOOD = "ncols 3\nnrows 2\n" + CORNER;

}  // namespace

// Name, header ("/" ends a line), corner, what stands behind the header.
TEST_CASE("READ_EXTERNAL_GRID_HEADER takes what GIS packages write") {
    for (const Row& row : rowsOf(R"(
# padded numbers, many decimals
a.asc | ncols        3/nrows        2/xllcorner    100.500000000000/yllcorner    200.000000000000/\
    cellsize     2.500000000000/NODATA_value -99999/ 1 2 3/ | 100.5 200 | 1 2 3
# upper case, CR LF, tabs
a.asc | NCOLSt3r/NROWS 2.0r/XLLCORNER 1.005d2r/YLLCORNER +2E2r/CELLSIZE 2.5r/nodata_VALUE nanr/1 2 3r/ | 100.5 200 | 1 2 3
# no marker, no data behind it
a.asc | GOOD | 100.5 200
# the .hdr of a .flt, any order
a.FLT | cellsize 2.5/yllcorner 200/xllcorner 100.5/nrows 2/ncols 3/byteorder LSBFIRST/ | 100.5 200 | byteorder
# y by its centre only, and both: a whole cell
a.asc | ncols 3/nrows 2/xllcorner 100.5/yllcenter 202.5/cellsize 2.5/1 2 3/ | 100.5 200 | 1 2 3
a.asc | ncols 3/nrows 2/xllcenter 100/yllcenter 200/cellsize 2.5/1 2 3/ | 97.5 197.5 | 1 2 3
)")) {
        CAPTURE(row[1]);
        const ScratchFolder folder;
        std::string text = replaced(replaced(row[1], "GOOD", GOOD), "r/", "\r\n");
        text = replaced(replaced(text, "/", "\n"), "NCOLSt", "NCOLS\t");
        folder.write(row[0] == "a.asc" ? "a.asc" : "a.hdr", text);
        ExternalGrid external;
        const std::string console = consoleOf([&] { external = READ_EXTERNAL_GRID_HEADER(folder.name(row[0])); });
        const Grid& grid = external.grid;
        CHECK((std::tuple(grid.ncols, grid.nrows, grid.cellSize) == std::tuple(3, 2, 2.5)));
        CHECK((std::vector{grid.xll, grid.yll}) == listOf(row[2]));
        CHECK(external.dataOffset ==
              std::int64_t(row[3].empty() ? text.size()
                                          : text.rfind(row[3]) - (text[text.rfind(row[3]) - 1] == ' ' ? 1 : 0)));
        CHECK(console.ends_with("External Grid Info: 2 rows by 3 columns with 2.5 cell size.\n"));
        CHECK(console.starts_with("WARNING - ") == holds(text, "center"));
        CHECK(NAME_IN_USE(folder.name(row[0])));  // a .flt too: no output may replace it
    }
}

// The file ("/" ends a line, GOOD and CORNER stand for headers) and the line that cannot be read; none: a field is
// missing or unfit.
TEST_CASE("READ_EXTERNAL_GRID_HEADER refuses what it cannot trust and names the file") {
    const auto check = [](const std::string& text, const std::string& line) {
        CAPTURE(text);
        const ScratchFolder folder;
        folder.write("a.asc", replaced(replaced(replaced(text, "GOOD", GOOD), "CORNER", CORNER), "/", "\n"));
        const std::string console = consoleOf([&] { READ_EXTERNAL_GRID_HEADER(folder.name("a.asc")); });
        const std::string why =
            line.starts_with("ERROR") ? line
            : line.empty()
                ? "ERROR 2333 - Insufficient header information in external grid file.  Check format of file.\n"
                : "ERROR 2334 - Reading Grid file header information.\nLine = " + line + "\n";
        CHECK(console == why + "File = " + folder.name("a.asc") + "\n\nPress Enter to Close\n<stopped>");
    };
    for (const Row& row : rowsOf(R"(
# nothing; the header of another format; cells that are not square
 |
BYTEORDER      I/LAYOUT         BIL/NROWS          2/NCOLS          3/ULXMAP         101.75/ |
ncols 3/nrows 2/xllcorner 1/yllcorner 2/dx 2.5/dy 1.25/ |
/GOOD |
ncols 0/nrows 2/CORNER |
ncols 3/nrows -2/CORNER |
ncols 3/nrows 2/yllcorner 2/cellsize 1/ |
GOODcellsize 0/ |
# its far edge is beyond every number
GOODcellsize 1e308/ |
ncols 2147483648/nrows 2/CORNER | ncols 2147483648
ncols 3.5/nrows 2/CORNER | ncols 3.5
ncols/nrows 2/CORNER | ncols
GOODCellSize nan/ | CellSize nan
GOODxllcenter inf/ | xllcenter inf
)"))
        check(row[0], row[1]);
    check("\x89PNG\r\n\x1a\n\x01\x02", "");
    check("nrows \x07" + std::string(200, 'z') + "/", "nrows ?" + std::string(73, 'z'));
    check(replaced(std::string(101, 'n'), "n", "nrows 2/") + "GOOD",
          "ERROR 2332 - Failed to find header information in external grid file.  Check format of file.\n");
    const ScratchFolder folder;
    folder.write("a.flt", "1234");
    CHECK(consoleOf([&] {
              READ_EXTERNAL_GRID_HEADER(folder.name("a.flt"));
          }).starts_with("ERROR - There is no grid header file " + folder.name("a.hdr")));
    CHECK(consoleOf([&] { READ_EXTERNAL_GRID_HEADER(folder.name("")); }).starts_with("ERROR - There is no grid file "));
}

TEST_CASE("READ_EXTERNAL_GRID_HEADER takes the projection beside the grid") {
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"PROJCS[\"x\",\r\n  GEOGCS[\"y\"]]\r\n", "PROJCS[\"x\",GEOGCS[\"y\"]]", false},
        {"Projection UTM\n", "", true},
    };
    for (const auto& [prj, projection, warned] : rows) {
        const ScratchFolder folder;
        folder.write("a.asc", GOOD);
        folder.write("A.PRJ", prj);
        const std::string found = folder.name(ON_WINDOWS ? "a.prj" : "A.PRJ");  // case counts on this disk, or not
        ExternalGrid external;
        const std::string console = consoleOf([&] { external = READ_EXTERNAL_GRID_HEADER(folder.name("a.asc")); });
        CHECK(external.projection == projection);
        CHECK(console.starts_with("Using " + found + " for setting projection.\n"));
        CHECK((holds(console, "WARNING - Unable to find PROJCS line in " + found + "\n")) == warned);
    }
}
