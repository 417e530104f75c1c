// Inside the library: what a MIF/MID layer keeps beside its entry in the layer table, and how its lines are read.
// files[0] of the entry is the .mif file, files[1] the .mid file. Layout: the MIF/MID data format of the MapInfo
// interchange documentation.
#pragma once

#include "gis/growing_bytes.h"
#include "gis/layer_table.h"
#include "services/files.h"

#include <cstdint>
#include <string>
#include <string_view>

struct MifLayer {
    // input
    char delimiter = '\t';  ///< of the .mid file; tab when the header does not say
    TextDecoder decoder;
    std::int64_t dataOffset = 0;   ///< of the first object in the .mif file; 0 before the header was read
    std::int64_t headerLines = 0;  ///< lines before it
    std::string keywordLine;       ///< what follows the keyword on the line of the object about to be read
    std::int64_t objects = 0;      ///< read or written so far
    std::int64_t records = 0;
    // scratch
    GrowingBytes text;
    std::string line;
};

/// What the .mif keeps of an open layer.
inline MifLayer& MIF_OF(const GisLayer& layer) { return *static_cast<MifLayer*>(layer.state.get()); }

// The operations of the format: see LayerFormat.
void mifOpen(GisLayer& layer);
void mifClose(GisLayer& layer);
void mifReadHeader(GisLayer& layer);
void mifWriteHeader(GisLayer& layer);
GisRead mifObjectType(GisLayer& layer, GisObject& o);
GisRead mifReadObject(GisLayer& layer, GisObject& o);
GisRead mifReadRecord(GisLayer& layer, std::string& line);
void mifGotoBeginningOfData(GisLayer& layer);
void mifWriteObject(GisLayer& layer, const GisObject& o);
bool mifWriteRecord(GisLayer& layer, std::string_view line, bool large);
void mifAddToBatch(const GisLayer& layer, GisBatch& batch, const GisObject& o, std::string_view line);
GisBatchWrite mifWriteBatch(GisLayer& layer, GisBatch& batch);

/// Next line of the .mif file, counted for messages. The view is valid until the next call.
inline LineStatus mifNextLine(GisLayer& layer, std::string_view& line) {
    ++layer.files[0].count;
    return READ_LINE(layer.files[0].handle, line);
}

/// Both files back to their first byte, nothing read.
void mifGotoBeginningOfFiles(GisLayer& layer);
/// "   <name of the file>, line <n>": where a message about a file of the layer points to.
void mifReportPlace(const GisFile& file);
/// Says that a line of the .mid file holds fewer values than there are attributes.
void mifReportValues(const GisLayer& layer, std::size_t values);
