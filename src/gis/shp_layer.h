// What an open shapefile set keeps beyond its entry in the layer table.
#pragma once

#include "gis/dbf_header.h"
#include "gis/layer_table.h"
#include "gis/shp_block.h"
#include "gis/shp_index.h"
#include "gis/shp_names.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

constexpr std::size_t SHP = 0, SHX = 1, DBF = 2;  ///< the set's places in GisLayer::files

/// How the next .dbf record was found. None: it has not been looked at.
enum class DbfRecord : std::uint8_t { None, Loaded, Deleted, Unrecognised, End, CutShort, Unreadable };

/// The .shp record that was entered last.
struct ShpRecord {
    std::int32_t type = -1;  ///< -1: none, or its coordinates have been read
    std::int32_t parts = 0;
    std::int32_t points = 0;
    std::int64_t contentBytes = 0;  ///< as its header says, shape type included
};

struct ShpLayer {
    std::string base;  ///< path without extension
    DbfTable table;
    std::string text, quoted;  ///< one value on its way into or out of its code page, and into its quotes

    // Output
    std::int32_t shapeType = SHP_NULL;  ///< of the layer; SHP_NULL until it is known
    std::array<OutputBlock, 3> blocks;  ///< by SHP, SHX, DBF
    bool warnedOfCut = false;
    std::int64_t nullObjects = 0;  ///< objects without geometry, which are left out with their records
    bool nullObject = false;       ///< the object just written was one of them

    // Input
    std::int64_t dataEnd = 0;   ///< bytes of the .shp file as its header says
    std::int64_t position = 0;  ///< of the .shp file, kept here since asking for it costs a system call
    ShxIndex index;             ///< where the objects are
    bool endChecked = false;    ///< the three files have been compared at the end of the layer
    bool warnedOfEnd = false;   ///< WARNING 0405 has been given
    TextDecoder decoder;        ///< of the table
    ShpRecord shape;
    DbfRecord recordState = DbfRecord::None;
    std::vector<char> record;  ///< the .dbf record, flag included
    std::vector<char> bytes;   ///< coordinates on their way in
};

/// What the set keeps of an open layer.
inline ShpLayer& SHP_OF(const GisLayer& layer) { return *static_cast<ShpLayer*>(layer.state.get()); }

// The operations of the format: see LayerFormat. shpWriteHeader also writes .prj and .cpg.
void shpOpen(GisLayer& layer);
void shpClose(GisLayer& layer);
void shpReadHeader(GisLayer& layer);
void shpWriteHeader(GisLayer& layer);
GisRead shpObjectType(GisLayer& layer, GisObject& o);
GisRead shpReadObject(GisLayer& layer, GisObject& o);
GisRead shpReadRecord(GisLayer& layer, std::string& line);
void shpGotoBeginningOfData(GisLayer& layer);
void shpWriteObject(GisLayer& layer, const GisObject& o);
bool shpWriteRecord(GisLayer& layer, std::string_view line, bool large);
void shpAddToBatch(const GisLayer& layer, GisBatch& batch, const GisObject& o, std::string_view line);
GisBatchWrite shpWriteBatch(GisLayer& layer, GisBatch& batch);
void shpWriteEoF(GisLayer& layer);

/// Adds a record as shpWriteRecord would write it. False, and nothing added, for a line that does not go into the
/// fields as it is.
bool ADD_PLAIN_DBF_RECORD(GrowingBytes& records, const DbfTable& table, std::string_view line);
/// Writes whole records. False when the disk refuses them, which is said.
bool PUT_DBF_RECORDS(GisLayer& layer, std::string_view bytes, std::int64_t count);

/// Reports where the trouble is, ahead of a numbered error: "<name of the file>, <object or record> <number>: <why>".
void REPORT_PLACE(const GisLayer& layer, std::size_t file, std::string_view why);
/// REPORT_PLACE, then the message and the end of the run.
[[noreturn]] void STOP_AT(const GisLayer& layer, std::size_t file, std::string_view why, std::string_view message);
/// REPORT_PLACE, then the message; the operation adds its own and stops.
GisRead FAILED_AT(const GisLayer& layer, std::size_t file, std::string_view why, std::string_view message);

/// Reads the next .dbf record, deleted or not, into SHP_OF(layer).record. WARNING 0405 when the file ends before its
/// header's count.
DbfRecord LOAD_DBF_RECORD(GisLayer& layer);
