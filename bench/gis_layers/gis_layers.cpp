// Times the layer library: writes a layer of points or four-cornered regions with six attributes, then reads it back.
//   bench_gis_layers points|regions <count> <layer.shp or layer.mif>
// gdal_layers.py beside this file times GDAL on the same layer.
#include "gis/data_line.h"
#include "gis/layers.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

/// A mesh in real coordinates, one cell of 10 m for each object in rows of 1000.
void fill(GisObject& o, bool regions, std::int64_t i) {
    const double x = 512000.0 + 10.0 * static_cast<double>(i % 1000) + 0.123;
    const double y = 6250000.0 + 10.0 * static_cast<double>(i / 1000) + 0.456;
    if (!regions) return o.setPoint(x, y);
    o.start(GisKind::Region);
    o.add(x, y);
    o.add(x, y + 10.0);
    o.add(x + 10.0, y + 10.0);
    o.add(x + 10.0, y);
    o.add(x, y);
    o.endPart();
}

void fillLine(std::string& line, std::int64_t i) {
    line.clear();
    const double part = static_cast<double>(i % 9973);
    ADD_TEXT(line, i % 2 == 0 ? "H" : "UV");
    ADD_INTEGER(line, i + 1);
    ADD_REAL(line, 0.0123 * part, 4);
    ADD_REAL(line, 0.00034 * part, 4);
    ADD_REAL(line, 0.036 * part, 2);
    ADD_REAL(line, -0.00021 * part, 4);
}

void writeLayer(std::string_view name, bool regions, std::int64_t count) {
    const std::int32_t id = gisOpenLayer(name, "R", "O ");
    gisHeader(id).shape = regions ? GisShape::Region : GisShape::Point;
    gisHeader(id).attributes = {
        {"PtType", "Char(2)"},      {"SMS_ID", "Integer"},       {"Water Level", "Decimal(10,4)"},
        {"Depth", "Decimal(10,4)"}, {"Bearing", "Decimal(6,2)"}, {"Magnitude", "Decimal(10,4)"}};
    gisWriteHeader(id);
    GisObject o;
    std::string line;
    for (std::int64_t i = 0; i < count; ++i) {
        fill(o, regions, i);
        gisWriteObject(id, o);
        fillLine(line, i);
        gisWriteRecord(id, line);
    }
    gisCloseLayer(id);
}

std::int64_t readLayer(std::string_view name) {
    const std::int32_t id = gisOpenLayer(name, "R", "I ");
    gisReadHeader(id);
    GisObject o;
    std::string line;
    std::int64_t count = 0;
    for (; gisObjectType(id, o); ++count) {
        gisReadObject(id, o);
        gisReadRecord(id, line);
    }
    gisCloseLayer(id);
    return count;
}

template <typename Step>
double secondsOf(Step step) {
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main(int argc, char* argv[]) {
    std::int64_t count = 0;
    const std::string_view kind = argc == 4 ? argv[1] : "";
    if (argc == 4) std::from_chars(argv[2], argv[2] + std::string_view(argv[2]).size(), count);
    if (count < 1 || (kind != "points" && kind != "regions")) {
        std::puts("bench_gis_layers points|regions <count> <layer.shp or layer.mif>");
        return 2;
    }
    try {
        INITIALISE_FILES();
        gisInitialise();
        const double write = secondsOf([&] { writeLayer(argv[3], kind == "regions", count); });
        std::int64_t read = 0;
        const double reading = secondsOf([&] { read = readLayer(argv[3]); });
        FLUSH_CONSOLE();
        const double objects = static_cast<double>(count);
        std::printf("%s: %.0f objects, write %.3f s (%.2f million/s), read %.3f s (%.2f million/s)\n", argv[3], objects,
                    write, objects / write / 1e6, reading, static_cast<double>(read) / reading / 1e6);
        return read == count ? 0 : 1;
    } catch (const RunStopped&) {
        return 1;
    }
}
