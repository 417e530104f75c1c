#include "shp_test.h"

#include "gis/dbf_number.h"
#include "gis/layer_table.h"
#include "testing.h"

#include <ctime>

namespace {

const GisObject POINT = objectOf(GisKind::Point, {{1, 2}});

std::string today() {
    const std::time_t now = std::time(nullptr);
    const std::tm* date = std::localtime(&now);
    return {static_cast<char>(date->tm_year), static_cast<char>(date->tm_mon + 1), static_cast<char>(date->tm_mday)};
}

/// Writes points with these records; what was said, and the .dbf file from its first record on.
std::pair<std::string, std::string> writtenAs(const GisHeader& header, const std::vector<std::string>& records) {
    const LayerTest test;
    std::string said = test.writeLayer("a.shp", header, std::vector(records.size(), POINT), records);
    const std::string dbf = test.folder.read("a.dbf");
    return {std::move(said), dbf.substr(std::min(dbf.size(), 33 + 32 * header.attributes.size()))};
}

}  // namespace

TEST_CASE("a .dbf file, byte for byte: names of 11 bytes that stay apart, types, widths, today, language, end") {
    const LayerTest test;
    const GisHeader header = headerOf(
        "Water Level Max=Decimal(6,2);water level=integer;Kind=Char ( 3 );ok=Logical;F=Float", GisShape::Point);
    const std::string before = today();
    test.writeLayer("a.shp", header, {POINT, POINT}, {"2.5,7,\"a\",\"T\",0.1", ",-1,bcd,F,"});
    const std::string dbf = test.folder.read("a.dbf");
    CHECK((dbf.substr(1, 3) == before || dbf.substr(1, 3) == today()));  // midnight may pass
    CHECK(dbf.substr(0, 1) + dbf.substr(4) ==
          shpBytesOf("03 02000000 C100 2300 17*00 57 2*00 "
                     "'Water_Level 'N 4*00 06 02 14*00 'water_leve2 'N 4*00 08 00 14*00 'Kind 7*00 'C 4*00 03 00 14*00 "
                     "'ok 9*00 'C 4*00 01 00 14*00 'F 10*00 'N 4*00 10 05 14*00 0D "
                     "20 2*20 '2.50 7*20 '7 'a 2*20 'T 9*20 '0.10000 20 6*20 6*20 '-1 'bcd 'F 16*20 1A"));
}

// Text, width and decimals of the field, and what stands in it: "_" is a blank, "!" that it does not fit.
TEST_CASE("numbers stand right-aligned with the field's decimals, digits unchanged where they can be") {
    for (const Row& row : rowsOf(R"(
12.5 | 8 | 2 | ___12.50
-3 | 5 | 1 | _-3.0
 | 3 | 0 | ___
# through a double: ...680
123456789012345678 | 21 | 2 | 123456789012345678.00
0.123456 | 8 | 6 | 0.123456
1. | 4 | 0 | ___1
.5 | 5 | 2 | _0.50
+7 | 3 | 0 | __7
1e3 | 6 | 1 | 1000.0
1D+003 | 5 | 0 | _1000
0.125 | 5 | 2 | _0.12
0.375 | 5 | 2 | _0.38
2.999 | 4 | 1 | _3.0
# more decimals than the fast way has
1e-12 | 14 | 12 | 0.000000000001
99999999 | 8 | 0 | 99999999
123456789 | 8 | 0 | !
# rounds up to 100.0
99.95 | 4 | 1 | !
1e300 | 20 | 2 | !
nan | 8 | 2 | !
-inf | 8 | 2 | !
1.2.3 | 8 | 1 | !
- | 8 | 0 | !
1 2 | 8 | 0 | !
)")) {
        CAPTURE(row[0]);
        std::string field(static_cast<std::size_t>(wholeOf(row[1])), ' ');
        if (!PUT_DBF_NUMBER(field.data(), row[0], wholeOf(row[1]), wholeOf(row[2]))) field = "!";
        CHECK(replaced(field, " ", "_") == row[3]);
    }
}

TEST_CASE("attributes and records that a .dbf file cannot hold end the run, naming field and record") {
    for (const Row& row : rowsOf(R"(
# columns, their type, the second record ("~": 1000 blanks), what is said, and of which place
129 | Integer | | ERROR 0411 - Exceeded maximum number of dbf Fields trying to write dbf file.
0 | | | ERROR 0319 - No attributes specified when writing .dbf file.
1 | Char(256) | | ERROR 0412 - dbf field length of 256 is outside allowable range of 1 to 255 when writing dbf file.
1 | Char | | ERROR 0412 - dbf field length of 0 is outside allowable range of 1 to 255 when writing dbf file.
1 | Decimal(0,0) | | ERROR 0412 - dbf field length of 0 is
1 | Blob | | Should not be here [Unrecognised DBF field] - please contact
1 | Decimal(10,256) | | Should not be here [i1u: i4 outside range] - please contact
128 | Char(255)
2 | Integer | 1,123456789 | ERROR 0417 - Writing .dbf record.$ERROR 0254 - Failed to write attribute data record for a POINT object\
    | a.dbf, field A2, record 2: 123456789
2 | Integer | x,1 | ERROR 0417 - Writing .dbf record. | a.dbf, field A, record 2: x
2 | Integer | x,1~ | ERROR 0417 - Writing large .dbf record.$ERROR 0254 - Failed to write large attribute data record\
    | field A, record 2: x
2 | Integer | 1 | Should not be here [dbfdataline] - please contact
2 | Integer | 1,2,3 | Should not be here [dbfdataline] - please contact
2 | Integer | 1~ | Should not be here [dbfdatalinelarge] - please contact
)")) {
        CAPTURE(row[3]);
        GisHeader header = headerOf("", GisShape::Point);
        header.attributes.assign(static_cast<std::size_t>(wholeOf(row[0])), {"A", row[1]});
        std::vector<std::string> records;
        if (!row[2].empty()) records = {"1,2", replaced(row[2], "~", std::string(1000, ' '))};
        const std::string said = writtenAs(header, records).first;
        CHECK_MESSAGE(holds(said, row[3].empty() ? "Closing" : replaced(row[3], "$", "\n")), said);
        CHECK(holds(said, row[4]));
        CHECK(said.ends_with("<stopped>") != row[3].empty());
    }
}

TEST_CASE("text is in code page 1252; what does not fit is cut with one warning") {
    const auto& [said, records] = writtenAs(
        headerOf("Name=Char(4);N=Integer", GisShape::Point),
        {"\"\xC3\xA9t\xC3\xA9\",1", "\"abcde\",2", "\"a,\"\"b\",3", "\"vwxyz\",4", "\"\xE2\x82\xAC\xD0\x96\",5"});
    CHECK(records ==
          shpBytesOf(
              "20 E9 't E9 20 7*20 '1 20 'abcd 7*20 '2 20 'a,\"b 7*20 '3 20 'vwxy 7*20 '4 20 80 '? 2*20 7*20 '5 1A"));
    CHECK(countOf(said, "WARNING - Text is cut") == 1);
    CHECK(holds(said, "a.dbf, field Name, record 2: abcde"));
    CHECK(countOf(said, "WARNING") == 2);  // the other: a letter that the page lacks
}

TEST_CASE("a table alone is written and read without geometry") {
    const LayerTest test;
    const std::string said = consoleOf([&] {
        auto id = gisOpenLayer(test.folder.name("t.dbf"), "R", "O ", GisTable::Alone);
        gisHeader(id).attributes = {{"ID", "Integer"}, {"Name", "Char(5)"}};
        gisWriteHeader(id);
        gisWriteRecord(id, "1,\"a\"");
        gisWriteRecord(id, ",\"b \"\"q\"");
        gisCloseLayer(id);
        id = gisOpenLayer(test.folder.name("t.dbf"), "R", "I ", GisTable::Alone);
        gisReadHeader(id);
        std::string line;
        for (const std::string_view expected : {"1,\"a\"", ",\"b \"\"q\""})
            CHECK((gisReadRecord(id, line) && line == expected));
        CHECK(!gisReadRecord(id, line));
        gisGotoBeginningOfData(id);
        CHECK((gisReadRecord(id, line) && line == "1,\"a\""));
        gisCloseLayer(id);
    });
    CHECK(holds(said,
                "DBF Fields (Name [#/Type/Length]):\n   ID [1/N/8]\n   Name [2/C/5]\nDBF file contains 2 records.\n"));
    CHECK(!FIND_FILE(test.folder.name("t.shp")));
}
