#include "shp_test.h"

#include "gis/layer_table.h"
#include "testing.h"

namespace {

GisHeader oneColumn(GisShape shape) { return headerOf("ID=Integer", shape); }
const GisObject POINT = objectOf(GisKind::Point, {{1, 2}});

}  // namespace

TEST_CASE("a layer of one point has 64 and 54 words, big-endian outside and little-endian inside") {
    const LayerTest test;
    CHECK_FALSE(holds(test.writeLayer("a.shp", oneColumn(GisShape::Point), {POINT}, {"7"}), "<stopped>"));
    const std::string box = "E8030000 01000000" D1 D2 D1 D2 "32*00 ";
    CHECK(test.folder.read("a.shp") ==
          shpBytesOf("0000270A 20*00 00000040 " + box + "00000001 0000000A 01000000" D1 D2));
    CHECK(test.folder.read("a.shx") == shpBytesOf("0000270A 20*00 00000036 " + box + "00000032 0000000A"));
    CHECK(test.folder.read("a.cpg") == "1252");
    CHECK(!FIND_FILE(test.folder.name("a.prj")));
    std::vector<GisObject> corners;  // neither the first nor the last is at an edge of the layer
    for (const auto& at : {std::vector<double>{2, 3}, {-1, 4}, {4, -1}, {3, 1}})
        corners.push_back(objectOf(GisKind::Point, {at}));
    test.writeLayer("b.shp", oneColumn(GisShape::Point), corners, {"1", "2", "3", "4"});
    for (const auto* file : {"b.shp", "b.shx"})
        CHECK(test.folder.read(file).substr(36, 32) == shpBytesOf(D_1 D_1 D4 D4));
}

TEST_CASE("records hold their own box, and the indices of the parts count from 0") {
    const std::tuple<GisObject, std::string_view, std::string_view> rows[] = {
        {objectOf(GisKind::Line, {{1, 4, 2, 3}}), "03000000", D1 D3 D2 D4 "01000000 02000000 00000000" D1 D4 D2 D3},
        {objectOf(GisKind::PlineMultiple, {{1, 1, 2, 2, 3, 0}, {-1, 4, 4, 4}}), "03000000",
         D_1 D0 D4 D4 "02000000 05000000 00000000 03000000" D1 D1 D2 D2 D3 D0 D_1 D4 D4 D4},
        {objectOf(GisKind::Region, {{0, 0, 0, 4, 4, 0, 0, 0}, {1, 1, 2, 1, 1, 2, 1, 1}}), "05000000",
         D0 D0 D4 D4 "02000000 08000000 00000000 04000000" D0 D0 D0 D4 D4 D0 D0 D0 D1 D1 D2 D1 D1 D2 D1 D1},
        {objectOf(GisKind::MultiPoint, {{3, 1, -1, 2}}), "08000000", D_1 D1 D3 D2 "02000000" D3 D1 D_1 D2},
    };
    for (const auto& [object, type, rest] : rows) {
        const LayerTest test;
        test.writeLayer("a.shp", oneColumn(gisShapeOf(object.kind)), {object, object}, {"1", "2"});
        const std::string shp = test.folder.read("a.shp");
        const std::string content = shpBytesOf(std::string(type) + " " + std::string(rest));
        const std::string words(1, static_cast<char>(content.size() / 2));
        CHECK(shp.substr(32, 36) == content.substr(0, 36));  // type and box of the layer
        CHECK(shp.substr(100, 8) == shpBytesOf("00000001 000000") + words);
        CHECK(shp.substr(108, content.size()) == content);
        CHECK(shp.substr(108 + content.size(), 8) == shpBytesOf("00000002 000000") + words);
        const char second = static_cast<char>((108 + content.size()) / 2);
        CHECK(test.folder.read("a.shx").substr(100) ==
              shpBytesOf("00000032 000000") + words + shpBytesOf("000000") + second + shpBytesOf("000000") + words);
    }
}

TEST_CASE("objects of any size read back equal, around the size of a block") {
    const LayerTest test;
    std::vector<GisObject> objects;
    std::vector<std::string> records;
    // 16380 vertices fill a block to within 36 bytes
    for (const std::size_t vertices : {2U, 16380U, 16381U, 40000U, 3U}) {
        GisObject o;
        o.start(GisKind::Pline);
        for (std::size_t i = 0; i < vertices; ++i) o.add(0.5 * static_cast<double>(i), -1e-9 * static_cast<double>(i));
        o.endPart();
        objects.push_back(o);
        records.push_back(std::to_string(vertices));
    }
    GisObject parts;  // the most that are read
    parts.start(GisKind::PlineMultiple);
    for (int part = 0; part < MOST_POLYGONS; ++part) {
        parts.add(part, 1);
        parts.add(part, 2);
        parts.endPart();
    }
    objects.push_back(parts);
    records.emplace_back("10000");
    test.writeLayer("a.shp", oneColumn(GisShape::Lines), objects, records);
    const auto& [said, header, read, lines] = test.readLayer("a.shp");
    CHECK_FALSE(holds(said, "ERROR"));
    CHECK(lines == records);
    for (std::size_t i = 0; i < objects.size(); ++i) CHECK(sameGeometry(read.at(i), objects[i]));
}

TEST_CASE("an empty layer is valid: its planned type, no box, no records") {
    const LayerTest test;
    test.writeLayer("a.shp", oneColumn(GisShape::Region), {}, {});
    CHECK(test.folder.read("a.shp") == shpBytesOf("0000270A 20*00 00000032 E8030000 05000000 64*00"));
    CHECK(test.folder.read("a.dbf").substr(4, 4) == shpBytesOf("4*00"));
    CHECK(test.folder.read("a.dbf").substr(64) == shpBytesOf("0D 1A"));
}

TEST_CASE("objects that the layer does not take end the run") {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr auto OTHER = "Should not be here [gisWriteObject-shp].  Please contact ",
                   COORDINATES = "ERROR 0439 - Writing .shp file object coordinates.";
    const std::tuple<GisShape, GisObject, std::string_view> rows[] = {
        {GisShape::Point, objectOf(GisKind::Pline, {{0, 0, 1, 1}}), OTHER},
        {GisShape::Any, objectOf(GisKind::Pline, {{0, 0, 1, 1}}), OTHER},  // after a point
        {GisShape::Any, objectOf(GisKind::Ellipse, {{0, 0, 1, 1}}),
         "ERROR 0350 - Trying to write a SHP object that is not yet supported.  Please contact "},
        {GisShape::Point, objectOf(GisKind::Point, {{nan, 1}}), COORDINATES},
        {GisShape::Point, objectOf(GisKind::Point, {{1, -std::numeric_limits<double>::infinity()}}), COORDINATES},
    };
    for (const auto& [planned, object, message] : rows) {
        const std::string said = LayerTest().writeLayer("a.shp", oneColumn(planned), {POINT, object}, {"1", "2"});
        CHECK(stops(said, message));
    }
}

TEST_CASE("a disk that is full ends the run, whichever file it was") {
    if (!std::filesystem::exists("/dev/full")) return;
    const std::tuple<std::string_view, std::string_view> rows[] = {
        {"a.shp", "ERROR 0437 - Writing .shp file header."},
        {"a.shx", "ERROR 0437 - Writing .shp file header."},
        {"a.dbf", "ERROR 0413 - Rewriting .dbf file header with final information."},
        {"a.cpg", "a.cpg: No space left on device. The file is incomplete."},
    };
    for (const auto& [file, message] : rows)
        for (const std::size_t objects : {1U, 20000U}) {  // 20000: blocks go out on the way, and the messages differ
            const LayerTest test;
            std::filesystem::create_symlink("/dev/full", test.folder.name(file));
            const std::string said = test.writeLayer("a.shp", oneColumn(GisShape::Point), std::vector(objects, POINT),
                                                     std::vector<std::string>(objects, "1"));
            CHECK(stops(said, objects == 1 ? message : "No space left on device"));
            CHECK(holds(said, "ERROR"));
        }
}

TEST_CASE("no file passes the limit: the run stops behind what fits, in pairs, and leaves nothing") {
    for (const std::size_t full : {0U, 1U, 2U}) {
        const LayerTest test;
        const std::string said = consoleOf([&] {
            BEGIN_OUTPUT(test.folder.name("a.shp"));
            const auto id = gisOpenLayer(test.folder.name("a.shp"), "R", "O ");
            gisHeader(id) = oneColumn(GisShape::Point);
            gisWriteHeader(id);
            gisWriteObject(id, POINT);
            gisWriteRecord(id, "1");
            const std::int64_t needed[] = {28, 8, 10};  // the table: a record of 9 and its end byte
            gisEntry(id).files[full].bytes = MOST_FILE_BYTES - needed[full];  // fits to the byte
            gisWriteObject(id, POINT);
            gisWriteRecord(id, "2");
            gisWriteObject(id, POINT);
        });
        const char* const names[] = {"a.shp", "a.shx", "a.dbf"};
        CHECK(holds(said, names[full] + std::string(" would pass 2147483647 bytes")));
        CHECK(stops(said, "Use -mif or a coarser output."));
        for (const std::size_t file : {0U, 2U}) CHECK(gisEntry(1).files[file].count == 2);
        CHECK(std::filesystem::is_empty(test.folder.name("")));
    }
}

TEST_CASE("a copy keeps types and projection, and says what has no geometry") {
    const LayerTest test;
    GisHeader header = headerOf("D=Date;S=SmallInt;T=Time;N=Decimal(9,2)");
    header.prj = "PROJCS[\"kept\"]";
    const std::string record = "20240229,-32768,\"093000000\",1.50";
    const std::string said =
        test.writeLayer("a.shp", header, {POINT, objectOf(GisKind::None, {}), POINT}, {record, "lost", record});
    CHECK(holds(said, "WARNING - 1 objects without geometry are left out of "));
    const ReadLayer read = test.readLayer("a.shp");
    CHECK((read.header.format == GisFormat::Shp && read.records == std::vector<std::string>{record, record}));
    gisSetProjection({"", "PROJCS[\"the run's\"]", false});
    test.writeLayer("b.shp", read.header, read.objects, read.records);
    for (const char* extension : {".shp", ".shx", ".dbf", ".prj"})
        CHECK(test.folder.read("b" + std::string(extension)) == test.folder.read("a" + std::string(extension)));
    test.writeLayer("b.mif", read.header, read.objects, read.records);
    CHECK(holds(test.folder.read("b.mif"), "\n  D Date\n  S Decimal(6,0)\n  T Char(9)\n  N Decimal(9,2)\n"));
    CHECK(test.folder.read("b.mid") == record + "\n" + record + "\n");
}

TEST_CASE("the .prj file of an output is the run's text, whole, and that of an input is compared with it") {
    const LayerTest output;
    const std::string text = "PROJCS[\"" + std::string(3000, 'x') + "\",GEOGCS[\"\xC3\xA9\"]]";
    gisSetProjection({"", text, false});
    output.writeLayer("a.SHP", oneColumn(GisShape::Point), {}, {});
    CHECK(output.folder.read("a.prj") == text);

    const std::string run = "PROJCS[\"GDA94 / MGA 56\",UNIT[\"metre\",1]]";
    for (const Row& row : rowsOf(R"(
# .prj file ("$" ends a line), -prjwarn, what is said
PROJCS["GDA94 / MGA 56",UNIT["metre",1]]
PROJCS["gda94 / mga 56",$    UNIT["metre", 1.0]]$
PROJCS["other"] | | ERROR 0305 - Projection of .shp file is different to that of the run.$
PROJCS["other"] | warn | WARNING 0305 - Projection of .shp file is different to that of the run.
GEOGCS["x"] | warn | WARNING 0420 - Could not find PROJCS definition.  Projection of .shp file might not be cartesian.
 | | ERROR 0420 - Could not read projection line in .prj file.
 | warn | WARNING 0420 - Could not read projection line in .prj file.
)")) {
        const LayerTest test;
        test.writeLayer("a.shp", oneColumn(GisShape::Point), {POINT}, {"1"});
        test.folder.write("a.prj", replaced(row[0], "$", "\r\n"));
        gisSetProjection({"", run, row[1] == "warn"});
        const std::string said = shpReadingOf(test);
        CHECK_MESSAGE(holds(said, replaced(row[2], "$", "\n   ")), said);
        CHECK((holds(said, "0305") || holds(said, "0420")) != row[2].empty());
        CHECK(holds(said, "<stopped>") == row[2].starts_with("ERROR"));
    }
}
