#include <doctest/doctest.h>

#include "gdal.h"
#include "layer_test.h"

namespace {

constexpr std::string_view MGA = "CoordSys Earth Projection 8, 116, \"m\", 147, 0, 0.9996, 500000, 10000000";

/// Every geometry that GDAL puts into a .mif file, with one attribute of each type; the numbers are short in decimal.
constexpr std::string_view GEOJSON = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"id":1,"name":"Caf\u00e9, \"A\"","v":1.25,"d":"2020-01-02"},"geometry":{"type":"Point","coordinates":[146.5,-36.25]}},
{"type":"Feature","properties":{"id":2,"name":"b","v":null},"geometry":{"type":"LineString","coordinates":[[146.5,-36.25],[147,-36]]}},
{"type":"Feature","properties":{"id":3},"geometry":{"type":"LineString","coordinates":[[146.5,-36.25],[147,-36],[148,-36.5]]}},
{"type":"Feature","properties":{"id":4},"geometry":{"type":"MultiLineString","coordinates":[[[1,2],[3,4]],[[1,2],[3,4],[5,6]]]}},
{"type":"Feature","properties":{"id":5},"geometry":{"type":"Polygon","coordinates":[[[0,0],[0,10],[10,10],[10,0],[0,0]],[[1,1],[2,1],[2,2],[1,2],[1,1]]]}},
{"type":"Feature","properties":{"id":6},"geometry":{"type":"MultiPolygon","coordinates":[[[[0,0],[0,1],[1,1],[1,0],[0,0]]],[[[20,0],[20,1],[21,1],[21,0],[20,0]]]]}},
{"type":"Feature","properties":{"id":7},"geometry":null}]})";

const GisObject FROM_GDAL[] = {
    objectOf(GisKind::Point, {{146.5, -36.25}}),
    objectOf(GisKind::Line, {{146.5, -36.25, 147, -36}}),
    objectOf(GisKind::Pline, {{146.5, -36.25, 147, -36, 148, -36.5}}),
    objectOf(GisKind::PlineMultiple, {{1, 2, 3, 4}, {1, 2, 3, 4, 5, 6}}),
    objectOf(GisKind::Region, {{0, 0, 0, 10, 10, 10, 10, 0, 0, 0}, {1, 1, 2, 1, 2, 2, 1, 2, 1, 1}}),
    objectOf(GisKind::Region, {{0, 0, 0, 1, 1, 1, 1, 0, 0, 0}, {20, 0, 20, 1, 21, 1, 21, 0, 20, 0}}),
    objectOf(GisKind::None, {}),
};

std::string withCrLf(const std::string& text) {
    std::string out;
    for (const char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return out;
}

}  // namespace

TEST_CASE("a .mif layer that GDAL wrote is read with the same content") {
    if (!gdalIsThere()) return;
    const LayerTest test;
    test.folder.write("in.geojson", GEOJSON);
    REQUIRE(gdalSays(test.folder, "ogr2ogr -f \"MapInfo File\" -dsco FORMAT=MIF @out.mif @in.geojson") == "");
    test.folder.write("cr.mif", withCrLf(test.folder.read("out.mif")));
    test.folder.write("cr.mid", withCrLf(test.folder.read("out.mid")));
    for (const char* name : {"out.mif", "cr.mif"}) {
        std::vector<GisObject> objects;
        std::vector<std::string> records;
        GisHeader header;
        const std::string said = test.readLayer(name, objects, records, header);
        CHECK_MESSAGE(!said.ends_with("<stopped>"), said);
        CHECK(header.coordSys == "CoordSys Earth Projection 1, 104");
        std::string columns;
        for (const auto& a : header.attributes) columns += a.name + " " + a.type + ";";
        CHECK(columns == "id Integer;name Char(254);v Float;d Date;");
        REQUIRE(objects.size() == std::size(FROM_GDAL));
        for (std::size_t i = 0; i < objects.size(); ++i) CHECK_MESSAGE(sameGeometry(objects[i], FROM_GDAL[i]), i);
        CHECK(records[0] == "1,\"Caf\xC3\xA9, \"\"A\"\"\",1.25,20200102");
        CHECK(records[1] == "2,\"b\",,");
    }
}

TEST_CASE("GDAL opens our .mif layers without a warning and finds the same content") {
    if (!gdalIsThere()) return;
    const LayerTest test;
    GisObject label = objectOf(GisKind::Text, {{1, 2, 3, 4}});
    label.text = "Sill A";
    struct {
        GisObject object;
        const char* wkt;
    } const rows[] = {
        {objectOf(GisKind::Point, {{512000.123456, 6250000.25}}), "\"POINT (512000.123456 6250000.25)\""},
        {objectOf(GisKind::MultiPoint, {{1, 2, 3, 4}}), "\"MULTIPOINT ((1 2),(3 4))\""},
        {objectOf(GisKind::Line, {{1, 2, 3, 4}}), "\"LINESTRING (1 2,3 4)\""},
        {objectOf(GisKind::Pline, {{1, 2, 3, 4, 5, -6}}), "\"LINESTRING (1 2,3 4,5 -6)\""},
        {objectOf(GisKind::PlineMultiple, {{1, 2, 3, 4}, {5, 6, 7, 8, 7, 9}}),
         "\"MULTILINESTRING ((1 2,3 4),(5 6,7 8,7 9))\""},
        {objectOf(GisKind::Region, {{0, 0, 0, 9, 9, 9, 9, 0, 0, 0}, {1, 1, 2, 1, 2, 2, 1, 2, 1, 1}}),
         "\"POLYGON ((0 0,0 9,9 9,9 0,0 0),(1 1,2 1,2 2,1 2,1 1))\""},
        {objectOf(GisKind::Region, {{0, 0, 0, 1, 1, 1, 0, 0}}), "\"POLYGON ((0 0,0 1,1 1,0 0))\""},
        {label, "\"POINT (1 2)\""},
        {objectOf(GisKind::None, {}), ""},
        {objectOf(GisKind::Point, {{1e8, -1e7}}), "\"POINT (100000000 -10000000)\""},
    };
    std::vector<GisObject> objects;
    std::vector<std::string> records;
    std::string expected = "WKT,ID,Grid_Ref,Elevation,Speed,Wet\n";
    for (const auto& r : rows) {
        objects.push_back(r.object);
        const std::string id = std::to_string(objects.size());
        records.push_back(id + ",\"Caf\xC3\xA9, \"\"A\"\"\",-1.5000,2.25,\"T\"");
        expected += std::string(r.wkt) + "," + id + ",\"Caf\xC3\xA9, \"\"A\"\"\",-1.5000,2.25,T\n";
    }
    const GisHeader header = {std::string(MGA),
                              "",
                              GisShape::Any,
                              {{"ID", "Integer"},
                               {"Grid Ref", "Char(20)"},
                               {"Elevation", "Decimal(10,4)"},
                               {"Speed", "Float"},
                               {"Wet", "Logical"}}};
    test.writeLayer("ours.mif", header, objects, records);
    CHECK(gdalSays(test.folder,
                   "ogr2ogr -f CSV /vsistdout/ @ours.mif -lco GEOMETRY=AS_WKT -lco STRING_QUOTING=IF_NEEDED") ==
          expected);
    const std::string said = gdalSays(test.folder, "ogrinfo -so -al @ours.mif");
    for (const char* part :
         {"\nFeature Count: 10\n", "Transverse Mercator", "GDA94", "origin\",147,",
          "ID: Integer (0.0)\nGrid_Ref: String (20.0)\nElevation: Real (10.4)\nSpeed: Real (0.0)\nWet: String (1.0)\n"})
        CHECK_MESSAGE(said.find(part) != std::string::npos, said);
    for (const char* trouble : {"Warning", "ERROR", "FAILURE"}) CHECK(said.find(trouble) == std::string::npos);
}

TEST_CASE("GDAL opens an empty layer and the default coordinate system") {
    if (!gdalIsThere()) return;
    const LayerTest test;
    test.writeLayer("empty.mif", {"", "", GisShape::Point, {{"ID", "Integer"}}}, {}, {});
    const std::string said = gdalSays(test.folder, "ogrinfo -so -al @empty.mif");
    CHECK(said.find("Feature Count: 0\n") != std::string::npos);
    CHECK(said.find("Nonearth") != std::string::npos);
    for (const char* trouble : {"Warning", "ERROR", "FAILURE"}) CHECK(said.find(trouble) == std::string::npos);
}
