#include "console_of.h"
#include "gdal_outputs/gdal_layers.h"
#include "gdal_outputs/gdal_module.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

TEST_CASE("A run that needs the GDAL module says so where there is none, or a damaged one") {
    const TemporaryFolder folder;
    const auto load = [&] { GDAL_MODULE("-gpkg", folder.name("bin")); };
    CHECK(consoleOf(load).starts_with(
        ON_WINDOWS ? "ERROR - The Windows build has no GDAL module; -gpkg needs the Linux build.\n"
                   : "ERROR - No GDAL module found; -gpkg needs it (Debian: package vorant-to-gis-gdal).\n"));
    std::filesystem::create_directories(folder.name("lib/vorant-to-gis"));
    folder.write("lib/vorant-to-gis/" + SHARED_LIBRARY_NAME("vorant_gdal"), "damaged");
    CHECK(consoleOf(load).starts_with("ERROR - The GDAL module cannot be loaded: "));
}

TEST_CASE("A layer behind a colon, and a GeoPackage that another program has open") {
    const TemporaryFolder folder;
    const std::string a = folder.write("a.gpkg", "");
    const std::string colon = folder.write("b:c.gpkg", "");
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {a, a, ""},
        {a + ":banks", a, "banks"},
        {colon, colon, ""},      // a file of that name wins
        {a + ":x:y", a, "x:y"},  // no file before the last colon
        {"none:x", "none:x", ""},
    };
    for (const auto& [text, file, layer] : rows) {
        const LayerPath split = SPLIT_LAYER_PATH(text);
        CHECK(split.file == file);
        CHECK(split.layer == layer);
    }
    CHECK_FALSE(OPEN_ELSEWHERE(a));
    folder.write("a.gpkg-shm", "");
    CHECK(OPEN_ELSEWHERE(a) == a + "-shm");
}
