#include "layer_test.h"

#include "testing.h"

namespace {

constexpr std::string_view MGA = "CoordSys Earth Projection 8, 116, \"m\", 147, 0, 0.9996, 500000, 10000000";

ReadLayer readHeader(const LayerTest& test, const std::string& text) {
    test.folder.write("h.mif", text);
    test.folder.write("h.mid", "");
    INITIALISE_FILES();
    return test.readLayer("h.mif");
}

}  // namespace

TEST_CASE("a header is written line by line and read back") {
    const LayerTest test;
    gisSetProjection({std::string(MGA), "", false});
    const std::string columns = "Grid Ref=Char(16);Water Level=Decimal(10, 4);Water_Level=Float;Wet=Logical";
    test.writeLayer("w.mif", headerOf(columns, GisShape::Point), {}, {});
    CHECK(test.folder.read("w.mif") == "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n" + std::string(MGA) +
                                           "\nColumns 4\n  Grid_Ref Char(16)\n  Water_Level Decimal(10,4)\n  "
                                           "Water_Level2 Float\n  Wet Logical\nData\n");
    CHECK(test.folder.read("w.mid").empty());
    const ReadLayer read = test.readLayer("w.mif");
    CHECK(holds(read.said, "MIF Fields: Name [#/Type]:\n   Grid_Ref [1/Char(16)]\n   Water_Level [2/Decimal(10,4)]\n"));
    CHECK(read.header.coordSys == MGA);
}

TEST_CASE("the extent of the run widens the bounds of a NonEarth layer") {
    const LayerTest test;
    gisSetExtent(2e7, 0, 2.1e7, 10);
    test.writeLayer("w.mif", headerOf("A=Integer"), {}, {});
    CHECK(holds(test.folder.read("w.mif"),
                "\nCoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (22000000, 9999999)\n"));
}

// Header behind its CoordSys line and what is said; "/" ends a line.
TEST_CASE("what a damaged header says") {
    const LayerTest test;
    for (const Row& row : rowsOf(R"(
COLUMNSData/ | WARNING 0306 - Problems finding CoordSys line in .mif file. | goes on
MGA/ | ERROR 0315 - Could not find start of attribute definitions in .mif file/
MGA/Columns/ | ERROR 0314 - Could not read number of attributes in .mif file/
MGA/Columns -1/Data/ | ERROR 0314 - Could not read number of attributes in .mif file/
MGA/Columns 2147483647/Data/ | ERROR 0314 - Could not read number of attributes in .mif file/
MGA/Columns 0/Data/ | ERROR 0319 - No attributes specified in .mif file./
MGA/Columns 3/  A Integer/Data/ | ERROR 0316 - Could not read attribute definitions in .mif file/
MGA/Columns 3/  A Integer/ | ERROR 0316 - Could not read attribute definitions in .mif file/
MGA/COLUMNSPoint 1 1/ | ERROR 0313 - Could not find start of "Data" block in .mif file./
MGA/Transform 100, 100, 0, 0/COLUMNSData/ | ERROR 0308 - Reading .mif file.  Erroneous line is:/Transform 100, 100, 0, 0/
MGA/Transform 0, 0, 0, 0/COLUMNSData/ | B [2|goes on
)")) {
        gisInitialise();
        const std::string text =
            replaced(replaced(row[0], "COLUMNS", "Columns 2/  A Integer/  B  Char ( 5 )/"), "/", "\n");
        const auto& [said, header, objects, records] = readHeader(test, replaced(text, "MGA", std::string(MGA)));
        CHECK_MESSAGE(holds(said, replaced(row[1], "/", "\n")), said);
        CHECK(said.ends_with("<stopped>") == row[2].empty());
        CHECK(holds(said, "h.mif"));
        if (row[2].empty()) continue;
        CHECK(header.attributes[1].type == "Char(5)");
        if (holds(row[1], "0306"))
            CHECK(header.coordSys == "CoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (9999999, 9999999)");
    }
}

TEST_CASE("an input in another coordinate system stops the run, or warns when that is asked for") {
    const LayerTest test;
    const std::string text = std::string(MGA) + " Bounds (-1, -1) (9, 9)\nColumns 1\n  A Integer\nData\n";
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"coordsys earth  projection 8, 116.0, \"M\", 147, 0, .99960, 5e5,10000000 Bounds (0, 0) (8, 8)", false, ""},
        {"", false, ""},  // only the NonEarth fallback
        {"CoordSys Earth Projection 1, 104", false,
         "\nERROR 0305 - Projection of .mif file is different to that of the "},
        {"CoordSys Earth Projection 1, 104", true, "\nWARNING 0305 - Projection of .mif file is different to that of "},
    };
    for (const auto& [run, warn, expected] : rows) {
        gisInitialise();
        gisSetProjection({run, "", warn});
        const auto& [said, header, objects, records] = readHeader(test, text);
        CHECK(holds(said, expected));
        CHECK(holds(said, "0305") == (*expected != '\0'));
        CHECK(said.ends_with("   The run: " + std::string(run) +
                             "\nUse -prjwarn to change message to a WARNING.\n\nPress Enter to Close\n<stopped>") ==
              holds(expected, "ERROR"));
        if (!holds(expected, "ERROR")) CHECK(header.bounds == "Bounds (-1, -1) (9, 9)");
    }
}
