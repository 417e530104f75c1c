#include "services/projection.h"

#include "platform/shared_library.h"
#include "services/files.h"
#include "testing.h"

namespace {
using Need = ProjectionNeed;
constexpr ProjectionUse MIF = {Need::Wanted, Need::None}, SHP = {Need::None, Need::Wanted};
constexpr ProjectionUse GRID = {Need::None, Need::Taken}, BOTH = {Need::Taken, Need::Taken};

Projection projection;

std::string found(const TemporaryFolder& folder, ProjectionUse use) {
    INITIALISE_FILES();
    return consoleOf([&] { projection = FIND_PROJECTION(folder.name("x_h.dat"), use); });
}
}  // namespace

TEST_CASE("A -mif run keeps the CoordSys line of Header.mif, else of Projection.mif") {
    const TemporaryFolder folder;
    CHECK(found(folder, MIF) ==
          "WARNING - A Header.mif or Projection.mif file does not exist in folder.\n"
          "          Non-Earth Coordinates will be used.\n");
    CHECK(projection.coordSys.empty());
    const std::string line = "COORDSYS Earth Projection 8, 116, \"m\", 153, 0, 0.9996, 500000, 10000000";
    // Found as it stands on the disk, or, where case does not count there, as it was looked for.
    std::string second = folder.write("PROJECTION.MIF", "Version 300\r\n  " + line + " \r\nCoordSys NonEarth\r\n");
    if (ON_WINDOWS) second = folder.name("Projection.mif");
    CHECK(found(folder, MIF) == "Using " + second + " for setting projection.\nmif Projection: " + line + "\n");
    CHECK(projection.coordSys == line);
    const std::string first = folder.write("Header.mif", "Version 300\n");
    CHECK(found(folder, MIF) == "Using " + first +
                                    " for setting projection.\nERROR - Unable to find CoordSys line in " + first +
                                    "\n\nPress Enter to Close\n<stopped>");
    CHECK(NAME_IN_USE(folder.name("header.MIF")));  // no output may replace it
}

TEST_CASE("A .prj file is read whole; grids take it quietly") {
    const TemporaryFolder folder;
    CHECK(found(folder, SHP) ==
          "WARNING - A Header.prj or Projection.prj file does not exist in folder.\n   No projection file being "
          "written.\n");
    CHECK(found(folder, GRID) == "");
    CHECK(projection.prj.empty());

    const std::string second =
        folder.write("Projection.prj", "\xEF\xBB\xBFPROJCRS[\"a b\",\r\n    BASEGEOGCRS[\"c\"],\n\t  ID[1]]\n");
    const std::string joined = "PROJCRS[\"a b\",BASEGEOGCRS[\"c\"],ID[1]]";
    CHECK(found(folder, SHP) == "GIS Projection being extracted from " + second + "\nshp Projection: " + joined + "\n");
    for (const ProjectionUse use : {GRID, BOTH}) {
        CHECK(found(folder, use) == "Using " + second + " for setting projection.\n");
        CHECK(projection.prj == joined);
    }
    std::string first = folder.write("header.prj", "Projection UTM\nZone 55\n");  // an older kind of text
    if (ON_WINDOWS) first = folder.name("Header.prj");
    CHECK(found(folder, SHP) == "GIS Projection being extracted from " + first +
                                    "\nERROR - Projection line could not be found in \"GIS Projection\" .prj file."
                                    "\n\nPress Enter to Close\n<stopped>");
    const std::string header = folder.write("Header.mif",
                                            "\xEF\xBB\xBF"
                                            "CoordSys Earth\n");
    CHECK(found(folder, BOTH) == "Using " + header + " for setting projection.\nUsing " + first +
                                     " for setting projection.\nWARNING - Unable to find PROJCS line in " + first +
                                     "\n");
    CHECK(projection.geographic());
    CHECK(READ_PRJ(folder.write("long.prj", "PROJCS" + std::string(2'000'000, ' '))).empty());
}

TEST_CASE("Projection texts are told apart") {
    using Kind = CoordinateKind;
    const std::pair<const char*, Kind> rows[] = {
        {"", Kind::Unknown},
        {"LOCAL_CS[]", Kind::Unknown},
        {"CoordSys Earth Projection 1, 104", Kind::Geographic},
        {"COORDSYS EARTH PROJECTION 1,104 Bounds (0, 0) (8, 1)", Kind::Geographic},
        {"CoordSys Earth Projection 12, 62, \"m\", 0", Kind::Projected},  // begins with a 1
        {"CoordSys NonEarth Units \"m\"", Kind::NonEarth},
        {"CoordSys Earth", Kind::Geographic},
        {"PROJCS[\"x\",GEOGCS[\"y\"]]", Kind::Projected},
        {"PROJCRS[\"x\",BASEGEOGCRS[\"y\"]]", Kind::Projected},
        {"GEOGCRS[\"WGS 84\"]", Kind::Geographic},
        {"COMPD_CS[\"a\",GEOGCS[\"y\"],VERT_CS[\"z\"]]", Kind::Geographic},
        {"compd_cs[]", Kind::Projected},
    };
    for (const auto& [text, kind] : rows) CHECK_MESSAGE((COORDINATE_KIND(text) == kind), text);
}

TEST_CASE("Projections are compared word by word, numbers as numbers") {
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"CoordSys Earth Projection 8, 33, \"m\", -0.50", " COORDSYS Earth  Projection 8,\t33.0,\"M\" , -.5 ", true},
        {"CoordSys NonEarth Units \"m\" Bounds (0, 0) (1, 2)", "CoordSys NonEarth Units \"m\"", true},
        {"CoordSys NonEarth Units \"m\"", "CoordSys NonEarth Units \"ft\"", false},
        {"CoordSys Earth Projection 8, 33", "CoordSys Earth Projection 8, 33, 1", false},
        {"CoordSys Earth Projection 8 33", "CoordSys Earth Projection 833", false},
        {"SPHEROID[\"GRS 1980\",6378137,298.257222101]", "SPHEROID[\"GRS1980\",6378137.0,298.2572221010042]", true},
        {"SPHEROID[\"x\",6378137,298.257222101]", "SPHEROID[\"x\",6378137,298.257223563]", false},  // WGS 84
        {"ID[\"EPSG\",1e7]", "ID[\"EPSG\",10000000]", true},
        {"ID[\"1e7\"]", "ID[\"10000000\"]", false},  // a text
        {"NAME[\"Bounds\",1]", "NAME[\"Bounds\",2]", false},
    };
    for (const auto& [a, b, same] : rows) CHECK_MESSAGE(SAME_PROJECTION(a, b) == same, b);
}
