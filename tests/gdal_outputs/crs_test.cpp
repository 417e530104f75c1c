#include "gdal_outputs/gdal_crs.h"
#include "gdal_outputs/module.h"

namespace {

Crs crsOf(const std::string& text) { return RESOLVE_CRS(gdalModule(), text, "-crs"); }

constexpr GdalBox around(double x, double y) { return {x, y, x + 20000.0, y + 10000.0}; }

}  // namespace

TEST_CASE("CoordSys lines are exact or refused") {
    const std::tuple<const char*, GdalBox, const char*> rows[] = {
        // null: refused
        {"EPSG:28355", around(5e5, 6e6), R"(CoordSys Earth Projection 8, 116, "m", 147, 0, 0.9996, 500000, 10000000)"},
        {"EPSG:32610", around(6e5, 4.2e6), R"(CoordSys Earth Projection 8, 104, "m", -123, 0, 0.9996, 500000, 0)"},
        {"EPSG:32610", around(0, 0), R"(CoordSys Earth Projection 8, 104, "m", -123, 0, 0.9996, 500000, 0)"},  // local
        {"EPSG:4326", {144.0, -38.0, 145.0, -37.0}, "CoordSys Earth Projection 1, 104"},
        {"EPSG:3035", around(4321000, 3210000), nullptr},  // without its false origin
        {"EPSG:3413", around(0, -1000000), nullptr},       // none but NonEarth
        {"EPSG:28992", around(155000, 463000), nullptr},   // with another datum
        {"EPSG:2056", around(2600000, 1200000), nullptr},  // with a lost datum: moves on the way elsewhere only
    };
    for (const auto& [crs, mesh, expected] : rows) {
        std::string line;
        const auto form = [&] { line = crsOf(crs).coordSys(mesh); };
        if (expected == nullptr) {
            CHECK(stopOf(form) == "ERROR - The coordinate system has no exact .mif form, give a Header.mif.");
            continue;
        }
        CHECK(consoleOf(form) == "");
        CHECK(line == expected);
    }
}

TEST_CASE("Systems are compared as systems, however they are written") {
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"EPSG:28355", "EPSG:28356", false},
        {"EPSG:28355", "EPSG:32755", false},  // the same numbers on another datum
        {"EPSG:28355", "EPSG:7855", false},
        {"EPSG:28355", R"(CoordSys Earth Projection 8, 116, "m", 147, 0, 0.9996, 500000, 10000000)", true},
        {"EPSG:28355", R"(CoordSys Earth Projection 8, 116, "m", 153, 0, 0.9996, 500000, 10000000)", false},
        {"EPSG:32610", "+proj=utm +zone=10 +datum=WGS84 +units=m", true},
    };
    for (const auto& [a, b, same] : rows) {
        CHECK_MESSAGE(crsOf(a).same(crsOf(b)) == same, b);
        CHECK_MESSAGE(crsOf(b).same(crsOf(a)) == same, b);
    }
    for (const char* code : {"EPSG:28355", "EPSG:3035", "EPSG:2193", "EPSG:27700", "EPSG:4326"}) {
        const Crs crs = crsOf(code);  // 3035 and 2193 have northing first
        CHECK(crs.code() == code);
        CHECK(crsOf(crs.esriWkt()).code() == code);
        CHECK_MESSAGE(crs.same(crsOf(crs.esriWkt())), code);
        CHECK(crs.same(crsOf(crs.wkt())));
    }
    CHECK(crsOf("EPSG:28355")
              .esriWkt()
              .starts_with(R"(PROJCS["GDA_1994_MGA_Zone_55",GEOGCS["GCS_GDA_1994",DATUM["D_GDA_1994",)"));
}

TEST_CASE("A mesh in or out of the area of its system") {
    const std::tuple<const char*, GdalBox, GdalAreaOfUse> rows[] = {
        {"EPSG:32610", around(620000, 4270000), GdalInside},
        {"EPSG:32610", around(0, 0), GdalOutside},  // local coordinates
        {"EPSG:32610", {500000, 4000000, 900000, 4100000}, GdalPartlyOutside},
        {"EPSG:3832", around(3000000, -2000000), GdalInside},  // across the date line
        {"+proj=tmerc +lon_0=11 +ellps=bessel", around(0, 0), GdalAreaUnknown},
    };
    for (const auto& [crs, mesh, where] : rows) CHECK_MESSAGE(crsOf(crs).areaOfUse(mesh) == where, crs);
}

TEST_CASE("A text may be a file's; what is no system is refused") {
    const TemporaryFolder folder;
    CHECK(crsOf(folder.write("a.prj", "\xEF\xBB\xBF" + crsOf("EPSG:28355").esriWkt() + "\r\n")).code() == "EPSG:28355");
    CHECK(crsOf(folder.write("old.prj", "Projection UTM\nZone 10\nDatum WGS84\nUnits METERS\nSpheroid WGS84\n"))
              .same(crsOf("EPSG:32610")));
    const std::string none = folder.write("none.prj", "nothing");
    for (const std::string& text : {std::string("EPSG:999999"), std::string("EPSG:5773"), std::string("EPSG:4978"),
                                    std::string("PROJCS[\"broken"), none, std::string()})
        CHECK_MESSAGE(stopOf([&] { crsOf(text); }).starts_with("ERROR - -crs " + text + ": "), text);
    CHECK(stopOf([&] {
              crsOf(folder.write("b.prj", std::string("a\0b", 3)));
          }).ends_with("b.prj is not the text of a coordinate system."));
}

TEST_CASE("PROJ without its data: run by the next test, in a process of its own" * doctest::skip()) {
    for (const char* text : {"EPSG:28355", "+proj=utm +zone=10 +datum=WGS84"})
        CHECK(stopOf([&] { crsOf(text); }) ==
              std::string("ERROR - -crs ") + text +
                  ": the data of the PROJ library (proj.db) were not found; PROJ_DATA or PROJ_LIB may be set wrongly.");
}

TEST_CASE("PROJ without its data is an error that says so") {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    CHECK(std::system(
              ("PROJ_DATA=/nowhere '" + self + "' -ns -m -tc='PROJ without its data: *' > /dev/null").c_str()) == 0);
}
