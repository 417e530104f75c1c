#include "gdal_outputs/gdal_raster.h"
#include "gdal_outputs/module.h"
#include "geometry/no_value.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

namespace {

constexpr std::int32_t COLUMNS = 1300, ROWS = 700;  // three by two tiles of 512, cut off in the east and the south

/// Row 1 in the south. Nothing in a triangle and in two odd cells; the rest differs from cell to cell.
std::vector<float> values(int band) {
    std::vector<float> all;
    for (int row = 1; row <= ROWS; ++row)
        for (int column = 1; column <= COLUMNS; ++column)
            all.push_back(column + row < 300 ? NO_VALUE
                                             : static_cast<float>(band + row) + static_cast<float>(column) * 0.25F);
    all[COLUMNS * 300 + 700] = 2000.0F;  // the highest, in none of the outer rows
    all[COLUMNS * 600 + 10] = std::numeric_limits<float>::quiet_NaN();
    all[COLUMNS * 600 + 11] = -std::numeric_limits<float>::infinity();
    return all;
}

RasterFile fileOf(const TemporaryFolder& folder, int bands) {
    RasterFile file;
    file.path = folder.name("out.tif");
    file.multiband = bands > 1;
    file.columns = COLUMNS;
    file.rows = ROWS;
    file.geoTransform = {300000.0, 5.0, 0.0, 6200000.0, 0.0, -5.0000000001};  // both sizes are carried
    file.crs = "EPSG:28355";
    file.metadata = {"INPUT=x_h.dat"};
    for (int band = 1; band <= bands; ++band)
        file.bands.push_back({"Depth at " + std::to_string(band) + " h", "m", {"TIME=" + std::to_string(band)}});
    return file;
}

/// In blocks of `block` rows, from the south, or from the north when that is negative.
void write(const RasterFile& file, int block) {
    RasterWriter writer(gdalModule(), file);
    for (int band = 1; band <= static_cast<int>(file.bands.size()); ++band) {
        const std::vector<float> all = values(band);
        for (int done = 0; done < ROWS; done += std::abs(block)) {
            const int count = std::min(std::abs(block), ROWS - done);
            const int first = block < 0 ? ROWS - done - count : done;
            writer.rows(band, first + 1, count, &all[static_cast<std::size_t>(first) * COLUMNS]);
        }
    }
    writer.close();
}

/// A band as GDAL's tools read it: north to south.
std::vector<float> readBack(const TemporaryFolder& folder, int band) {
    const TemporaryFolder scratch;
    gdalSays(folder, "gdal_translate -q -of EHdr -b " + std::to_string(band) + " @out.tif " + scratch.name("back.flt"));
    const std::string bytes = scratch.read("back.flt");
    std::vector<float> all(bytes.size() / 4);
    std::memcpy(all.data(), bytes.data(), bytes.size());
    return all;
}

std::vector<float> expected(int band) {
    const std::vector<float> south = values(band);
    std::vector<float> all;
    for (std::size_t row = ROWS; row-- > 0;)
        for (std::size_t i = row * COLUMNS; i < (row + 1) * COLUMNS; ++i)
            all.push_back(std::isfinite(south[i]) ? south[i] : NO_VALUE);
    return all;
}

/// The bytes of a TIFF, read as its published layout has them.
struct Tiff {
    struct Directory {
        std::size_t at = 0;
        std::map<std::uint64_t, std::vector<std::uint64_t>> tags;
    };
    std::string bytes;

    std::uint64_t number(std::size_t at, std::size_t size) const {
        std::uint64_t value = 0;
        for (std::size_t i = size; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
        return value;
    }
    std::vector<Directory> directories() const {
        constexpr std::size_t SIZES[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
        std::vector<Directory> all;
        for (std::size_t at = number(4, 4); at != 0;) {
            all.push_back({at, {}});
            const std::size_t count = number(at, 2);
            for (std::size_t entry = at + 2; entry < at + 2 + 12 * count; entry += 12) {
                const std::size_t size = SIZES[number(entry + 2, 2)];
                const std::size_t length = number(entry + 4, 4);
                const std::size_t from = size * length > 4 ? number(entry + 8, 4) : entry + 8;
                for (std::size_t i = 0; i < length; ++i)
                    all.back().tags[number(entry, 2)].push_back(number(from + i * size, size));
            }
            at = number(at + 2 + 12 * count, 4);
        }
        return all;
    }
};

}  // namespace

TEST_CASE("A COG holds the values, says what they are, and is the same to the byte however its rows come") {
    const TemporaryFolder folder;
    RasterFile file = fileOf(folder, 1);
    write(file, ROWS);
    CHECK(filesIn(folder) == "out.tif ");
    const std::string first = folder.read("out.tif");
    CHECK(readBack(folder, 1) == expected(1));
    checkSays(gdalSays(folder, "gdalinfo @out.tif"),
              "GDA94 / MGA zone 55 | LAYOUT=COG | COMPRESSION=DEFLATE | INPUT=x_h.dat | TIME=1 | Block=512x512 "
              "Type=Float32 | Description = Depth at 1 h | Unit Type: m | NoData Value=-99999 | Overviews: 650x350, "
              "325x175 | Pixel Size = (5.000000000000000,-5.000000000100000) | STATISTICS_MINIMUM=76.75 | "
              "STATISTICS_MAXIMUM=2000 | STATISTICS_VALID_PERCENT=95.1");
    // three of the four cells hold nothing (columns and rows 149, 150): the average is that of the one
    CHECK(gdalSays(folder, "gdallocationinfo -valonly -overview 1 @out.tif 148 550") == "188.5\n");
    const std::tuple<int, int, std::int64_t> rows[] = {
        {1, 1, 0}, {-1, 3, 0}, {64, 2, 1000000}, {-200, 1, 1000000}};  // beyond the limit: through the disk
    for (const auto& [block, threads, memory] : rows) {
        file.threads = threads;
        file.memory = memory;
        write(file, block);
        CHECK(filesIn(folder) == "out.tif ");
        CHECK_MESSAGE((folder.read("out.tif") == first), block);
    }
}

TEST_CASE("The layout rules of COGs: directories first, small overviews before large ones, tiles in order and framed") {
    const TemporaryFolder folder;
    write(fileOf(folder, 1), ROWS);
    const Tiff tiff{folder.read("out.tif")};
    CHECK(tiff.bytes.substr(8, 43) == "GDAL_STRUCTURAL_METADATA_SIZE=000140 bytes\n");
    const auto directories = tiff.directories();
    REQUIRE(directories.size() == 3);
    std::uint64_t end = tiff.bytes.size();
    std::uint64_t width = 2 * COLUMNS;
    for (const auto& directory : directories) {
        const auto& offsets = directory.tags.at(324);
        const auto& sizes = directory.tags.at(325);
        CHECK(directory.tags.at(256)[0] == width / 2);
        width /= 2;
        CHECK(directory.tags.at(259)[0] == 8);  // deflate
        CHECK(directory.tags.at(317)[0] == 3);  // floating-point predictor
        CHECK(directory.tags.at(322)[0] == 512);
        CHECK(directory.at < directories.back().tags.at(324)[0]);
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            CHECK(tiff.number(offsets[i] - 4, 4) == sizes[i]);  // its length before, its last four bytes again behind
            CHECK(tiff.bytes.substr(offsets[i] + sizes[i] - 4, 4) == tiff.bytes.substr(offsets[i] + sizes[i], 4));
            if (i > 0) CHECK(offsets[i] == offsets[i - 1] + sizes[i - 1] + 8);
        }
        CHECK(offsets.back() + sizes.back() + 4 == end);
        end = offsets.front() - 4;
    }
    const std::string checked =
        gdalSays(folder, "/usr/bin/python3 -m osgeo_utils.samples.validate_cloud_optimized_geotiff @out.tif");
    if (!holds(checked, "o module named")) checkSays(checked, "is a valid cloud optimized GeoTIFF");
}

TEST_CASE("Times are bands, one after the other, the same to the byte for any number of threads") {
    const TemporaryFolder folder;
    RasterFile file = fileOf(folder, 3);
    write(file, 100);
    CHECK(filesIn(folder) == "out.tif ");
    for (int band = 1; band <= 3; ++band) CHECK(readBack(folder, band) == expected(band));
    const std::string first = folder.read("out.tif");
    checkSays(gdalSays(folder, "gdalinfo @out.tif"),
              "INTERLEAVE=BAND | COMPRESSION=DEFLATE | Band 3 Block=512x512 | Description = Depth at 3 h | TIME=2 | "
              "Overviews: 650x350, 325x175 | STATISTICS_MINIMUM=78.75 | STATISTICS_MAXIMUM=2000");
    CHECK(gdalSays(folder, "gdallocationinfo -valonly -b 3 -overview 1 @out.tif 148 550") == "190.5\n");
    for (const auto& directory : Tiff{first}.directories()) {
        CHECK(directory.tags.at(259)[0] == 8);
        CHECK(directory.tags.at(317)[0] == 3);
        CHECK(directory.tags.at(284)[0] == 2);  // band after band
    }
    file.threads = 3;
    write(file, 350);
    CHECK(folder.read("out.tif") == first);
}

TEST_CASE("A grid's place is that of its north-western corner") {
    Grid grid;
    grid.ncols = 3;
    grid.nrows = 2;
    grid.cellSize = 5.0;
    grid.xll = 100.0;
    grid.yll = 200.0;
    CHECK(GEO_TRANSFORM(grid) == std::array{100.0, 5.0, 0.0, 210.0, 0.0, -5.0});
}

TEST_CASE("A raster that cannot be completed leaves nothing behind") {
    const TemporaryFolder folder;
    const std::vector<float> all = values(1);
    for (const int bands : {1, 2}) {
        for (const std::int64_t memory : {std::int64_t{0}, std::int64_t{1000}}) {
            RasterFile file = fileOf(folder, bands);
            file.memory = memory;
            { RasterWriter(gdalModule(), file).rows(1, 1, 600, all.data()); }
            CHECK(filesIn(folder) == "");
            CHECK(stopOf([&] {
                      RasterWriter writer(gdalModule(), file);
                      writer.rows(1, 1, 600, all.data());
                      writer.close();
                  }) == "ERROR - Could not write " + file.path + ": the raster has not been given all its rows.");
            CHECK(filesIn(folder) == "");
            for (const rlim_t full : {1000, 40000}) {
                const std::string said = stopOfFullDisk(full, [&] { write(file, 100); });
                CHECK_MESSAGE(said.starts_with("ERROR - Could not write " + file.path + ": "), said);
                CHECK(filesIn(folder) == "");
            }
        }
    }
    RasterFile file = fileOf(folder, 1);
    file.path = folder.name("none/out.tif");
    CHECK(stopOf([&] { write(file, ROWS); }).starts_with("ERROR - Could not write " + file.path + ": "));
    file.crs = "+proj=isea +ellps=WGS84";
    CHECK(stopOf([&] { write(file, ROWS); }).ends_with("none/out.tif: a GeoTIFF cannot hold its coordinate system."));
}

TEST_CASE("Options of the driver are checked, and win") {
    const TemporaryFolder folder;
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"COG", "BLOCKSIZE=256", ""},
        {"COG", "blocksize=x", "\"x\" is no value of BLOCKSIZE"},
        {"COG", "BLOCKSIZE=64", "\"64\" is no value of BLOCKSIZE"},
        {"COG", "OVERVIEWS=SOME",
         "\"SOME\" is no value of OVERVIEWS; the valid ones are AUTO, IGNORE_EXISTING, FORCE_USE_EXISTING, NONE"},
        {"COG", "LEVEL", "\"LEVEL\" is not of the form KEY=VALUE"},
        {"GPKG", "DESCRIPTION=x", ""},  // of its layers
        {"GPKG", "VERSION=1.2", ""},
        {"GPKG", "SPATIAL_INDEX=perhaps", "\"perhaps\" is no value of SPATIAL_INDEX; the valid ones are YES, NO"},
        {"FlatGeobuf", "LEVEL=1", "FlatGeobuf has no option LEVEL; the valid ones are SPATIAL_INDEX, TEMPORARY_DIR"},
    };
    for (const auto& [driver, option, said] : rows) {
        const auto check = [&] { CHECK_GDAL_OPTIONS(gdalModule(), driver, {option}); };
        if (*said == '\0') CHECK(consoleOf(check) == "");
        else CHECK(stopOf(check) == std::string("ERROR - -co: ") + said + ".");
    }
    RasterFile file = fileOf(folder, 1);
    file.options = {"COMPRESS=LERC_DEFLATE", "BLOCKSIZE=256", "OVERVIEW_COUNT=1"};
    write(file, ROWS);
    checkSays(gdalSays(folder, "gdalinfo @out.tif"), "Overviews: 650x350$ | Block=256x256 | LERC_DEFLATE");
    CHECK(readBack(folder, 1) == expected(1));
}

TEST_CASE("The place of another raster is taken over to the last bit, unless its cells are no north-up squares") {
    const TemporaryFolder folder;
    const std::tuple<const char*, const char*> rows[] = {
        {"300000.1, 0.3, 0, 6200000.7, 0, -0.30000000000000004", nullptr},
        {"0, 5, 0, 0, 0, -5.00003", nullptr},  // over 1300 columns 0.039 m, less than a hundredth of a cell
        {"0, 5, 0, 0, 0, -5.00004", "has cells that are not square; its geotransform is 0, 5, 0, 0, 0, -5.00004"},
        {"0, 5, 0, 0, 0, 5", "has its first row in the south; its geotransform is 0, 5, 0, 0, 0, 5"},
        {"0, 5, 0.1, 0, 0, -5", "is turned; its geotransform is 0, 5, 0.1, 0, 0, -5"},
        {"0, 5, 0, 0, 0.1, -5", "is turned; its geotransform is 0, 5, 0, 0, 0.1, -5"},
        {nullptr, "has no geotransform"},
    };
    RasterPlace place;
    for (const auto& [transform, said] : rows) {
        std::string text = "<VRTDataset rasterXSize=\"1300\" rasterYSize=\"700\"><SRS>EPSG:28355</SRS>";
        if (transform != nullptr) text += std::string("<GeoTransform>") + transform + "</GeoTransform>";
        const std::string name =
            folder.write("a.vrt", text + "<VRTRasterBand dataType=\"Byte\" band=\"1\"/></VRTDataset>");
        const auto read = [&] { place = READ_RASTER_PLACE(gdalModule(), name); };
        if (said != nullptr)
            CHECK(stopOf(read) == "ERROR - Could not take over the grid of " + name + ": it " + said + ".");
        else CHECK(consoleOf(read) == "");
    }
    place = READ_RASTER_PLACE(gdalModule(), [&] {
        RasterFile file = fileOf(folder, 1);
        file.geoTransform = {300000.1, 0.3, 0.0, 6200000.7, 0.0, -0.30000000000000004};
        write(file, ROWS);
        return file.path;
    }());
    CHECK(place.geoTransform == std::array<double, 6>{300000.1, 0.3, 0.0, 6200000.7, 0.0, -0.30000000000000004});
    CHECK(place.columns == COLUMNS);
    CHECK(place.rows == ROWS);
    CHECK(holds(place.crs, "MGA zone 55"));
    folder.write("damaged.tif", folder.read("out.tif").substr(0, 100));
    CHECK(stopOf([&] {
              READ_RASTER_PLACE(gdalModule(), folder.name("damaged.tif"));
          }).starts_with("ERROR - Could not take over the grid of " + folder.name("damaged.tif") + ": "));
}
