#include "gis/layer_formats.h"

#include "gis/mif_layer.h"
#include "gis/shp_layer.h"
#include "services/files.h"

#include <algorithm>

namespace {

const LayerFormat FORMATS[] = {
    {GisFormat::Mif,
     {".mif", ".mid", ""},
     {".mif", ".mid", ""},
     "mif",
     mifOpen,
     mifClose,
     mifReadHeader,
     mifWriteHeader,
     mifObjectType,
     mifReadObject,
     mifReadRecord,
     mifGotoBeginningOfData,
     mifWriteObject,
     mifWriteRecord,
     mifAddToBatch,
     mifWriteBatch},
    {GisFormat::Shp,
     {".shp"},
     {".shp", ".dbf"},
     "shp",
     shpOpen,
     shpClose,
     shpReadHeader,
     shpWriteHeader,
     shpObjectType,
     shpReadObject,
     shpReadRecord,
     shpGotoBeginningOfData,
     shpWriteObject,
     shpWriteRecord,
     shpAddToBatch,
     shpWriteBatch,
     shpWriteEoF},
    {GisFormat::Csv,
     {},
     {".csv"},
     "csv",
     [](GisLayer& layer) {
         layer.files[2].handle = OPEN_FILE(layer.path, layer.mode == GisMode::Input ? "I " : "O ", "csv");
     },
     [](GisLayer& layer) { CLOSE_FILE(layer.files[2].handle); }},
};

}  // namespace

const LayerFormat* LAYER_FORMAT(std::string_view extension, GisTable wanted) {
    for (const LayerFormat& format : FORMATS) {
        const auto& own = wanted == GisTable::Alone ? format.tables : format.extensions;
        if (std::find(own.begin(), own.end(), extension) != own.end()) return &format;
    }
    return nullptr;
}
