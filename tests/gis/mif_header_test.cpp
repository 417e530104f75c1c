#include "layer_test.h"

#include "gis/mif_header.h"

#include <doctest/doctest.h>

namespace {

bool says(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

constexpr std::string_view MGA = "CoordSys Earth Projection 8, 116, \"m\", 147, 0, 0.9996, 500000, 10000000";

std::string readHeader(const LayerTest& test, const std::string& text, GisHeader& header) {
    test.folder.write("h.mif", text);
    test.folder.write("h.mid", "");
    std::vector<GisObject> objects;
    std::vector<std::string> records;
    INITIALISE_FILES();
    return test.readLayer("h.mif", objects, records, header);
}

}  // namespace

TEST_CASE("a header is written line by line and read back") {
    const LayerTest test;
    gisSetProjection({std::string(MGA), "", false});
    const GisHeader header = {
        "",
        "",
        GisShape::Point,
        {{"Grid Ref", "Char(16)"}, {"Water Level", "Decimal(10, 4)"}, {"Water_Level", "Float"}, {"Wet", "Logical"}}};
    test.writeLayer("w.mif", header, {}, {});
    CHECK(test.folder.read("w.mif") == "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n" + std::string(MGA) +
                                           "\nColumns 4\n  Grid_Ref Char(16)\n  Water_Level Decimal(10,4)\n  "
                                           "Water_Level2 Float\n  Wet Logical\nData\n");
    CHECK(test.folder.read("w.mid").empty());
    std::vector<GisObject> objects;
    std::vector<std::string> records;
    GisHeader read;
    const std::string said = test.readLayer("w.mif", objects, records, read);
    CHECK(says(said, "MIF Fields: Name [#/Type]:\n   Grid_Ref [1/Char(16)]\n   Water_Level [2/Decimal(10,4)]\n"));
    CHECK(read.coordSys == MGA);
}

TEST_CASE("the extent of the run widens the bounds of a NonEarth layer") {
    const LayerTest test;
    gisSetExtent(2e7, 0, 2.1e7, 10);
    test.writeLayer("w.mif", {"", "", GisShape::Any, {{"A", "Integer"}}}, {}, {});
    CHECK(says(test.folder.read("w.mif"),
               "\nCoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (22000000, 9999999)\n"));
}

TEST_CASE("what a damaged header says") {
    const LayerTest test;
    const std::string columns = "Columns 2\n  A Integer\n  B  Char ( 5 )\n";
    struct {
        std::string text, said;
        bool stops;
    } const rows[] = {
        {columns + "Data\n", "WARNING 0306 - Problems finding CoordSys line in .mif file.\n", false},
        {std::string(MGA) + "\n", "ERROR 0315 - Could not find start of attribute definitions in .mif file\n", true},
        {std::string(MGA) + "\nColumns\n", "ERROR 0314 - Could not read number of attributes in .mif file\n", true},
        {std::string(MGA) + "\nColumns -1\nData\n", "ERROR 0314 - Could not read number of attributes in .mif file\n",
         true},
        {std::string(MGA) + "\nColumns 2147483647\nData\n",
         "ERROR 0314 - Could not read number of attributes in .mif file\n", true},
        {std::string(MGA) + "\nColumns 0\nData\n", "ERROR 0319 - No attributes specified in .mif file.\n", true},
        {std::string(MGA) + "\nColumns 3\n  A Integer\nData\n",
         "ERROR 0316 - Could not read attribute definitions in .mif file\n", true},
        {std::string(MGA) + "\nColumns 3\n  A Integer\n",
         "ERROR 0316 - Could not read attribute definitions in .mif file\n", true},
        {std::string(MGA) + "\n" + columns + "Point 1 1\n",
         "ERROR 0313 - Could not find start of \"Data\" block in .mif file.\n", true},
        {std::string(MGA) + "\nTransform 100, 100, 0, 0\n" + columns + "Data\n",
         "ERROR 0308 - Reading .mif file.  Erroneous line is:\nTransform 100, 100, 0, 0\n", true},
        {std::string(MGA) + "\nTransform 0, 0, 0, 0\n" + columns + "Data\n", "B [2/Char(5)]", false},
    };
    for (const auto& r : rows) {
        gisInitialise();
        GisHeader header;
        const std::string said = readHeader(test, r.text, header);
        CHECK_MESSAGE(says(said, r.said), said);
        CHECK(said.ends_with("<stopped>") == r.stops);
        CHECK(says(said, "h.mif"));
        if (says(r.said, "0306"))
            CHECK(header.coordSys == "CoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (9999999, 9999999)");
    }
}

TEST_CASE("an input in another coordinate system stops the run, or warns when that is asked for") {
    const LayerTest test;
    const std::string text = std::string(MGA) + " Bounds (-1, -1) (9, 9)\nColumns 1\n  A Integer\nData\n";
    GisHeader header;
    gisSetProjection({"coordsys earth  projection 8, 116, \"M\", 147, 0, 0.9996, 500000, 10000000", "", false});
    CHECK(!says(readHeader(test, text, header), "0305"));
    CHECK(header.bounds == "Bounds (-1, -1) (9, 9)");
    gisSetProjection({"CoordSys Earth Projection 1, 104", "", false});
    std::string said = readHeader(test, text, header);
    CHECK(
        says(said,
             "ERROR 0305 - Projection of .mif file is different to that specified by the MI Projection == command.\n"));
    CHECK(says(said, "Use \"MI Projection Check == WARNING\" to change message to a WARNING.\n"));
    CHECK(said.ends_with("<stopped>"));
    gisInitialise();
    gisSetProjection({"CoordSys Earth Projection 1, 104", "", true});
    said = readHeader(test, text, header);
    CHECK(says(
        said,
        "WARNING 0305 - Projection of .mif file is different to that specified by the MI Projection == command.\n"));
    CHECK(says(said, "Closing GIS Layer 1"));
}

TEST_CASE("header utilities") {
    const LayerTest test;
    const std::string none = test.folder.write("none.mif", "Version 300\nData\nText\n\"CoordSys\"\n");
    const std::string some =
        test.folder.write("some.mif", "Version 300\n  " + std::string(MGA) + "  \nColumns x\nData\n");
    std::string line;
    CHECK(consoleOf([&] { line = mifReadCoordSysLine(some); }).empty());
    CHECK(line == MGA);
    CHECK(consoleOf([&] {
              line = mifReadCoordSysLine(none);
          }).starts_with("WARNING 0312 - Problems finding CoordSys line in .mif file\n"));
    CHECK(line == "CoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (9999999, 9999999)");
    const std::string absent = test.folder.name("absent.mif");
    CHECK(consoleOf([&] { line = mifReadCoordSysLine(absent); }) ==
          "WARNING 0307 - No MapInfo Projection or mif header file " + absent +
              " found.\n               Non-Earth Coordinates will be used.  [mifReadCoordSysLine]\n");

    const int source = OPEN_FILE(some, "I ", "mif");
    const int target = OPEN_FILE(test.folder.name("copy.mif"), "O ", "mif");
    CHECK(consoleOf([&] { mifCopyHeader(source, target); }) ==
          "Copying header info from file unit " + std::to_string(source) + " to " + std::to_string(target) + "...\n");
    CLOSE_FILE(target);
    CHECK(test.folder.read("copy.mif") == "Version 300\n  " + std::string(MGA) + "  \n");

    std::vector<GisAttribute> attributes;
    struct {
        std::function<void()> step;
        const char* said;
    } const tolerant[] = {
        {[&] { mifReadColumnsCount(source, MifTrouble::Warn); },
         "WARNING 0315 - Problems finding start of attribute definitions in .mif file\n"},
        {[&] { mifReadFieldDefinitions(source, 1, attributes, MifTrouble::Warn); },
         "WARNING 0316 - Problems reading attribute definition in .mif file\n"},
        {[&] { mifFindDataLine(source, MifTrouble::Warn); },
         "WARNING 0313 - Problems finding start of data in .mif file\n"},
        {[&] {
             CHECK(SEEK_FILE(source, 0));
             mifReadColumnsCount(source, MifTrouble::Warn);
         },
         "WARNING 0314 - Problems reading number of attributes in .mif file\n"},
        {[&] {
             mifFindDataLine(source, MifTrouble::Warn);
             miCopyHeader(source, source);
         },
         "ERROR 0302 - End of File encountered (miCopyHeader)\n"},
    };
    CHECK(consoleOf([&] { mifFindDataLine(source, MifTrouble::Stop); }).empty());
    for (const auto& r : tolerant) CHECK(says(consoleOf(r.step), r.said));
}
