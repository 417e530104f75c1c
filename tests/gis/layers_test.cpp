#include "layer_test.h"

#include "gis/input_log.h"
#include "gis/layer_table.h"
#include "testing.h"

namespace {

constexpr const char* MIF =
    "Version 300\nDelimiter \",\"\nCoordSys Earth Projection 1, 104\nColumns 1\n  ID Integer\nData\nPoint 1 2\nnone\n";

std::string contact(const std::string& text) {
    return text + "the maintainers (see README)\n\nPress Enter to Close\n<stopped>";
}

}  // namespace

TEST_CASE("the lowest free handle is taken, up to 100") {
    const LayerTest test;
    const std::string said = consoleOf([&] {
        for (int i = 1; i <= 100; ++i) CHECK(gisOpenLayer(test.folder.name(std::to_string(i)), "R", "O ") == i);
        gisCloseLayer(3);
        CHECK(gisOpenLayer(test.folder.name("again.mif"), "PR", "O ") == 3);
        gisOpenLayer(test.folder.name("101.mif"), "R", "O ");
    });
    CHECK(holds(said, "GIS Layer assigned ID of 100\nClosing GIS Layer 3 [" + test.folder.name("3") + "]...\n"));
    CHECK(stops(said, "\nERROR 0251 - Cannot have more than 100 GIS layers open at once.\n"));
}

TEST_CASE("the extension chooses the format") {
    using F = GisFormat;
    const std::tuple<const char*, GisTable, GisFormat, std::string> rows[] = {
        {"a", GisTable::WithObjects, F::Mif, ""},     {"b.Mif", GisTable::WithObjects, F::Mif, ""},
        {"c.MID", GisTable::WithObjects, F::Mif, ""}, {"f.csv", GisTable::WithObjects, F::None, ".csv"},
        {"e.csv", GisTable::Alone, F::Csv, ""},       {"g.dbf", GisTable::WithObjects, F::None, ".dbf"},
        {"h.tab", GisTable::Alone, F::None, ".tab"},
    };
    for (const auto& [name, table, format, refused] : rows) {
        const LayerTest test;
        const std::string said = consoleOf([&, n = name, t = table, f = format] {
            const auto id = gisOpenLayer(test.folder.name(n), "R", "O ", t);
            CHECK(gisEntry(id).format == f);
            gisCloseAllLayers();
        });
        const std::string refusal = "ERROR 0252 - " + refused + " is not a supported GIS file format.\n";
        CHECK_MESSAGE(holds(said, refusal) == (format == F::None), said);
    }
}

TEST_CASE("operations check their handle") {
    const LayerTest test;
    test.folder.write("in.mif", MIF);
    test.folder.write("in.mid", "1\n2\n");
    consoleOf([&] { gisOpenLayer(test.folder.name("in.mif"), "R", "I "); });
    GisObject o;
    std::string text;
    const std::string here = "Should not be here ", please = " - please contact ", other = ".  Please contact ";
    const std::pair<std::function<void()>, std::string> rows[] = {
        {[] { gisReadHeader(0); }, contact(here + "gisReadHeader[gisID=0]" + please)},
        {[] { gisGotoBeginningOfData(-1); }, contact(here + "gisGotoBeginningOfData[gisID=0]" + please)},
        {[&] { gisWriteObject(0, o); }, contact(here + "gisWriteObject[gisID=0]" + please)},
        {[] { gisReadHeader(2); }, contact(here + "[gisReadHeader]" + please)},
        {[&] { gisReadRecord(101, text); }, contact(here + "[gisReadRecord]" + please)},
        {[&] { gisWriteObject(1, o); }, contact(here + "[gisWriteObject-shp]" + other)},  // an input layer
        {[] { gisWriteRecord(2, "1"); }, contact(here + "[gisWriteRecord-dbf]" + other)},
        {[] { gisWriteRecord(2, std::string(DATA_LINE_WIDTH + 1, '1')); },
         contact(here + "[gisWriteRecordLarge-dbf]" + other)},
        {[&] { gisObjectType(1, o); }, contact(here + "[mifObjectType]" + please)},  // before the header
        {[] { gisInitialiseLayer(0); }, contact(here + "gisInitialiseLayer[gisID=0]" + please)},
        {[] { gisCloseLayer(0); },
         "SOFTWARE CHECK - Trying to close a GIS Layer that's not open.  Please contact the "
         "maintainers (see README)\n"},
    };
    for (const auto& [step, said] : rows) CHECK(consoleOf(step) == said);
}

TEST_CASE("a layer can be read again") {
    const LayerTest test;
    test.folder.write("in.mif", MIF);
    test.folder.write("in.MID", "1\n2\n\n");
    consoleOf([&] {
        const auto id = gisOpenLayer(test.folder.name("in"), "R", "I ");
        gisReadHeader(id);
        GisObject o;
        std::string text;
        for (int pass = 0; pass < 2; ++pass) {
            CHECK(gisObjectType(id, o));
            CHECK(gisReadObject(id, o));
            CHECK(o.x == std::vector<double>{0, 1});
            if (pass == 0) CHECK((gisReadRecord(id, text) && text == "1"));
            CHECK(gisObjectType(id, o));
            CHECK(o.kind == GisKind::None);
            CHECK((gisReadRecord(id, text) && text == "2"));  // whether or not the first was asked for
            CHECK(!gisObjectType(id, o));
            gisGotoBeginningOfData(id);
        }
    });
}

TEST_CASE("input layers are listed once, in the list, the workspace and the log") {
    const LayerTest test;
    for (const char* name : {"a.mif", "b.mif"}) test.folder.write(name, MIF);
    for (const char* name : {"a.mid", "b.mid"}) test.folder.write(name, "1\n2\n");
    test.folder.write("b.tab", "");
    test.folder.write("p.csv", "");
    consoleOf([&] {
        gisOpenInputLog(test.folder.name("out"));
        gisOpenLayer(test.folder.name("a.mif"), "R", "I ");
        gisOpenLayer(test.folder.name("./A.mif"), "R", "I ");
        gisOpenLayer(test.folder.name("b"), "R", "I ");
        gisOpenLayer(test.folder.name("p.csv"), "R", "I ", GisTable::Alone);
        gisOpenLayer(test.folder.name("output.mif"), "R", "O ");
        CHECK(gisEntry(2).listNumber == 1);
        CHECK(gisEntry(4).listNumber == 3);
        CHECK(gisEntry(5).listNumber == 0);
        gisCloseAllLayers();
    });
    const std::string a = test.folder.name("a.mif"), b = test.folder.name("b.mif"), p = test.folder.name("p.csv");
    CHECK(test.folder.read("out.wor") ==
          "!Workspace\n!Version 6007\n!Charset WindowsLatin1\n!Contains GIS input layers from VORANT simulation\n"
          "! .mif/.mid Layer with no .tab Layer \"" +
              a + "\"\nOpen Table \"" + test.folder.name("b.tab") + "\"\n! Non-MapInfo .tab Layer \"" + p + "\"\n");
    CHECK(test.folder.read("out_input_layers.mif") ==
          "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\nColumns 3\nID Integer\nOpen_ID Integer\nLayer "
          "Char(254)\nData\nnone\nnone\nnone\n");
    CHECK(test.folder.read("out_input_layers.mid") == "1,1,\"" + a + "\"\n2,3,\"" + b + "\"\n3,4,\"" + p + "\"\n");
}

TEST_CASE("the input-layer list holds 999 layers and says once that it is full") {
    const LayerTest test;
    const std::string said = consoleOf([&] {
        for (int i = 1; i <= 1002; ++i)
            CHECK(TRACK_INPUT_LAYER("layer" + std::to_string(i) + ".mif", 1) ==
                  (i <= 999 ? static_cast<std::size_t>(i) : 0));
        CHECK(TRACK_INPUT_LAYER("layer7.mif", 1) == 7);
    });
    CHECK(said ==
          "WARNING 0317 - Exceeded limit of input GIS layers that can be tracked (layer referencing may not be "
          "complete).\n");
}

TEST_CASE("batches hold what is written one by one, and nothing that needs a word") {
    const GisObject line = objectOf(GisKind::Pline, {{1, 2, 3, -4.5}});
    const GisObject two = objectOf(GisKind::PlineMultiple, {{0, 0, 9, 9, 8, 8}, {5, 5, 7, 1e6}});
    GisObject fallen = two;
    fallen.ir[1] = 0;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const GisHeader header = {"", "", GisShape::Lines, {{"A", "Decimal(6,2)"}, {"B", "Char(3)"}}};
    const std::pair<GisObject, std::string> unfit[] = {
        {line, "1,\"a\nb\""}, {line, "1,\"\xC3\xA9\""},
        {line, "1"},          {objectOf(GisKind::Point, {{1, 1}}), "1,\"a\""},
        {fallen, "1,\"a\""},  {objectOf(GisKind::Pline, {{1, 2, nan, 4}}), "1,\"a\""},
    };
    for (const std::string extension : {".mif", ".shp"}) {
        const LayerTest test;
        test.writeLayer("one" + extension, header, {line, two, line}, {"1.25,\"abc\"", "-2,\"\"", "3,\"z\""});
        consoleOf([&] {
            const auto id = gisOpenLayer(test.folder.name("two" + extension), "R", "O ");
            gisHeader(id) = header;
            gisWriteHeader(id);
            GisBatch batch;
            gisAddToBatch(id, batch, line, "1.25,\"abc\"");
            gisAddToBatch(id, batch, two, "-2,\"\"");
            CHECK(gisWriteBatch(id, batch));
            for (const auto& [object, record] : unfit) {
                batch.clear();
                gisAddToBatch(id, batch, object, record);
                gisAddToBatch(id, batch, line, "3,\"z\"");
                CHECK_MESSAGE(!gisWriteBatch(id, batch), record);
            }
            batch.clear();
            gisAddToBatch(id, batch, line, "3,\"z\"");
            for (const std::size_t place : {0U, extension == ".mif" ? 1U : 2U}) {  // a byte too near the limit
                std::int64_t& bytes = gisEntry(id).files[place].bytes;
                const std::int64_t before = std::exchange(bytes, MOST_FILE_BYTES - 9);
                CHECK(!gisWriteBatch(id, batch));
                bytes = before;
            }
            CHECK(gisWriteBatch(id, batch));
            gisCloseLayer(id);
        });
        const std::vector<std::string> files = extension == ".mif" ? std::vector<std::string>{".mif", ".mid"}
                                                                   : std::vector<std::string>{".shp", ".shx", ".dbf"};
        for (const std::string& file : files) CHECK(test.folder.read("two" + file) == test.folder.read("one" + file));
    }
}
