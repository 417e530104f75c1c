#include "gis/layers.h"

#include "gis/input_log.h"
#include "gis/layer_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <array>

namespace {

struct LayerTable {
    std::array<GisLayer, MOST_LAYERS + 1> layers;  ///< numbered from 1; entry 0 unused
    GisProjection projection;
    MapExtent extent;
};
LayerTable table;

/// An open layer and what its format does. `mode` Closed admits layers of either mode.
struct Dispatch {
    GisLayer& layer;
    const LayerFormat& format;
};
bool suits(std::int32_t gisID, GisMode mode) {
    if (gisID > MOST_LAYERS) return false;
    const GisLayer& layer = gisEntry(gisID);
    return layer.open && layer.routines->readHeader != nullptr && (mode == GisMode::Closed || layer.mode == mode);
}
Dispatch dispatchTo(std::int32_t gisID) { return {gisEntry(gisID), *gisEntry(gisID).routines}; }

Dispatch dispatch(std::int32_t gisID, std::string_view operation, GisMode mode) {
    gisCheckHandle(gisID, operation);
    if (!suits(gisID, mode)) SHOULD_NOT_BE_HERE(operation);
    return dispatchTo(gisID);
}

/// The same for the write operations whose check names the format.
Dispatch dispatchWrite(std::int32_t gisID, std::string_view operation, std::string_view suffix) {
    gisCheckHandle(gisID, operation);
    if (!suits(gisID, GisMode::Output)) gisFormatCheck(std::string(operation) + std::string(suffix));
    return dispatchTo(gisID);
}

[[noreturn]] void stopAfterFailure(const GisLayer& layer, std::string_view what) {
    STOP_RUN("ERROR " + std::string(what) + " for a " + std::string(gisKindName(layer.kind)) + " object in GIS layer.");
}

const LayerFormat& formatOf(const std::string& extension, GisTable wanted) {
    const LayerFormat* format = LAYER_FORMAT(extension, wanted);
    if (format == nullptr) STOP_RUN("ERROR 0252 - " + extension + " is not a supported GIS file format.");
    return *format;
}

std::int32_t lowestFreeID() {
    for (std::int32_t id = 1; id <= MOST_LAYERS; ++id)
        if (!gisEntry(id).open) return id;
    STOP_RUN("ERROR 0251 - Cannot have more than " + std::to_string(MOST_LAYERS) + " GIS layers open at once.");
}

bool isOneLine(std::string_view line) {
    return line.find('\n') == std::string_view::npos && line.find('\r') == std::string_view::npos &&
           line.size() < LONGEST_LINE;
}

void writeRecord(std::int32_t gisID, std::string_view line, bool large) {
    const auto [layer, format] = dispatchWrite(gisID, large ? "gisWriteRecordLarge" : "gisWriteRecord", "-dbf");
    layer.eofPending = true;
    const bool oneLine = isOneLine(line);
    if (oneLine && format.writeRecord(layer, line, large)) return;
    if (!oneLine) REPORT("   The data line is broken or too long: " + std::string(line.substr(0, 200)));
    stopAfterFailure(layer, large ? "0254 - Failed to write large attribute data record"
                                  : "0254 - Failed to write attribute data record");
}

}  // namespace

GisLayer& gisEntry(std::int32_t gisID) { return table.layers[static_cast<std::size_t>(gisID)]; }
const MapExtent& gisExtent() { return table.extent; }

void gisInitialise() {
    table = LayerTable{};
    INITIALISE_INPUT_LOG();
}
void gisSetProjection(const GisProjection& projection) { table.projection = projection; }
const GisProjection& gisProjection() { return table.projection; }
void gisSetExtent(double xmin, double ymin, double xmax, double ymax) { table.extent = {xmin, ymin, xmax, ymax}; }
void gisOpenInputLog(std::string_view base) { OPEN_INPUT_LOG(base); }

// ---- opening and closing ----
std::int32_t gisOpenLayer(std::string_view name, std::string_view, std::string_view mode, GisTable wanted) {
    REPORT("Opening GIS Layer: " + std::string(name));
    const std::int32_t id = lowestFreeID();
    REPORT("GIS Layer assigned ID of " + std::to_string(id));
    gisInitialiseLayer(id);
    GisLayer& layer = gisEntry(id);
    const std::string extension = FILEEXT(name);
    layer.routines = &formatOf(extension, wanted);
    layer.format = layer.routines->number;
    layer.path = FITTED(name, FILE_NAME_WIDTH);
    layer.tableOnly = extension == ".dbf" || extension == ".csv";
    layer.mode = mode == "I " ? GisMode::Input : mode == "O " ? GisMode::Output : GisMode::NotSet;
    if (layer.mode == GisMode::Input)
        layer.listNumber = TRACK_INPUT_LAYER(extension.empty() ? layer.path + ".mif" : layer.path, id);
    if (layer.mode == GisMode::NotSet) SHOULD_NOT_BE_HERE("gisOpenLayer");
    layer.routines->open(layer);
    layer.open = true;
    return id;
}

void gisInitialiseLayer(std::int32_t gisID) {
    if (gisID < 1)
        STOP_RUN("Should not be here gisInitialiseLayer[gisID=0] - please contact " + std::string(SUPPORT_CONTACT));
    if (gisID > MOST_LAYERS) SHOULD_NOT_BE_HERE("gisInitialiseLayer");
    gisEntry(gisID) = GisLayer{};
    gisEntry(gisID).id = gisID;
}

void gisCloseLayer(std::int32_t gisID) {
    if (gisID < 1) {
        DMESSAGE("SOFTWARE CHECK - Trying to close a GIS Layer that's not open.  Please contact " +
                 std::string(SUPPORT_CONTACT));
        return;
    }
    if (gisID > MOST_LAYERS) SHOULD_NOT_BE_HERE("gisCloseLayer");
    GisLayer& layer = gisEntry(gisID);
    REPORT("Closing GIS Layer " + std::to_string(gisID) + " [" + layer.path + "]...");
    if (layer.eofPending) gisWriteEoF(gisID);
    if (layer.routines == nullptr) SHOULD_NOT_BE_HERE("gisCloseLayer");
    layer.routines->close(layer);
    layer.open = false;
    layer.mode = GisMode::Closed;
    layer.eofPending = false;
    layer.format = GisFormat::None;
    layer.routines = nullptr;
}

void gisCloseAllLayers() {
    REPORT("Closing any unclosed GIS layers...");
    for (std::int32_t id = 1; id <= MOST_LAYERS; ++id)
        if (gisEntry(id).open) gisCloseLayer(id);
    CLOSE_INPUT_LOG();
}

// ---- header ----
GisHeader& gisHeader(std::int32_t gisID) { return dispatch(gisID, "gisHeader", GisMode::Closed).layer.header; }

void gisReadHeader(std::int32_t gisID) {
    const auto [layer, format] = dispatch(gisID, "gisReadHeader", GisMode::Input);
    layer.header = GisHeader{};
    layer.header.format = layer.format;
    format.readHeader(layer);
}

void gisWriteHeader(std::int32_t gisID) {
    const auto [layer, format] = dispatch(gisID, "gisWriteHeader", GisMode::Output);
    if (layer.header.attributes.size() > MOST_ATTRIBUTES) SHOULD_NOT_BE_HERE("gisWriteHeader");
    format.writeHeader(layer);
    layer.eofPending = true;
}

// ---- objects and records ----
bool gisObjectType(std::int32_t gisID, GisObject& o) {
    const auto [layer, format] = dispatch(gisID, "gisObjectType", GisMode::Input);
    const GisRead read = format.objectType(layer, o);
    if (read == GisRead::Done) layer.kind = o.kind;
    if (read == GisRead::Failed) EXITS();
    return read == GisRead::Done;
}

bool gisReadObject(std::int32_t gisID, GisObject& o) {
    const auto [layer, format] = dispatch(gisID, "gisReadObject", GisMode::Input);
    const GisRead read = format.readObject(layer, o);
    if (read == GisRead::Failed) stopAfterFailure(layer, "0253 - Failed to read coordinates");
    return read == GisRead::Done;
}

bool gisReadRecord(std::int32_t gisID, std::string& line) {
    const auto [layer, format] = dispatch(gisID, "gisReadRecord", GisMode::Input);
    const GisRead read = format.readRecord(layer, line);
    if (read == GisRead::Done) return true;
    line.clear();
    if (read == GisRead::Failed || !layer.tableOnly)
        stopAfterFailure(layer, "0254 - Failed to read object attribute data record");
    return false;
}

void gisDropShortRegions(std::int32_t gisID) {
    dispatch(gisID, "gisDropShortRegions", GisMode::Input).layer.dropShortRegions = true;
}

void gisGotoBeginningOfData(std::int32_t gisID) {
    const auto [layer, format] = dispatch(gisID, "gisGotoBeginningOfData", GisMode::Input);
    REPORT("Rewinding GIS Layer " + std::to_string(gisID));
    format.gotoBeginningOfData(layer);
}

void gisWriteObject(std::int32_t gisID, const GisObject& o) {
    const auto [layer, format] = dispatchWrite(gisID, "gisWriteObject", "-shp");
    const GisShape shape = gisShapeOf(o.kind);
    if (layer.header.shape != GisShape::Any && shape != GisShape::Any && shape != layer.header.shape)
        gisFormatCheck("gisWriteObject-" + std::string(format.checkName));
    gisCheckParts(layer, o);
    layer.kind = o.kind;
    layer.eofPending = true;
    format.writeObject(layer, o);
}

void gisWriteRecord(std::int32_t gisID, std::string_view line) {
    writeRecord(gisID, line, line.size() > DATA_LINE_WIDTH);
}

void gisAddToBatch(std::int32_t gisID, GisBatch& batch, const GisObject& o, std::string_view line) {
    const GisLayer& layer = gisEntry(gisID);
    const GisShape shape = layer.header.shape;
    batch.plain = batch.plain && layer.routines->addToBatch != nullptr && gisHasGoodParts(o) && isOneLine(line) &&
                  line.size() <= DATA_LINE_WIDTH && (shape == GisShape::Any || shape == gisShapeOf(o.kind));
    if (!batch.plain) return;
    layer.routines->addToBatch(layer, batch, o, line);
    batch.kind = o.kind;
    ++batch.count;
}

bool gisWriteBatch(std::int32_t gisID, GisBatch& batch) {
    const auto [layer, format] = dispatchWrite(gisID, "gisWriteObject", "-shp");
    if (!batch.plain) return false;
    if (batch.count == 0) return true;
    layer.kind = batch.kind;
    layer.eofPending = true;
    const GisBatchWrite written = format.writeBatch(layer, batch);
    if (written == GisBatchWrite::Failed) stopAfterFailure(layer, "0254 - Failed to write attribute data record");
    return written == GisBatchWrite::Done;
}

void gisWriteEoF(std::int32_t gisID) {
    const auto [layer, format] = dispatch(gisID, "gisWriteEoF", GisMode::Output);
    if (format.writeEoF != nullptr) format.writeEoF(layer);
    layer.eofPending = false;
}
