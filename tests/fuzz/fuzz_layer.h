// For the fuzz targets of layers: a layer is read whole, twice.
#pragma once

#include "fuzz_run.h"
#include "gis/layers.h"

/// Writes the files in turn and reads `layer`.
inline void readFuzzedLayer(const std::uint8_t* data, std::size_t size, std::initializer_list<const char*> names,
                            const char* layer) {
    writePieces(data, size, names);
    gisInitialise();
    readFuzzed([&] {
        const auto id = gisOpenLayer(fuzzFolder().name(layer), "R", "I ", GisTable::Alone);
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
}
