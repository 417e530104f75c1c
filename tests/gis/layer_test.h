// For the tests of layers: the library as at the start of a run, in a folder of its own.
#pragma once

#include "console_of.h"
#include "gis/layers.h"
#include "services/files.h"
#include "temporary_folder.h"

#include <functional>
#include <string>
#include <vector>

struct LayerTest {
    TemporaryFolder folder;
    LayerTest() {
        INITIALISE_FILES();
        gisInitialise();
    }
    ~LayerTest() { INITIALISE_FILES(); }  // before the folder goes, so that nothing in it is open

    /// Writes a layer of these objects; record i is `records[i]`. What the console shows comes back.
    std::string writeLayer(std::string_view file, const GisHeader& header, const std::vector<GisObject>& objects,
                           const std::vector<std::string>& records) const {
        return consoleOf([&] {
            const auto id = gisOpenLayer(folder.name(file), "R", "O ");
            gisHeader(id) = header;
            gisWriteHeader(id);
            for (std::size_t i = 0; i < objects.size(); ++i) {
                gisWriteObject(id, objects[i]);
                gisWriteRecord(id, records[i]);
            }
            gisCloseLayer(id);
        });
    }
    /// Reads a layer whole. drop: as the profile readers do.
    std::string readLayer(std::string_view file, std::vector<GisObject>& objects, std::vector<std::string>& records,
                          GisHeader& header, bool drop = false) const {
        return consoleOf([&] {
            const auto id = gisOpenLayer(folder.name(file), "R", "I ");
            if (drop) gisDropShortRegions(id);
            gisReadHeader(id);
            header = gisHeader(id);
            GisObject o;
            std::string record;
            while (gisObjectType(id, o)) {
                const bool kept = gisReadObject(id, o);
                gisReadRecord(id, record);
                if (!kept) continue;
                objects.push_back(o);
                records.push_back(record);
            }
            gisCloseLayer(id);
        });
    }
};

/// An object of parts given as lists of x, y, x, y, ...
inline GisObject objectOf(GisKind kind, const std::vector<std::vector<double>>& parts) {
    GisObject o;
    o.start(kind);
    for (const auto& part : parts) {
        for (std::size_t i = 0; i + 1 < part.size(); i += 2) o.add(part[i], part[i + 1]);
        o.endPart();
    }
    return o;
}

inline bool sameGeometry(const GisObject& a, const GisObject& b) {
    return a.kind == b.kind && a.nr == b.nr && a.ir == b.ir && a.x == b.x && a.y == b.y && a.text == b.text;
}
