#include "gdal.h"

#include "layer_test.h"
#include "testing.h"

namespace {

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

}  // namespace

TEST_CASE("a .mif layer that GDAL wrote is read with the same content") {
    if (!gdalIsThere()) return;
    const LayerTest test;
    test.folder.write("in.geojson", GEOJSON);
    REQUIRE(gdalSays(test.folder, "ogr2ogr -f \"MapInfo File\" -dsco FORMAT=MIF @out.mif @in.geojson") == "");
    test.folder.write("cr.mif", replaced(test.folder.read("out.mif"), "\n", "\r\n"));
    test.folder.write("cr.mid", replaced(test.folder.read("out.mid"), "\n", "\r\n"));
    for (const char* name : {"out.mif", "cr.mif"}) {
        const auto& [said, header, objects, records] = test.readLayer(name);
        CHECK_MESSAGE(!said.ends_with("<stopped>"), said);
        CHECK(header.coordSys == "CoordSys Earth Projection 1, 104");
        CHECK(columnsOf(header) == "id Integer;name Char(254);v Float;d Date;");
        REQUIRE(objects.size() == std::size(FROM_GDAL));
        for (std::size_t i = 0; i < objects.size(); ++i) CHECK_MESSAGE(sameGeometry(objects[i], FROM_GDAL[i]), i);
        CHECK(records[0] == "1,\"Caf\xC3\xA9, \"\"A\"\"\",1.25,20200102");
        CHECK(records[1] == "2,\"b\",,");
    }
}
