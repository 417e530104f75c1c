// For the fuzz targets of layers: the pieces of one input become the files of a layer, which is then read whole, twice.
#pragma once

#include "console_of.h"
#include "gis/layers.h"
#include "services/files.h"
#include "temporary_folder.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

constexpr std::string_view NEXT_FILE = "\n====\n";  ///< stands between the files in one input

/// Writes x<extension> for each extension in turn and reads `layer`. A stopped run is an answer like any other.
inline void readFuzzedLayer(const std::uint8_t* data, std::size_t size, std::initializer_list<const char*> extensions,
                            const char* layer) {
    static const TemporaryFolder folder;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (const char* extension : extensions) {
        const std::size_t end = rest.find(NEXT_FILE);
        folder.write(std::string("x") + extension, rest.substr(0, end));
        rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + NEXT_FILE.size());
    }
    INITIALISE_FILES();
    gisInitialise();
    consoleOf([&] {
        const auto id = gisOpenLayer(folder.name(layer), "R", "I ", GisTable::Alone);
        if (size % 2 == 0) gisDropShortRegions(id);
        gisReadHeader(id);
        GisObject o;
        std::string record;
        for (int pass = 0; pass < 2; ++pass) {
            while (gisObjectType(id, o)) {
                gisReadObject(id, o);
                gisReadRecord(id, record);
            }
            gisGotoBeginningOfData(id);
        }
        gisCloseAllLayers();
    });
    INITIALISE_FILES();
}
