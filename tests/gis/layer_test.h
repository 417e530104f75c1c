// For the tests of layers: the library as at the start of a run, in a folder of its own.
#pragma once

#include "console_of.h"
#include "gis/layers.h"
#include "services/files.h"
#include "temporary_folder.h"

#include <sstream>
#include <string>
#include <vector>

/// "Name=Char(4);ID=Integer": a header with these columns.
inline GisHeader headerOf(const std::string& columns, GisShape shape = GisShape::Any) {
    GisHeader header;
    header.shape = shape;
    std::istringstream list(columns);
    for (std::string name, type; std::getline(list, name, '=') && std::getline(list, type, ';');)
        header.attributes.push_back({name, type});
    return header;
}
/// "Name Char(4);" for each column.
inline std::string columnsOf(const GisHeader& header) {
    std::string columns;
    for (const GisAttribute& a : header.attributes) columns += a.name + ' ' + a.type + ';';
    return columns;
}

/// What the console shows of a layer, and what was read of it.
struct ReadLayer {
    std::string said;
    GisHeader header;
    std::vector<GisObject> objects;
    std::vector<std::string> records;
};

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
    ReadLayer readLayer(std::string_view file, bool drop = false) const {
        ReadLayer read;
        read.said = consoleOf([&] {
            const auto id = gisOpenLayer(folder.name(file), "R", "I ");
            if (drop) gisDropShortRegions(id);
            gisReadHeader(id);
            read.header = gisHeader(id);
            GisObject o;
            std::string record;
            while (gisObjectType(id, o)) {
                const bool kept = gisReadObject(id, o);
                gisReadRecord(id, record);
                if (!kept) continue;
                read.objects.push_back(o);
                read.records.push_back(record);
            }
            gisCloseLayer(id);
        });
        return read;
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
