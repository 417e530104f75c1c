#include "gdal_outputs/gdal_layers.h"
#include "gdal_outputs/module.h"

namespace {

GisObject region(double x, double y) {
    GisObject o;
    o.start(GisKind::Region);
    for (const auto& [dx, dy] : {std::pair{0.0, 0.0}, {0.0, 2.0}, {5.0, 2.0}, {5.0, 0.0}, {0.0, 0.0}})
        o.add(x + dx, y + dy);
    o.endPart();
    return o;
}

GisObject point(double x, double y) {
    GisObject o;
    o.setPoint(x, y);
    return o;
}

GdalValue integer(std::int64_t value) { return {1, value, 0.0, nullptr}; }
GdalValue real(double value) { return {1, 0, value, nullptr}; }
GdalValue text(const char* value) { return {1, 0, 0.0, value}; }

const std::string LONG_NAME = "Höhe \"am\" 'Wehr' v1.2 " + std::string(180, 'x');

/// Two layers, written in turns: points with fields of every type, and regions.
void writePackage(const std::string& path) {
    LayersWriter writer(gdalModule(), path, "GPKG", {"IDENTIFIER=made here"});
    const std::int32_t points = writer.add({"Water Level",
                                            GdalPoint,
                                            "EPSG:28355",
                                            {{"SMS_ID", GdalInteger},
                                             {"fid", GdalInteger64},
                                             {"Time", GdalReal},
                                             {"PtType", GdalTextField, 2},
                                             {"When", GdalDateTime},
                                             {"Day", GdalDate},
                                             {"Wet", GdalLogical}},
                                            {}});
    const std::int32_t cells = writer.add({LONG_NAME, GdalRegion, "", {{"Länge", GdalReal}}, {"IDENTIFIER=cells"}});
    for (int i = 1; i <= 3; ++i) {
        const GdalValue values[] = {
            integer(i),    integer(5000000000 + i),          i == 3 ? GdalValue{} : real(0.1 * i),
            text("é\""),   text("2020-02-29T12:00:00.250Z"), text("2020-02-29"),
            integer(i % 2)};
        writer.feature(points, point(10.0 * i, 7.5), values);
        const GdalValue length[] = {real(i)};
        writer.feature(cells, region(20.0 * i, 0.0), length);
    }
    writer.close();
}

}  // namespace

TEST_CASE("A GeoPackage keeps names, types, nulls and order, and is the same to the byte every time") {
    const TemporaryFolder folder;
    writePackage(folder.name("a.gpkg"));
    const std::string first = folder.read("a.gpkg");
    writePackage(folder.name("a.gpkg"));
    CHECK(filesIn(folder) == "a.gpkg ");
    CHECK(folder.read("a.gpkg") == first);
    const std::string info = gdalSays(folder, "ogrinfo -al @a.gpkg 'Water Level'");
    checkSays(info,
              "using driver `GPKG' successful | Geometry: Point | Feature Count: 3 | GDA94 / MGA zone 55 | FID Column "
              "= fid_ | SMS_ID: Integer (0.0) | fid: Integer64 (0.0) | Time: Real (0.0) | PtType: String (2.0) | When: "
              "DateTime | Day: Date | Wet: Integer(Boolean) | OGRFeature(Water Level):3 | fid (Integer64) = 5000000003 "
              "| Time (Real) = 0.2 | Time (Real) = (null) | PtType (String) = é\" | When (DateTime) = 2020/02/29 "
              "12:00:00.250+00 | Day (Date) = 2020/02/29 | POINT (30.0 7.5)");
    CHECK_FALSE(holds(info, "arning"));
    checkSays(gdalSays(folder, "ogrinfo -q @a.gpkg"), "2: " + LONG_NAME + " (Polygon)");
    const auto sql = [&](const std::string& query) {
        return gdalSays(folder, "ogrinfo -q @a.gpkg -sql \"" + query + "\"");
    };
    checkSays(sql("SELECT group_concat(srs_id || ' ' || last_change) AS a FROM gpkg_contents"),
              "a (String) = 28355 1970-01-01T00:00:00.000Z,-1 1970-01-01T00:00:00.000Z");
    checkSays(sql("SELECT count(*) AS n FROM gpkg_extensions WHERE extension_name='gpkg_rtree_index'"), "= 2");
    checkSays(sql("SELECT sum(minx) AS n FROM 'rtree_Water Level_geom'"), "= 60");
}

TEST_CASE("A FlatGeobuf keeps the order of its objects") {
    const TemporaryFolder folder;
    LayersWriter writer(gdalModule(), folder.name("a.fgb"), "FlatGeobuf", {});
    const std::int32_t layer = writer.add({"Depth", GdalMultiRegion, "", {{"n", GdalInteger}}, {}});
    for (const int x : {900, 0, 500}) {  // a sorting index would bring them into another order
        GisObject o = region(x, 0.0);
        const GisObject second = region(x + 50.0, 10.0);
        o.x.insert(o.x.end(), second.x.begin() + 1, second.x.end());
        o.y.insert(o.y.end(), second.y.begin() + 1, second.y.end());
        o.endPart();
        const GdalValue values[] = {integer(x)};
        writer.feature(layer, x == 0 ? region(0.0, 0.0) : o, values);
    }
    writer.close();
    const std::string info = gdalSays(folder, "ogrinfo -al @a.fgb");
    checkSays(info,
              "Feature Count: 3 | MULTIPOLYGON (((0 0,0 2,5 2,5 0,0 0))) | MULTIPOLYGON (((900 0,900 2,905 2,905 0,900 "
              "0)),((950 10,950 12,955 12,955 10,950 10)))");
    CHECK(info.find("n (Integer) = 900") < info.find("n (Integer) = 0"));
    CHECK(info.find("n (Integer) = 0") < info.find("n (Integer) = 500"));
    LayersWriter lines(gdalModule(), folder.name("l.fgb"), "FlatGeobuf", {});
    GisObject o;
    o.start(GisKind::PlineMultiple);
    for (const int x : {0, 3, 9}) {
        o.add(x, 1);
        o.add(x + 1, 2);
        o.endPart();
    }
    lines.feature(lines.add({"Banks", GdalMultiLine, "", {}, {}}), o, {});
    lines.close();
    checkSays(gdalSays(folder, "ogrinfo -al @l.fgb"), "MULTILINESTRING ((0 1,1 2),(3 1,4 2),(9 1,10 2))");
    CHECK(stopOf([&] {
              LayersWriter(gdalModule(), folder.name("a.tmp"), "FlatGeobuf", {});
          }).ends_with("a FlatGeobuf whose name does not end in .fgb would become a folder."));
    for (const int count : {0, 1, 16, 17, 257}) {  // nodes of the index hold 16
        LayersWriter indexed(gdalModule(), folder.name("i.fgb"), "FlatGeobuf", {"SPATIAL_INDEX=YES"});
        const std::int32_t points = indexed.add({"i", GdalPoint, "", {}, {}});
        for (int i = 0; i < count; ++i) indexed.feature(points, point(i, -i), {});
        indexed.close();
        checkSays(gdalSays(folder, "ogrinfo -so -al @i.fgb"), "Feature Count: " + std::to_string(count) + "$");
    }
}

TEST_CASE("Layers that cannot be completed leave nothing behind") {
    const TemporaryFolder folder;
    const auto write = [&](const char* name, const char* driver, int count, bool complete) {
        LayersWriter writer(gdalModule(), folder.name(name), driver, {});
        const std::int32_t layer = writer.add({"points", GdalPoint, "EPSG:28355", {{"z", GdalReal}}, {}});
        for (int i = 0; i < count; ++i) {
            const GdalValue values[] = {real(i)};
            writer.feature(layer, point(i, -i), values);
        }
        if (complete) writer.close();
    };
    for (const auto& [name, driver] : {std::pair{"a.gpkg", "GPKG"}, {"a.fgb", "FlatGeobuf"}}) {
        write(name, driver, 1000, false);
        CHECK(filesIn(folder) == "");
        for (const rlim_t full : {1000, 1000000}) {
            const std::string said = stopOfFullDisk(full, [&, n = name, d = driver] { write(n, d, 30000, true); });
            CHECK_MESSAGE(said.starts_with("ERROR - Could not write " + folder.name(name) + ": "), said);
            CHECK(filesIn(folder) == "");
        }
    }
    CHECK(stopOf([&] {
              LayersWriter writer(gdalModule(), folder.name("a.gpkg"), "GPKG", {});
              writer.feature(writer.add({"points", GdalPoint, "", {}, {}}), region(0.0, 0.0), {});
          }).ends_with(": an object of another kind than its layer's."));
    CHECK(filesIn(folder) == "");
}

TEST_CASE("Any layer is read as objects, fields and data lines") {
    const TemporaryFolder folder;
    const std::string name = folder.write("a.geojson", R"({"type":"FeatureCollection","name":"banks","features":[
{"type":"Feature","properties":{"name":"a \"b\"","n":3,"z":-0.125,"day":"2020-02-29","at":"2020-02-29T23:59:58+05:30"},
 "geometry":{"type":"Polygon","coordinates":[[[0,0],[9,0],[9,4],[0,4],[0,0]],[[1,1],[1,2],[2,2],[1,1]]]}},
{"type":"Feature","properties":{"name":null,"n":null,"z":2.5,"day":null,"at":null},
 "geometry":{"type":"MultiLineString","coordinates":[[[0,0],[1,2]],[[3,4],[5,6,7],[7,8]]]}},
{"type":"Feature","properties":{},"geometry":null},
{"type":"Feature","properties":{},"geometry":{"type":"MultiPoint","coordinates":[[1,2],[3,4]]}},
{"type":"Feature","properties":{},"geometry":{"type":"GeometryCollection","geometries":[{"type":"Point","coordinates":[1,2]}]}}]})");
    LayerReader reader(gdalModule(), name);
    CHECK(reader.facts().name == "banks");
    CHECK(reader.featureCount() == 5);
    CHECK(holds(reader.facts().crs, "WGS 84"));
    std::string types;
    for (const LayerField& field : reader.facts().fields) types += field.name + " " + ATTRIBUTE_TYPE_OF(field) + "; ";
    CHECK(types == "name Char(254); n Integer; z Float; day Char(10); at Char(32); ");
    using Values = std::vector<double>;
    const std::tuple<GisKind, std::vector<std::int32_t>, Values, Values, const char*> rows[] = {
        {GisKind::Region,
         {0, 5, 9},
         {0, 0, 9, 9, 0, 0, 1, 1, 2, 1},
         {0, 0, 0, 4, 4, 0, 1, 2, 2, 1},
         R"("a ""b""",3,-0.125,"2020-02-29","2020-02-29T23:59:58.000+05:30")"},
        {GisKind::PlineMultiple, {0, 2, 5}, {0, 0, 1, 3, 5, 7}, {0, 0, 2, 4, 6, 8}, R"("",,2.5,"","")"},
        {GisKind::None, {0}, {0}, {0}, R"("",,,"","")"},
        {GisKind::MultiPoint, {0, 2}, {0, 1, 3}, {0, 2, 4}, R"("",,,"","")"},
    };
    for (int again = 0; again < 2; ++again, reader.rewind()) {
        GisObject o;
        std::string line;
        for (const auto& [kind, ir, x, y, expected] : rows) {
            REQUIRE(reader.next(o));
            reader.dataLine(line);
            CHECK((o.kind == kind && o.ir == ir));
            CHECK((o.x == x && o.y == y));
            CHECK(line == expected);
        }
        CHECK(reader.values()[2].set == 0);
        CHECK(stopOf([&] { reader.next(o); }) ==
              "ERROR - Could not read " + name + ": an object that collects other objects (GEOMETRYCOLLECTION).");
        CHECK_FALSE(reader.next(o));
    }
    writePackage(folder.name("a.gpkg"));
    CHECK(stopOf([&] {
              LayerReader(gdalModule(), folder.name("a.gpkg"));
          }).ends_with("for one of Water Level, " + LONG_NAME + "."));
    CHECK(stopOf([&] {
              LayerReader(gdalModule(), folder.name("a.gpkg:x"));
          }).ends_with("a.gpkg:x: it has no layer x; it holds Water Level, " + LONG_NAME + "."));
    CHECK(LayerReader(gdalModule(), folder.name("a.gpkg:" + LONG_NAME)).featureCount() == 3);
    CHECK(stopOf([&] {
              LayerReader(gdalModule(), folder.write("b.gpkg", "no database"));
          }).starts_with("ERROR - Could not read "));
}
