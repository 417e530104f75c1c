#include "shp_test.h"

#include "gis/layer_table.h"
#include "testing.h"

namespace {

const GisHeader TWO_COLUMNS = headerOf("ID=Integer;Name=Char(4)");
constexpr std::size_t DBF_START = 32 + 2 * 32 + 1, DBF_RECORD = 13;

/// Three objects with records 1 to 3, ready to be damaged.
void writeThree(const LayerTest& test, const GisObject& o) {
    test.writeLayer("a.shp", TWO_COLUMNS, {o, o, o}, {"1,\"a\"", "2,\"b\"", "3,\"c\""});
}
// 52 + 80 bytes of content
const GisObject PLINE = objectOf(GisKind::PlineMultiple, {{1, 1, 2, 2}, {3, 3, 4, 4, 5, 5}});
const GisObject POINT = objectOf(GisKind::Point, {{1, 2}});

}  // namespace

TEST_CASE("every kind and attribute type reads back equal, and again after a rewind") {
    const GisObject objects[] = {
        objectOf(GisKind::Point, {{512000.123456, -6250000.654321}}),
        objectOf(GisKind::MultiPoint, {{1, 2, 3, 4, 1, 2}}),
        objectOf(GisKind::Pline, {{0.1, 0.2, 1e300, -1e-300}}),
        PLINE,
        objectOf(GisKind::Region, {{0, 0, 0, 9, 9, 9, 9, 0, 0, 0}, {1, 1, 2, 1, 2, 2, 1, 1}}),
    };
    const std::string record = "-12,\"a, \"\"b\"\" \xC3\xA9\",1.50000,2.25,\"T\"";
    for (const GisObject& o : objects) {
        const LayerTest test;
        const std::string columns = "I=Integer;C=Char(9);F=Float;D=Decimal(9,2);L=Logical";
        test.writeLayer("a.shp", headerOf(columns, gisShapeOf(o.kind)), {o}, {record});
        consoleOf([&] {
            const auto id = gisOpenLayer(test.folder.name("a.shp"), "R", "I ");
            gisReadHeader(id);
            CHECK(gisHeader(id).shape == gisShapeOf(o.kind));
            CHECK(columnsOf(gisHeader(id)) == "I Integer;C Char(9);F Float;D Decimal(9,2);L Char(1);");
            for (int pass = 0; pass < 2; ++pass) {
                GisObject read;
                std::string line;
                CHECK(gisObjectType(id, read));
                CHECK(read.sectionCount == (o.kind == GisKind::MultiPoint ? 3 : o.nr > 1 ? o.nr : 0));
                CHECK((gisReadObject(id, read) && sameGeometry(read, o)));
                CHECK((gisReadRecord(id, line) && line == record));
                CHECK(!gisObjectType(id, read));
                gisGotoBeginningOfData(id);
            }
            gisCloseLayer(id);
        });
    }
}

// File ("both": .shp and .shx), place, bytes, what is said or read ("$" ends a line), why.
TEST_CASE("what a record or header says wrongly is found, and what is odd is read") {
    const auto check = [](const std::string& place, std::size_t at, const std::string& bytes, std::string expected) {
        const LayerTest test;
        writeThree(test, PLINE);
        for (const std::string file : {"a.shp", "a.shx", "a.dbf"}) {
            if (place != file && (place != "both" || file == "a.dbf")) continue;
            const std::string by = shpBytesOf(bytes);
            test.folder.write(file, test.folder.read(file).replace(at, by.size(), by));
        }
        expected = replaced(expected, "BAD",
                            "ERROR 0429 - Reading .shp file object coordinates.$ERROR 0253 - Failed to read "
                            "coordinates for a PLINE MULTIPLE object in GIS layer.");
        expected = replaced(expected, "OUTSIDE", "a.shx disagrees with the .shp file on object ");
        expected =
            replaced(replaced(expected, "NULL", "BAR$1,\"a\"BAR$2,\"b\"BAR1 1,2 2,/3 3,4 4,5 5,/$3,"), "BAR", "|");
        const std::string said = shpReadingOf(test);
        CAPTURE(place);
        CAPTURE(at);
        CAPTURE(bytes);
        CHECK_MESSAGE(holds(said, replaced(expected, "$", "\n")), said);
        CHECK(holds(said, "<stopped>") != (expected.starts_with('|') || expected.starts_with("WARNING")));
    };
    for (const Row& row : rowsOf(R"(
a.shp | 0 | 0000270B | ERROR 0427 - Reading .shp file header.
a.shp | 24 | 80000000 | ERROR 0427 - Reading .shp file header. | negative length
a.shp | 24 | 00000032 | OUTSIDE1: it does not lie | header never completed
a.shp | 104 | 0000000A | OUTSIDE1: the lengths of its record differ.
a.shx | 116 | 000000BF | OUTSIDE3: it does not lie | the third, one word on
a.shx | 108 | 00000031 | OUTSIDE2: it does not lie | within the header
a.shx | 108 | FFFFFFFF | OUTSIDE2: it does not lie
both | 104 | 00000001 | ERROR 0424 - Reading .shp file object type.
both | 104 | FFFFFFFF | ERROR 0424 - Reading .shp file object type.
both | 104 | 0000000A | ERROR 0429 - Reading .shp file object coordinates. | no room for the counts
both | 104 | 00000040 | BAD | two bytes short
both | 24 | 3FFFFFFF | ERROR - Reading .shx file 
a.shp | 108 | 0D000000 | ERROR 0423 - Unsupported .shp object type 13$   Export the layer without Z and M values.
a.shp | 108 | 02000000 | ERROR 0423 - Unsupported .shp object type 2$$
a.shp | 108 | 00000000 | NULL | a null shape
a.shp | 144 | 00000000 00000000 | NULL | nothing in it
a.shp | 144 | FFFFFFFF | BAD
a.shp | 144 | 06000000 | BAD | parts: negative; more than points
a.shp | 144 | FFFFFF7F | ERROR 0421 - Exceeded maximum number of parts in a .shp polyline.  Limit is 10000$
a.shp | 144 | 11270000 | ERROR 0421
a.shp | 144 | 10270000 | BAD | 10001 and 10000
a.shp | 108 | 05000000 32*00 11270000 | ERROR 0422 - Exceeded maximum number of regions within a .shp region.  Limit is 10000$
a.shp | 148 | FFFFFFFF | BAD
a.shp | 148 | 06000000 | BAD | points: negative; beyond the record
a.shp | 148 | FFFFFF7F | ERROR 0310 - Exceeded number of allowable nodes in a single .shp polyline or region.$Requested 2147483647$Limit 50000000$
a.shp | 152 | 01000000 | BAD | first part not at 0
a.shp | 156 | 00000000 | BAD
a.shp | 156 | 05000000 | BAD
a.shp | 156 | FFFFFFFF | BAD | does not rise; beyond the points
a.shp | 160 | 000000000000F87F | a.shp, object 1: it has a coordinate that is no number.$BAD | not a number
a.shx | 3 | 0B | ERROR - Reading .shx file 
a.shx | 24 | 00000042 | ERROR - Reading .shx file  | longer than it is
a.shx | 24 | 00000033 | ERROR - Reading .shx file 
a.shx | 24 | 80000000 | ERROR - Reading .shx file 
a.dbf | 4 | 05000000 | WARNING 0405 - Insufficient number of records found in .dbf file.$Found 3, expecting 5$
a.dbf | 4 | FFFFFFFF | WARNING 0405 - Insufficient number of records found in .dbf file.$Found 3, expecting 4294967295$
a.dbf | 4 | 02000000 | ERROR 0408 - End of .dbf file encountered whilst reading record.$ERROR 0254 - Failed to read object attribute data record
a.dbf | 8 | FFFF | ERROR 0404 - End of .dbf file encountered whilst reading header.
a.dbf | 8 | 4100 | ERROR 0403 - Reading .dbf file header. | ends within its second field
a.dbf | 10 | 0C00 | ERROR 0403 - Reading .dbf file header. | fields pass the record
a.dbf | 8 | 2000 | ERROR 0319 - No attributes specified in .dbf file.
a.dbf | 32 | 0D | ERROR 0319 - No attributes specified in .dbf file.
a.dbf | 48 | 00 | ERROR 0402 - dbf field length of 0 is outside allowable range of 1 to 255.
)"))
        check(row[0], static_cast<std::size_t>(wholeOf(row[1])), row[2], row[3]);
    const std::size_t second = DBF_START + DBF_RECORD;
    check("a.dbf", 43, "'I", "ERROR 0403 - Reading .dbf file header.");  // a binary field
    check("a.dbf", second, "'x",
          "a.dbf, record 2$ERROR 0406 - Unrecognised record identifier found in .dbf file.$ERROR 0254");
    check("a.dbf", second, "'*", "|$1,\"a\"|1 1,2 2,/3 3,4 4,5 5,/$3,\"c\"|");  // deleted with its object
    check("a.dbf", DBF_START + 1, "6*20 '1,", "|$\"1,\",\"a\"|");               // decimal comma
    check("a.dbf", DBF_START + 1, "8*20", "|$,\"a\"|");
    check("a.dbf", DBF_START + 1, "8*2A", "|$,\"a\"|");  // a null as GDAL writes it
    check("a.dbf", DBF_START + 9, "4*2A", "|$1,\"****\"|");
    check("a.dbf", 75, "'L", "|$1,|1 1");                                    // no logical value
    check("a.dbf", DBF_START + 9, "'\" E9 00 'z", "|$1,\"\"\"\xC3\xA9\"|");  // text behind a zero byte is no text
}

TEST_CASE("a set cut at any byte is never read as whole") {
    for (const GisObject& o : {PLINE, POINT})
        for (const std::string_view file : {"a.shp", "a.shx", "a.dbf"}) {
            const LayerTest test;
            writeThree(test, o);
            const std::string whole = test.folder.read(file);
            const std::size_t longest =
                whole.size() - (file == "a.dbf" ? 1 : 0);  // without its end byte a table is still whole
            for (std::size_t length = 0; length < longest; ++length) {
                INITIALISE_FILES();
                gisInitialise();
                test.folder.write(file, whole.substr(0, length));
                const std::string said = shpReadingOf(test);
                CAPTURE(file);
                CAPTURE(length);
                CHECK((holds(said, "ERROR") && holds(said, "<stopped>")));
            }
        }
    const LayerTest test;  // a table that ends with its third record and tells of four
    writeThree(test, POINT);
    test.folder.write("a.dbf", test.folder.read("a.dbf").substr(0, DBF_START + 3 * DBF_RECORD).replace(4, 1, "\4"));
    CHECK(holds(shpReadingOf(test),
                "WARNING 0405 - Insufficient number of records found in .dbf file.\nFound 3, expecting 4\n"));
}

TEST_CASE("objects are found through the index: moved ones, and none of what lies unused") {
    const LayerTest test;
    writeThree(test, POINT);
    std::string shp = test.folder.read("a.shp");
    const std::string moved = shp.substr(128, 28);  // the second, written again at the end, as editors do
    shp.replace(128, 28, 28, '\xFF');
    shp.replace(27, 1, 1, static_cast<char>((shp.size() + moved.size()) / 2));
    test.folder.write("a.shp", shp + moved);
    test.folder.write("a.shx", test.folder.read("a.shx").replace(108, 4, shpBytesOf("0000004E")));
    CHECK(shpReadingOf(test) == "ID Integer;Name Char(4);|\n1,\"a\"|1 2,/\n2,\"b\"|1 2,/\n3,\"c\"|1 2,/");
}

TEST_CASE("companions that are missing or do not belong are told") {
    for (const std::string_view companion : {".shx", ".dbf"}) {
        const LayerTest test;
        writeThree(test, POINT);
        std::filesystem::remove(test.folder.name("a" + std::string(companion)));
        CHECK(holds(shpReadingOf(test), "a" + std::string(companion) + ", which belongs to "));
    }
    const LayerTest test;
    writeThree(test, POINT);
    for (const std::string_view file : {"a.shp", "a.shx"}) {  // the first two objects
        const std::string whole = test.folder.read(file);
        const std::size_t left = file == "a.shp" ? 156 : 116;
        test.folder.write(file, whole.substr(0, left).replace(27, 1, 1, static_cast<char>(left / 2)));
    }
    CHECK(holds(shpReadingOf(test), "a.dbf holds more records than there are objects."));
}

TEST_CASE("129 fields stop the reader") {
    const LayerTest test;
    writeThree(test, POINT);
    const std::string field = test.folder.read("a.dbf").substr(32, 32);
    std::string dbf = shpBytesOf("03 3*00 03000000 41100904 20*00");
    for (int i = 0; i < 129; ++i) dbf += field;
    test.folder.write("a.dbf", dbf + "\x0D");
    CHECK(holds(shpReadingOf(test), "ERROR 0401 - Exceeded maximum number of dbf Fields."));
}

TEST_CASE("the .cpg file, else the language byte, else the text itself tells the code page of a table") {
    for (const Row& row : rowsOf(R"(
# .cpg file ("BOM" a mark, "$" a line end, "~" none), language byte, bytes of a text, the text
UTF-8$ | 57 | C3A9 | é
BOM1250 | 57 | A3F3 | Łó
ANSI 1251 | 00 | C6 | Ж
CP437 | 00 | 82 | é
ISO-8859-2 | 57 | A3 | Ł
ISO 88591 | C8 | A3 | £
# no such page, with a warning; one that tells nothing: the language byte does
99999 | 57 | E9 | é
none | C8 | A3 | Ł
~ | 57 | C3A9 | Ã©
~ | 64 | 9D | Ł
~ | 65 | 86 | Ж
# a byte that 1253 does not use
~ | CB | AA | �
~ | 00 | C3A9 | é
~ | 00 | E9 | é
)")) {
        const LayerTest test;
        test.writeLayer("a.shp", TWO_COLUMNS, {POINT}, {"1,\"\""});
        test.folder.write("a.cpg", replaced(replaced(row[0], "BOM", "\xEF\xBB\xBF"), "$", "\r\n"));
        if (row[0] == "~") std::filesystem::remove(test.folder.name("a.cpg"));
        const std::string bytes = shpBytesOf(row[2]);
        test.folder.write(
            "a.dbf",
            test.folder.read("a.dbf").replace(29, 1, shpBytesOf(row[1])).replace(DBF_START + 9, bytes.size(), bytes));
        const std::string said = shpReadingOf(test);
        CHECK_MESSAGE(holds(said, "1,\"" + row[3] + "\"|"), said);
        CHECK(holds(said, "code page 99999, which this system does not have") == (row[0] == "99999"));
    }
}
