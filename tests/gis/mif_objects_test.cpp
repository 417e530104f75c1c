#include "layer_test.h"

#include "gis/layer_table.h"
#include "testing.h"

namespace {

const GisHeader ONE_COLUMN = headerOf("ID=Integer");
constexpr std::string_view HEADER =
    "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n"
    "CoordSys NonEarth Units \"m\" Bounds(-9999999, -9999999) (9999999, 9999999)\nColumns 1\n  ID Integer\nData\n";

/// Objects of every kind as the format has them; "~" is eight blanks, "/" ends a line.
std::vector<std::pair<GisObject, std::string>> everyKind() {
    std::vector<std::pair<GisObject, std::string>> cases = {
        {objectOf(GisKind::Point, {{1234.5, -7.25}}), "Point      1234.500000       -7.250000/"},
        {objectOf(GisKind::MultiPoint, {{1, 2, 3, 4}}), "MultiPoint 2/~1.000000~2.000000/~3.000000~4.000000/"},
        {objectOf(GisKind::Line, {{0, 0, 10.5, 20}}), "Line ~0.000000~0.000000       10.500000       20.000000/"},
        {objectOf(GisKind::Pline, {{1, 2, 3, 4, 512000.123456, 6250000.654321}}),
         "Pline 3/~1.000000~2.000000/~3.000000~4.000000/   512000.123456  6250000.654321/"},
        {objectOf(GisKind::PlineMultiple, {{0, 0, 1, 1}, {2, 2, 3, 3, 4, 4}}),
         "Pline Multiple 2/ 2/~0.000000~0.000000/~1.000000~1.000000/ 3/~2.000000~2.000000/~3.000000~3.000000/"
         "~4.000000~4.000000/"},
        {objectOf(GisKind::Region, {{0, 0, 0, 9, 9, 9, 9, 0, 0, 0}, {1, 1, 2, 1, 2, 2, 1, 2, 1, 1}}),
         "Region 2/ 5/~0.000000~0.000000/~0.000000~9.000000/~9.000000~9.000000/~9.000000~0.000000/~0.000000~0.000000/"
         " 5/~1.000000~1.000000/~2.000000~1.000000/~2.000000~2.000000/~1.000000~2.000000/~1.000000~1.000000/"},
        {objectOf(GisKind::None, {}), "none/"},
        // would run together in 16 places
        {objectOf(GisKind::Point, {{1e8, -1e7}}), "Point  100000000.000000 -10000000.000000/"},
        {objectOf(GisKind::Text, {{1, 2, 3.5, 4}}),
         "Text/\"Sill \"\"A\"\", 5\xB0\"/               1.000           2.000           3.500           4.000/"},
    };
    cases.back().first.text = "Sill \"A\", 5\xC2\xB0";
    return cases;
}

/// What reading this .mif (behind a header) and .mid says, without the lines every layer says.
std::string readingOf(const std::string& objects, const std::string& records, bool drop = false) {
    const LayerTest test;
    test.folder.write("x.mif", std::string(HEADER) + objects);
    test.folder.write("x.mid", records);
    auto [said, header, read, lines] = test.readLayer("x.mif", drop);
    said.erase(0, said.find("[1/Integer]\n") + 12);
    if (const auto closing = said.find("Closing GIS Layer"); closing != std::string::npos) said.erase(closing);
    if (const auto leaving = said.find("\n\nPress Enter"); leaving != std::string::npos)
        said.replace(leaving, std::string::npos, "<stopped>");
    said = replaced(said, test.folder.name(""), "");
    for (const GisObject& o : read)
        said +=
            std::string(gisKindName(o.kind)) + " " + std::to_string(o.nr) + " " + std::to_string(o.vertexCount()) + ";";
    return said;
}

}  // namespace

TEST_CASE("every kind is written as the format has it and reads back equal") {
    const LayerTest test;
    std::vector<GisObject> objects;
    std::vector<std::string> records;
    std::string expected(HEADER);
    std::string lines;
    for (const auto& [object, text] : everyKind()) {
        objects.push_back(object);
        records.push_back(std::to_string(objects.size()));
        expected += replaced(replaced(text, "/", "\n"), "~", "        ");
        lines += records.back() + "\n";
    }
    test.writeLayer("a.MIF", ONE_COLUMN, objects, records);
    CHECK(test.folder.read("a.MIF") == expected);
    CHECK(test.folder.read("a.mid") == lines);

    const ReadLayer read = test.readLayer("a.MIF");
    CHECK(read.records == records);
    for (std::size_t i = 0; i < objects.size(); ++i) CHECK_MESSAGE(sameGeometry(read.objects.at(i), objects[i]), i);
}

// Objects, records and what is said; "/" ends a line.
TEST_CASE("objects as other programs write them, and what a damaged layer says") {
    const auto check = [](const std::string& objects, const std::string& records, const std::string& said) {
        const auto lines = [](const std::string& text) {
            return replaced(replaced(replaced(text, "/", "\n"), "\\r", "\r"), "\\t", "\t");
        };
        CHECK(readingOf(lines(objects), lines(records)) ==
              replaced(replaced(said, "COORDINATES", "/ERROR 0253 - Failed to read coordinates for a"), "/", "\n"));
    };
    for (const Row& row : rowsOf(R"(
POINT 1 2/    Symbol (35,0,12)/NONE/pline\t multiple 2/3/0 0/1 1/2 2/4/3 3/4 4/5 5/6 6/    Pen (1,2,0)/    Smooth/ \
    | 1/2/3/ | POINT 1 1;NONE 0 0;PLINE MULTIPLE 2 7;
Region  1\r/  5\r/0 0\r/1e0 0\r/1 1\r/0 1d0\r/0 0\r/    Pen (1,2,0)\r/    Brush (2,16777215,16777215)\r/\
    Center 0.5 0.5 | 1\r/ | REGION 1 5;
Pline/2/0 0/1 1/RECT 0 0 1 1/Roundrect 0 0 1 1/ 0.5/Arc 0 0 1 1/ 0 90/Ellipse 0 0 2 1/Text "a"/ 0 0 1 1/\
    Font ("Arial",0,0,0)/ | 1/2/3/4/5/6// | PLINE 1 2;RECT 1 2;ROUNDRECT 1 2;ARC 1 2;ELLIPSE 1 2;TEXT 1 2;
 | |
Collection 2/ | 1/ | ERROR 0303 - MIF "Collection" objects not supported.  Delete or disaggregate object./   x.mif, line 8<stopped>
Region 10001/ | 1/ | ERROR 0304 - Exceeded maximum number of polygons in region below of 10000/Region 10001/   x.mif, line 8\
    COORDINATES REGION object in GIS layer.<stopped>
Point 1 x/ | 1/ | ERROR 0308 - Reading .mif file.  Erroneous line is:/ 1 x/   x.mif, line 8COORDINATES POINT object in GIS layer.<stopped>
Point 1 nan/ | 1/ | ERROR 0308 - Reading .mif file.  Erroneous line is:/ 1 nan/   x.mif, line 8COORDINATES POINT object in GIS layer.<stopped>
Pline 2/0 0/1 1 1/ | 1/ | ERROR 0308 - Reading .mif file.  Erroneous line is:/1 1 1/   x.mif, line 10COORDINATES PLINE object in GIS layer.<stopped>
Pline -1/0 0/ | 1/ | ERROR 0308 - Reading .mif file.  Erroneous line is:/ -1/   x.mif, line 8COORDINATES PLINE object in GIS layer.<stopped>
Pline 3/0 0/1 1/ | 1/ | ERROR 0309 - Unexpected end of .mif file encountered./   x.mif, line 11COORDINATES PLINE object in GIS layer.<stopped>
Pline 40000000/0 0/ | 1/ | ERROR 0309 - Unexpected end of .mif file encountered./   \
    40000000 vertices are announced, more than the rest of the file holds./   x.mif, line 8COORDINATES PLINE object in GIS layer.<stopped>
Pline 50000001/0 0/ | 1/ | ERROR 0310 - Exceeded number of allowable nodes in a single polyline or region./Requested 50000001/\
    Limit 50000000/   x.mif, line 8COORDINATES PLINE object in GIS layer.<stopped>
Pline Multiple 2/ 1/0 0/ 50000000/ | 1/ | ERROR 0310 - Exceeded number of allowable nodes in a single polyline or region./Requested 50000001/\
    Limit 50000000/   x.mif, line 11COORDINATES PLINE MULTIPLE object in GIS layer.<stopped>
Pline Multiple 2147483647/ 1/0 0/ | 1/ | ERROR 0309 - Unexpected end of .mif file encountered./   x.mif, line 11\
    COORDINATES PLINE MULTIPLE object in GIS layer.<stopped>
Region 1/ 4/0 0/0 1/1 1/0 0/ | 1/ | ERROR 0318 - Less than 5 points for Region object in mif file./   x.mif, line 9\
    COORDINATES REGION object in GIS layer.<stopped>
Multipoint x/ | 1/ | ERROR 0308 - Reading .mif file.  Erroneous line is:/ x/   x.mif, line 8<stopped>
Point 1 1/Poi | 1/2/ | ERROR 0322 - End of .mif file encountered whilst reading object type./   \
    x.mid holds records beyond the last object./   x.mif, line 10<stopped>POINT 1 1;
)"))
        check(row[0], row[1], row[2]);
    check("Point 1 1/Point 2 2/", "1/",
          "   x.mid, line 2/   The file ends before the record of the last object./ERROR 0254 - Failed to read object "
          "attribute data record for a POINT object in GIS layer.<stopped>POINT 1 1;");
    check("Point 1 1/", std::string(LONGEST_LINE + 1, 'x'),
          "   x.mid, line 1/   The line is longer than 100000 characters./ERROR 0254 - Failed to read object attribute "
          "data record for a POINT object in GIS layer.<stopped>");
    // profile readers drop short regions with their records
    CHECK(readingOf("Region 2\n 5\n0 0\n0 1\n1 1\n1 0\n0 0\n 4\n0 0\n0 1\n1 1\n0 0\nPoint 1 1\n", "1\n2\n", true) ==
          "WARNING 0318 - Insufficient points for Region object in mif file.  Region ignored.\n   x.mif, line "
          "15\nPOINT 1 1;");
}

TEST_CASE("records keep their values whatever the delimiter and the character set") {
    const LayerTest test;
    const std::string comma = "Delimiter \",\"\n", latin = "Charset \"WindowsLatin1\"\n" + comma;
    const std::tuple<std::string, int, std::string, std::string> rows[] = {
        {latin, 2, "\"Caf\xE9, A\",1", "\"Caf\xC3\xA9, A\",1"},
        {"Charset \"Neutral\"\n" + comma, 1, "\"Caf\xE9\"", "\"Caf\xC3\xA9\""},
        {"Charset \"WindowsLatin2\"\n" + comma, 1, "\"\xA3\"", "\"\xC5\x81\""},
        // longer than what is converted at once
        {"Charset \"WindowsLatin2\"\n" + comma, 1, "\"" + std::string(300, '\xA3') + "\"",
         "\"" + replaced(std::string(300, 'L'), "L", "\xC5\x81") + "\""},
        {"Charset \"CodePage866\"\n" + comma, 1, "\"\x86\"", "\"\xD0\x96\""},
        {latin, 1, "\xEF\xBB\xBF\"\xC5\x81\"", "\"\xC5\x81\""},  // a mark
        {"Charset \"Neutral\"\nDelimiter \";\"\n", 3, "\"Caf\xC3\xA9; A\";1,5;", "\"Caf\xC3\xA9; A\",\"1,5\","},
        {comma, 2, "1", ""},                                          // a value is missing
        {comma, 2, "\"a,\"\"b\",,3,4", "\"a,\"\"b\","},               // two too many
        {"", 3, "\t\"say \"\"hi\"\"\"\t2", ",\"say \"\"hi\"\"\",2"},  // a tab when the header does not say
    };
    for (const auto& [head, columns, record, line] : rows) {
        const std::string definitions =
            std::string("  C Integer\n  B Integer\n  A Integer\n").substr(36U - 12U * unsigned(columns));
        test.folder.write("x.mif", "Version 300\n" + head + "Columns " + std::to_string(columns) + "\n" + definitions +
                                       "Data\nnone\n");
        test.folder.write("x.mid", record + "\n");
        const auto& [said, header, objects, records] = test.readLayer("x.mif");
        if (line.empty()) CHECK(holds(said, "x.mid, line 1\n   The line has 1 of 2 values.\nERROR 0254 - "));
        else CHECK(records == std::vector<std::string>{line});
    }
    const std::string large = "\"" + std::string(5000, 'x') + "\",\"\xE6\xB0\xB4\"";
    const GisObject point = objectOf(GisKind::Point, {{1, 1}});
    const std::string said = test.writeLayer("y.mif", ONE_COLUMN, {point, point}, {large, large});
    CHECK(test.folder.read("y.mid") ==
          "\"" + std::string(5000, 'x') + "\",\"?\"\n\"" + std::string(5000, 'x') + "\",\"?\"\n");
    CHECK(countOf(said, "WARNING") == 1);  // once a layer
}

TEST_CASE("what the writer refuses") {
    const LayerTest test;
    const double nan = std::numeric_limits<double>::quiet_NaN(), infinite = std::numeric_limits<double>::infinity();
    const GisHeader points = headerOf("ID=Integer", GisShape::Point), two = headerOf("A=Integer;B=Integer");
    const GisObject point = objectOf(GisKind::Point, {{1, 1}}), line = objectOf(GisKind::Pline, {{0, 0, 1, 1}});
    GisObject gap = objectOf(GisKind::Pline, {{0, 0, 1, 1}, {2, 2}});
    gap.ir[2] = 2;
    const std::string coordinates = "ERROR 0439 - Writing .mif file object coordinates.\n",
                      record = " for a POINT object in";
    const std::tuple<GisHeader, GisObject, std::string, std::string> rows[] = {
        {ONE_COLUMN, objectOf(GisKind::Point, {{1, nan}}), "1", coordinates},
        {ONE_COLUMN, objectOf(GisKind::Point, {{infinite, 1}}), "1", coordinates},
        {ONE_COLUMN, objectOf(GisKind::Ellipse, {{0, 0, 1, 1}}), "1",
         "ERROR 0350 - Trying to write a MIF object that is"},
        {ONE_COLUMN, gap, "1",
         "gisO_%ir(i-1)] - please contact the maintainers (see README)\nGIS Layer   = 1\ni           "
         "= 2\ngisO_%ir(i) = 2\ngisO_%nr    = 2\n"},
        {points, line, "1", "Should not be here [gisWriteObject-mif].  Please contact "},
        {ONE_COLUMN, point, "a\nb", "ERROR 0254 - Failed to write attribute data record" + record},
        {ONE_COLUMN, point, std::string(LONGEST_LINE, 'x'),
         "ERROR 0254 - Failed to write large attribute data record" + record},
        {two, point, "1", "r.mid, line 1\n   The line has 1 of 2 values.\nERROR 0254 - "},
        {GisHeader{}, point, "1", "ERROR 0319 - No attributes specified in .mif file.\n"},
    };
    for (const auto& [header, object, written, expected] : rows) {
        gisInitialise();
        INITIALISE_FILES();
        const std::string said = test.writeLayer("r.mif", header, {object}, {written});
        CHECK_MESSAGE(stops(said, expected), said);
    }
}

TEST_CASE("a layer that would pass the size GIS packages open stops the run and is not kept") {
    for (const std::size_t file : {0U, 1U}) {
        const LayerTest test;
        const std::string said = consoleOf([&] {
            const auto id = gisOpenLayer(test.folder.name("big.mif"), "R", "O ");
            gisHeader(id) = ONE_COLUMN;
            gisWriteHeader(id);
            GisObject o = objectOf(GisKind::Point, {{1, 2}});
            gisWriteObject(id, o);
            gisWriteRecord(id, "1");
            gisEntry(id).files[file].bytes =
                MOST_FILE_BYTES - (file == 0 ? 38 : 99999);  // one byte short of a point, of the longest record
            gisWriteObject(id, o);
        });
        CHECK(stops(said,
                    "ERROR - " + test.folder.name(file == 0 ? "big.mif" : "big.mid") + " would pass 2147483647 bytes"));
        CHECK(std::filesystem::is_empty(test.folder.name("")));
    }
}
