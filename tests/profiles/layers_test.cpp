#include "gis/layer_test.h"

#include "profiles/calibration_points.h"
#include "profiles/comparison.h"
#include "profiles/line_layer.h"
#include "testing.h"

namespace {

std::string mif(const std::string& columns, const std::string& objects) {
    return "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n" + columns + "Data\n" + objects;
}

/// "name:vertices:length" of every line, then the messages with a severity.
std::string readLines(const std::string& file) {
    std::string said;
    const std::string console = consoleOf([&] {
        for (const ProfileLine& line : READ_PROFILE_LINES(file))
            said += line.name + ":" + std::to_string(line.x.size()) + ":" +
                    std::to_string(static_cast<int>(line.length())) + " ";
    });
    for (std::size_t at = 0, end = 0; (end = console.find('\n', at)) != std::string::npos; at = end + 1) {
        const std::string line = console.substr(at, end - at);
        if (line.starts_with("WARNING - ") || line.starts_with("Check - ")) said += line + "\n";
    }
    return said;
}

}  // namespace

TEST_CASE("READ_PROFILE_LINES takes lines and parts, and says what it passes over") {
    const LayerTest test;
    const std::string name =
        test.folder.write("river.mif", mif("Columns 2\n  Name Char(40)\n  No Integer\n",
                                           "Line 0 0 3 4\nPoint 1 1\nPline 3\n0 0\n0 0\n0 7\n"
                                           "Pline Multiple 3\n 2\n0 0\n1 0\n 3\n5 5\n5 5\n5 5\n 2\n0 0\n0 2\n"
                                           "Region 1\n 4\n0 0\n1 0\n1 1\n0 0\nLine 2 2 2 2\n"));
    test.folder.write("river.mid", "\"Main\",1\n\"P\",2\n\" \",3\n\"Side, \"\"old\"\"\",4\n\"R\",5\n\"Zero\",6\n");
    CHECK(readLines(name) ==
          "Main:2:5 LP3:2:7 Side, \"old\":2:1 Side, \"old\"_3:2:2 "
          "Check - The LP layer has 2 attributes; the first, Name, names the profiles.\n"
          "WARNING - Object 2 in LP layer is not a polyline, ignored.\n"
          "WARNING - Object 4 in LP layer has fewer than two distinct vertices, ignored.\n"
          "WARNING - Object 5 in LP layer is not a polyline, ignored.\n"
          "WARNING - Object 6 in LP layer has fewer than two distinct vertices, ignored.\n");

    const GisHeader header = headerOf("Id=Integer", GisShape::Lines);
    test.writeLayer("river.shp", header, {objectOf(GisKind::PlineMultiple, {{0, 0, 3, 4}, {9, 9, 9, 8}})}, {"12"});
    CHECK(readLines(test.folder.name("river.shp")) == "12:2:5 12_2:2:1 ");
}

TEST_CASE("A layer without anything to use stops the run, naming it") {
    const LayerTest test;
    const std::string column = "Columns 1\n  N Integer\n";
    const std::string points = test.folder.write("p.mif", mif(column, "Point 1 1\n"));
    const std::string lines = test.folder.write("l.mif", mif(column, "Line 0 0 1 1\nNone\n"));
    const std::string none = test.folder.write("n.mif", mif(column, ""));
    const std::string cut = test.folder.write("c.mif", mif(column, "Pline 3\n0 0\n1"));
    for (const auto& [file, records] :
         {std::pair{"p.mid", "1\n"}, {"l.mid", "1\n2\n"}, {"n.mid", ""}, {"c.mid", "1\n"}})
        test.folder.write(file, records);
    for (const auto& [file, lp, text] : {std::tuple{points, true, "ERROR - No polylines found in " + points},
                                         {none, true, "ERROR - No polylines found in " + none},
                                         {cut, true, std::string("ERROR 0253")},
                                         {lines, false, "ERROR - No points found in " + lines},
                                         {none, false, "ERROR - No points found in " + none},
                                         {cut, false, std::string("ERROR 0253")}}) {
        const std::string said = consoleOf([&, name = file, isLine = lp] {
            if (isLine) READ_PROFILE_LINES(name);
            else READ_CALIBRATION_POINTS(name);
        });
        CHECK(stops(said, text));
    }
}

TEST_CASE("FIND_RECORDED knows the usual fields in their order, and what counts as recorded") {
    CalibrationPoints points;
    points.x.resize(7);
    for (const char* value : {"1.5", "", "-9999", "0", "-9998.5", "n/a", "7 8"}) {
        points.objectOf.push_back(static_cast<std::int32_t>(points.objects.size()));
        points.objects.push_back({points.objectOf.back(), -1, "\"12\",2," + std::string(value)});
    }
    // 99 for none
    const std::tuple<const char*, const char*, std::vector<GisAttribute>, const char*, std::vector<double>> rows[] = {
        {"m.shp",
         "",
         {{"Obs", "Char(9)"}, {"RL", "Integer"}, {"Level", "Decimal(9,3)"}},
         "Level",
         {1.5, 99, 99, 0, -9998.5, 99, 99}},
        {"m.mif", "", {{"a", "Char(9)"}, {"b", "Integer"}, {"WL", "Float"}}, "WL", {1.5, 99, 99, 99, -9998.5, 99, 99}},
        {"m.shp", "B", {{"a", "Char(9)"}, {"b", "Integer"}, {"WL", "Float"}}, "b", {2, 2, 2, 2, 2, 2, 2}},
        {"m.shp", "", {{"a", "Char(9)"}, {"b", "Integer"}, {"c", "Float"}}, "", {}},
        {"m.shp", "x", {{"a", "Char(9)"}}, "<stopped>", {}},
        {"m.shp", "a", {{"a", "Char(9)"}}, "<stopped>", {}},
    };
    for (const auto& [file, named, attributes, field, recorded] : rows) {
        points.file = file;
        points.header.attributes = attributes;
        RecordedValues found;
        if (consoleOf([&] { found = FIND_RECORDED(points, named); }).ends_with("<stopped>")) found.field = "<stopped>";
        CHECK(found.field == field);
        for (double& value : found.value)
            if (std::isnan(value)) value = 99;
        CHECK(found.value == recorded);
    }
}
