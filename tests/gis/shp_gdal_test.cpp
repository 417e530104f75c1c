// What GDAL makes of the sets that are written here, and what is read of the sets that GDAL wrote.
#include "gdal.h"

#include "gis/layer_table.h"
#include "shp_test.h"
#include "testing.h"

TEST_CASE("sets that GDAL wrote are read with the same content") {
    if (!gdalIsThere()) return;
    const std::string start = "Name Char(80);Whole Decimal(9,0);Real Decimal(24,15);When Date;|",
                      record = "\n\"a, \"\"\xC3\xA9\"\"\",7,0.500000000000000,20240229|";
    const std::tuple<std::vector<std::string>, std::string> rows[] = {
        {{"POINT (1 2)", "POINT (-3 4)"}, start + record + "1 2,/" + record + "-3 4,/"},
        {{"LINESTRING (1 2,3 4)", "MULTILINESTRING ((1 2,3 4),(5 6,7 8,9 9))"},
         start + record + "1 2,3 4,/" + record + "1 2,3 4,/5 6,7 8,9 9,/"},
        // a hole; a null shape
        {{"POLYGON ((0 0,0 9,9 9,9 0,0 0),(1 1,2 1,2 2,1 1))", "", "POLYGON ((0 0,0 1,1 1,0 0))"},
         start + record + "0 0,0 9,9 9,9 0,0 0,/1 1,2 1,2 2,1 1,/" + record + record + "0 0,0 1,1 1,0 0,/"},
        {{"MULTIPOINT (1 2,3 4)", "MULTIPOINT (5 6)"}, start + record + "1 2,3 4,/" + record + "5 6,/"},
    };
    for (const auto& [geometries, expected] : rows) {
        const LayerTest test;
        std::string csv = "WKT,Name,Whole,Real,When\n";
        for (const std::string& geometry : geometries)
            csv.append("\"").append(geometry).append("\",\"a, \"\"\xC3\xA9\"\"\",7,0.5,2024/02/29\n");
        test.folder.write("in.csv", csv);
        test.folder.write("in.csvt", "WKT,String,Integer,Real,Date");
        REQUIRE(gdalSays(test.folder, "ogr2ogr @a.shp @in.csv -lco ENCODING=UTF-8 -select Name,Whole,Real,When") == "");
        CHECK(shpReadingOf(test) == expected);
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
    CHECK(holds(said, "C119 Decimal(9,0);|\n" + line.substr(1) + "|1 1,/\n" + line.substr(1) + "|3 3,/"));
    CHECK_FALSE(holds(said, "2 2,"));
}
