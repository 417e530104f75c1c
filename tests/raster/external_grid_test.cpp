#include "raster/external_grid.h"

#include "raster/scratch_folder.h"
#include "services/files.h"
#include "testing.h"

namespace {

const std::string CORNER = "xllcorner 100.5\nyllcorner 200\ncellsize 2.5\n";
const std::string GOOD = "ncols 3\nnrows 2\n" + CORNER;

std::string repeated(const std::string& text, int count) {
    std::string all;
    while (count-- > 0) all += text;
    return all;
}

}  // namespace

TEST_CASE("READ_EXTERNAL_GRID_HEADER takes what GIS packages write") {
    struct {
        std::string what, name, text;
        double x, y;
        std::string behind;
    } const rows[] = {
        {"padded numbers, many decimals", "a.asc",
         "ncols        3\nnrows        2\nxllcorner    100.500000000000\nyllcorner    200.000000000000\ncellsize     "
         "2.500000000000\nNODATA_value -99999\n 1 2 3\n",
         100.5, 200, " 1 2 3"},
        {"upper case, CR LF, tabs", "a.asc",
         "NCOLS\t3\r\nNROWS 2.0\r\nXLLCORNER 1.005d2\r\nYLLCORNER +2E2\r\nCELLSIZE 2.5\r\nnodata_VALUE nan\r\n1 2 "
         "3\r\n",
         100.5, 200, "1 2 3"},
        {"no marker, no data behind it", "a.asc", GOOD, 100.5, 200, ""},
        {"the .hdr of a .flt, any order", "a.FLT",
         "cellsize 2.5\nyllcorner 200\nxllcorner 100.5\nnrows 2\nncols 3\nbyteorder LSBFIRST\n", 100.5, 200,
         "byteorder"},
        {"100 lines", "a.asc", repeated("ncols 3\n", 96) + GOOD.substr(8) + "1 2 3\n", 100.5, 200, "1 2 3"},
        {"y by its centre only", "a.asc", "ncols 3\nnrows 2\nxllcorner 100.5\nyllcenter 202.5\ncellsize 2.5\n1 2 3\n",
         100.5, 200, "1 2 3"},
        {"both by the centre: a whole cell", "a.asc",
         "ncols 3\nnrows 2\nxllcenter 100\nyllcenter 200\ncellsize 2.5\n1 2 3\n", 97.5, 197.5, "1 2 3"},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        const ScratchFolder folder;
        folder.write(r.name == "a.asc" ? "a.asc" : "a.hdr", r.text);
        ExternalGrid external;
        const std::string console = consoleOf([&] { external = READ_EXTERNAL_GRID_HEADER(folder.name(r.name)); });
        CHECK(std::tuple(external.grid.ncols, external.grid.nrows, external.grid.xll, external.grid.yll,
                         external.grid.cellSize) == std::tuple(3, 2, r.x, r.y, 2.5));
        CHECK(external.dataOffset == std::int64_t(r.behind.empty() ? r.text.size() : r.text.find(r.behind)));
        CHECK(console.ends_with("External Grid Info: 2 rows by 3 columns with 2.5 cell size.\n"));
        CHECK(console.starts_with("WARNING - ") == (r.text.find("center") != std::string::npos));
        CHECK(NAME_IN_USE(folder.name(r.name)));  // a .flt too: no output may replace it
    }
}

TEST_CASE("READ_EXTERNAL_GRID_HEADER refuses what it cannot trust and names the file") {
    const std::string insufficient =
        "ERROR 2333 - Insufficient header information in external grid file.  Check format of file.\n";
    const std::string unreadable = "ERROR 2334 - Reading Grid file header information.\nLine = ";
    struct {
        std::string text, expected;
    } const rows[] = {
        {"", insufficient},
        {"\x89PNG\r\n\x1a\n\x01\x02", insufficient},
        // header of another format
        {"BYTEORDER      I\nLAYOUT         BIL\nNROWS          2\nNCOLS          3\nULXMAP         101.75\n",
         insufficient},
        // cells that are not square
        {"ncols 3\nnrows 2\nxllcorner 1\nyllcorner 2\ndx 2.5\ndy 1.25\n", insufficient},
        {"\n" + GOOD, insufficient},
        {"ncols 0\nnrows 2\n" + CORNER, insufficient},
        {"ncols 3\nnrows -2\n" + CORNER, insufficient},
        {"ncols 3\nnrows 2\nyllcorner 2\ncellsize 1\n", insufficient},
        {GOOD + "cellsize 0\n", insufficient},
        {GOOD + "cellsize 1e308\n", insufficient},  // its far edge is beyond every number
        {"ncols 2147483648\nnrows 2\n" + CORNER, unreadable + "ncols 2147483648\n"},
        {"ncols 3.5\nnrows 2\n" + CORNER, unreadable + "ncols 3.5\n"},
        {"ncols\nnrows 2\n" + CORNER, unreadable + "ncols\n"},
        {GOOD + "CellSize nan\n", unreadable + "CellSize nan\n"},
        {GOOD + "xllcenter inf\n", unreadable + "xllcenter inf\n"},
        {"nrows \x07" + std::string(200, 'z') + "\n", unreadable + "nrows ?" + std::string(73, 'z') + "\n"},
        {repeated("nrows 2\n", 101) + GOOD,
         "ERROR 2332 - Failed to find header information in external grid file.  Check format of file.\n"},
    };
    for (const auto& r : rows) {
        CAPTURE(r.text);
        const ScratchFolder folder;
        folder.write("a.asc", r.text);
        const std::string console = consoleOf([&] { READ_EXTERNAL_GRID_HEADER(folder.name("a.asc")); });
        CHECK(console == r.expected + "File = " + folder.name("a.asc") + "\n\nPress Enter to Close\n<stopped>");
    }
    const ScratchFolder folder;
    folder.write("a.flt", "1234");
    CHECK(consoleOf([&] {
              READ_EXTERNAL_GRID_HEADER(folder.name("a.flt"));
          }).starts_with("ERROR - There is no grid header file " + folder.name("a.hdr")));
    CHECK(consoleOf([&] { READ_EXTERNAL_GRID_HEADER(folder.name("")); }).starts_with("ERROR - There is no grid file "));
}

TEST_CASE("READ_EXTERNAL_GRID_HEADER takes the projection beside the grid") {
    struct {
        const char* prj;
        const char* projection;
        bool warned;
    } const rows[] = {
        {"PROJCS[\"x\",\r\n  GEOGCS[\"y\"]]\r\n", "PROJCS[\"x\",GEOGCS[\"y\"]]", false},
        {"Projection UTM\n", "", true},
    };
    for (const auto& r : rows) {
        const ScratchFolder folder;
        folder.write("a.asc", GOOD);
        folder.write("A.PRJ", r.prj);
        ExternalGrid external;
        const std::string console = consoleOf([&] { external = READ_EXTERNAL_GRID_HEADER(folder.name("a.asc")); });
        CHECK(external.projection == r.projection);
        CHECK(console.starts_with("Using " + folder.name("A.PRJ") + " for setting projection.\n"));
        CHECK((console.find("WARNING - Unable to find PROJCS line in " + folder.name("A.PRJ") + "\n") !=
               std::string::npos) == r.warned);
    }
}
