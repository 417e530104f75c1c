// What GDAL makes of the sets that are written here, and what is read of the sets that GDAL wrote.
#include <doctest/doctest.h>

#include "gdal.h"
#include "gis/layer_table.h"
#include "shp_test.h"

TEST_CASE("GDAL opens every kind of set without a warning and sees the same") {
    if (!gdalIsThere()) return;
    const std::vector<GisAttribute> attributes = {{"I", "Integer"},   {"F", "Float"},
                                                  {"C", "Char(254)"}, {"D", "Decimal(12,3)"},
                                                  {"L", "Logical"},   {"Name_of_11_c", "Char(9)"}};
    const std::string fields =
        "I: Integer (8.0)\nF: Real (16.5)\nC: String (254.0)\nD: Real (12.3)\nL: String (1.0)\nName_of_11_: String "
        "(9.0)\n";
    struct {
        GisObject object;
        std::string_view geometry, wkt;
    } const rows[] = {
        {objectOf(GisKind::Point, {{1, 2}}), "Geometry: Point", "POINT (1 2)"},
        {objectOf(GisKind::MultiPoint, {{1, 2, 3, 4}}), "Geometry: Multi Point", "MULTIPOINT ((1 2),(3 4))"},
        {objectOf(GisKind::Line, {{1, 2, 3, 4}}), "Geometry: Line String", "LINESTRING (1 2,3 4)"},
        {objectOf(GisKind::PlineMultiple, {{1, 2, 3, 4}, {5, 6, 7, 8}}), "Geometry: Line String",
         "MULTILINESTRING ((1 2,3 4),(5 6,7 8))"},
        {objectOf(GisKind::Region, {{0, 0, 0, 9, 9, 9, 9, 0, 0, 0}, {1, 1, 2, 1, 2, 2, 1, 2, 1, 1}}),
         "Geometry: Polygon", "POLYGON ((0 0,0 9,9 9,9 0,0 0),(1 1,2 1,2 2,1 2,1 1))"},
    };
    for (const auto& r : rows)
        for (const bool empty : {false, true}) {
            const LayerTest test;
            gisSetProjection({"",
                              "PROJCS[\"local\",GEOGCS[\"g\",DATUM[\"d\",SPHEROID[\"s\",6378137,298.25]],PRIMEM["
                              "\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
                              "PROJECTION[\"Transverse_Mercator\"],UNIT[\"Meter\",1]]",
                              false});
            const GisHeader header = {"", "", gisShapeOf(r.object.kind), attributes};
            const std::vector<GisObject> objects(empty ? 0 : 1, r.object);
            test.writeLayer("a.shp", header, objects, {"-7,0.5,\"\xC3\xA9\xE2\x82\xAC\",,\"T\",x"});
            const std::string said = gdalSays(test.folder, "ogrinfo -al @a.shp");
            CAPTURE(said);
            CHECK(said.find("arning") == std::string::npos);
            CHECK(said.find("ERROR") == std::string::npos);
            CHECK(said.find(std::string(r.geometry) + "\nFeature Count: " + (empty ? "0" : "1")) != std::string::npos);
            CHECK(said.find("PROJCRS[\"local\"") != std::string::npos);
            CHECK(said.find(fields) != std::string::npos);
            if (empty) continue;
            CHECK(said.find("I (Integer) = -7\n  F (Real) = 0.50000\n  C (String) = \xC3\xA9\xE2\x82\xAC\n  D (Real) = "
                            "(null)\n  L (String) = T\n") != std::string::npos);
            CHECK(said.find("  " + std::string(r.wkt) + "\n") != std::string::npos);
        }
}

TEST_CASE("sets that GDAL wrote are read with the same content") {
    if (!gdalIsThere()) return;
    const std::string start = "Name Char(80);Whole Decimal(9,0);Real Decimal(24,15);When Date;|",
                      record = "\n\"a, \"\"\xC3\xA9\"\"\",7,0.500000000000000,20240229|";
    struct {
        std::vector<std::string> geometries;
        std::string expected;
    } const rows[] = {
        {{"POINT (1 2)", "POINT (-3 4)"}, start + record + "1 2,/" + record + "-3 4,/"},
        {{"LINESTRING (1 2,3 4)", "MULTILINESTRING ((1 2,3 4),(5 6,7 8,9 9))"},
         start + record + "1 2,3 4,/" + record + "1 2,3 4,/5 6,7 8,9 9,/"},
        // a hole; a null shape
        {{"POLYGON ((0 0,0 9,9 9,9 0,0 0),(1 1,2 1,2 2,1 1))", "", "POLYGON ((0 0,0 1,1 1,0 0))"},
         start + record + "0 0,0 9,9 9,9 0,0 0,/1 1,2 1,2 2,1 1,/" + record + record + "0 0,0 1,1 1,0 0,/"},
        {{"MULTIPOINT (1 2,3 4)", "MULTIPOINT (5 6)"}, start + record + "1 2,3 4,/" + record + "5 6,/"},
    };
    for (const auto& r : rows) {
        const LayerTest test;
        std::string csv = "WKT,Name,Whole,Real,When\n";
        for (const std::string& geometry : r.geometries)
            csv.append("\"").append(geometry).append("\",\"a, \"\"\xC3\xA9\"\"\",7,0.5,2024/02/29\n");
        test.folder.write("in.csv", csv);
        test.folder.write("in.csvt", "WKT,String,Integer,Real,Date");
        REQUIRE(gdalSays(test.folder, "ogr2ogr @a.shp @in.csv -lco ENCODING=UTF-8 -select Name,Whole,Real,When") == "");
        CHECK(shpReadingOf(test) == r.expected);
    }
}

TEST_CASE("a record that GDAL deleted goes with its object, and wide tables keep every column") {
    if (!gdalIsThere()) return;
    const LayerTest test;
    std::string head = "WKT", types = "WKT", line;
    for (int i = 0; i < 120; ++i) {
        head.append(",C").append(std::to_string(i));
        types += ",Integer";
        line.append(",").append(std::to_string(i));
    }
    test.folder.write("in.csv", head + "\nPOINT (1 1)" + line + "\nPOINT (2 2)" + line + "\nPOINT (3 3)" + line + "\n");
    test.folder.write("in.csvt", types);
    REQUIRE(gdalSays(test.folder, "ogr2ogr @a.shp @in.csv -select " + head.substr(4)) == "");
    REQUIRE(gdalSays(test.folder,
                     "ogrinfo @a.shp -oo AUTO_REPACK=NO -dialect sqlite -sql \"DELETE FROM a WHERE rowid = 1\"")
                .find("ERROR") == std::string::npos);
    const std::string said = shpReadingOf(test);
    CHECK(said.find("C119 Decimal(9,0);|\n" + line.substr(1) + "|1 1,/\n" + line.substr(1) + "|3 3,/") !=
          std::string::npos);
    CHECK(said.find("2 2,") == std::string::npos);
}
