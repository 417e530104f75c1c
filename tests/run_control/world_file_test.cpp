#include "run_control/world_file.h"

#include "services/files.h"
#include "services/options.h"
#include "testing.h"

namespace {
std::string worldFileOf(const TemporaryFolder& folder, const std::string& tab) {
    INITIALISE_FILES();
    INITIALISE_OPTIONS();
    SET_INPUT_FILE(folder.write("screen.TAB", tab));
    return consoleOf([] { MAKE_WORLD_FILE(); });
}
const std::string HEAD =
    "!table\r\n!version 300\r\n\r\nDefinition Table\r\n  File \"screen.bmp\"\r\n  type \"raster\"\r\n";
}  // namespace

TEST_CASE("A world file places the centre of the upper-left pixel") {
    const std::tuple<const char*, const char*> rows[] = {
        // North up: 2 m pixels from (500, 1000); E is negative since rows count downwards.
        {"  (500,1000) (0,0) Label \"Pt 1\",\r\n  (700,800) (100,100) Label \"Pt 2\"\r\n  CoordSys NonEarth Units "
         "\"m\"\r\n",
         "2.000000000000\n0.000000000000\n0.000000000000\n-2.000000000000\n501.000000000\n999.000000000\n"},
        // Turned: x = 10 + 2 col + 1 row, y = 50 + 0.5 col - 3 row. D comes before B.
        {"(10,50) (0,0)\n(210,100) (100,0)\n(110,-250) (0,100)\n(310,-200) (100,100)\n",
         "2.000000000000\n0.500000000000\n1.000000000000\n-3.000000000000\n11.500000000\n48.750000000\n"},
    };
    for (const auto& [points, lines] : rows) {
        const TemporaryFolder folder;
        CHECK(worldFileOf(folder, HEAD + points) ==
              "Wrote " + folder.name("screen.wld") + "\nCreated .wld file from .tab file\n");
        CHECK(folder.read("screen.wld") == lines);
    }
}

TEST_CASE("Control points that do not place the image leave no world file") {
    const std::tuple<const char*, const char*> rows[] = {
        {"", "fewer than two control points"},
        {"(500,1000) (0,0)\n", "fewer than two control points"},
        {"(500,1000) (0,0)\n(700,800) (0,100)\n", "the control points lie on a line"},  // no width
        {"(0,0) (0,0)\n(1,1) (100,100)\n(2,2) (200,200)\n", "the control points lie on a line"},
        {"(0,0) (0,0)\n(200,-200) (100,100)\n(400,-402) (200,201)\n",
         "the control points lie on a line"},  // a third of a pixel beside it
        // on the map, but for rounding
        {"(0,0) (3,7)\n(.1,.3) (103,11)\n(.3,.9) (9,207)\n", "the control points lie on a line"},
        // 2.5 m each, of 2.05 m
        {"(0,0) (0,0)\n(200,0) (100,0)\n(0,-200) (0,100)\n(210,-200) (100,100)\n",
         "the control points disagree by 1.2 pixels"},
        {"(0,0) (0,0)\n(1,x) (100,0)\n", nullptr},
        {"(0,0) (0,0)\n(1,nan) (100,0)\n", nullptr},
    };
    for (const auto& [points, why] : rows) {
        const TemporaryFolder folder;
        const std::string reason = why != nullptr ? why : "line 8 of " + folder.name("screen.TAB") + ": ";
        const std::string text = worldFileOf(folder, HEAD + points);
        CAPTURE(text);
        CHECK(
            text.starts_with("Problems creating .wld file - check that .tab file is for a MI georeferenced image.\n"
                             "ERROR - No .wld file is made: " +
                             reason));
        CHECK_FALSE(std::filesystem::exists(folder.name("screen.wld")));
    }
    const TemporaryFolder folder;
    CHECK(worldFileOf(folder, "Definition Table\n  Type NATIVE\n(1,1) (0,0)\n") ==
          "Could not create .wld file from .tab file\nERROR - " + folder.name("screen.TAB") +
              " holds no line with Type \"RASTER\".\n\nPress Enter to Close\n<stopped>");
}
