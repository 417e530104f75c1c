#include "services/projection.h"

#include "console_of.h"
#include "services/files.h"
#include "services/options.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <string>

namespace {
std::string found(const TemporaryFolder& folder, bool RunOptions::*format) {
    INITIALISE_FILES();
    INITIALISE_OPTIONS();
    OPTIONS_TO_FILL().*format = true;
    SET_INPUT_FILE(folder.name("x_h.dat"));
    return consoleOf([] { FIND_PROJECTION(); });
}
}  // namespace

TEST_CASE("A -mif run keeps the CoordSys line of Header.mif, else of Projection.mif") {
    const TemporaryFolder folder;
    CHECK(found(folder, &RunOptions::mif) ==
          "WARNING - A Header.mif or Projection.mif file does not exist in folder.\n"
          "          Non-Earth Coordinates will be used.\n");
    CHECK(PROJECTION().text == "CoordSys NonEarth Units \"m\"");
    const std::string line = "COORDSYS Earth Projection 8, 116, \"m\", 153, 0, 0.9996, 500000, 10000000";
    const std::string second =
        folder.write("PROJECTION.MIF", "Version 300\r\n  " + line + " \r\nCoordSys NonEarth\r\n");
    CHECK(found(folder, &RunOptions::mif) ==
          "Using " + second + " for setting projection.\nmif Projection: " + line + "\n");
    CHECK(PROJECTION().text == line);
    const std::string first = folder.write("Header.mif", "Version 300\n");
    CHECK(found(folder, &RunOptions::mif) == "Using " + first +
                                                 " for setting projection.\nERROR - Unable to find CoordSys line in " +
                                                 first + "\n\nPress Enter to Close\n<stopped>");
    CHECK(NAME_IN_USE(folder.name("header.MIF")));  // no output may replace it
}

TEST_CASE("A .prj file is read whole; grids take it quietly") {
    const TemporaryFolder folder;
    CHECK(found(folder, &RunOptions::shp) ==
          "WARNING - A Header.prj or Projection.prj file does not exist in folder.\n   No projection file being "
          "written.\n");
    CHECK(found(folder, &RunOptions::asc) == "");
    CHECK(PROJECTION().text.empty());

    const std::string second =
        folder.write("Projection.prj", "\xEF\xBB\xBFPROJCRS[\"a b\",\r\n    BASEGEOGCRS[\"c\"],\n\t  ID[1]]\n");
    const std::string joined = "PROJCRS[\"a b\",BASEGEOGCRS[\"c\"],ID[1]]";
    CHECK(found(folder, &RunOptions::shp) ==
          "GIS Projection being extracted from " + second + "\nshp Projection: " + joined + "\n");
    CHECK(found(folder, &RunOptions::flt) == "");
    CHECK(PROJECTION().text == joined);
    for (const char* text : {"GEOGCS[\"x\"]", "compd_cs[]", "GEOGCRS[]", "PROJCS[]"})
        CHECK(READ_PRJ(folder.write("x.prj", text)) == text);

    const std::string first = folder.write("header.prj", "Projection UTM\nZone 55\n");  // an older kind of text
    CHECK(found(folder, &RunOptions::shp) ==
          "GIS Projection being extracted from " + first +
              "\nERROR - Projection line could not be found in \"GIS Projection\" .prj file.\n\n"
              "Press Enter to Close\n<stopped>");
    CHECK(found(folder, &RunOptions::asc) ==
          "WARNING - No projection found in " + first + ", no .prj file is written.\n");
    CHECK_FALSE(READ_PRJ(folder.write("long.prj", "PROJCS" + std::string(2'000'000, ' '))));
}
