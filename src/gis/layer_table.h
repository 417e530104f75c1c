// Inside the library: the layer table, and what a format has to provide. Callers use gis/layers.h.
#pragma once

#include "gis/batch.h"
#include "gis/code_page.h"
#include "gis/coord_sys.h"
#include "gis/layers.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

enum class GisMode : std::int32_t { Closed = -1, NotSet = 0, Input = 1, Output = 2 };

/// One file of a layer. The format that opened it keeps it up to date.
struct GisFile {
    int handle = 0;          ///< of services/files.h; 0 when not open
    std::int64_t bytes = 0;  ///< input: length of the file; output: bytes written so far
    std::int64_t count = 0;  ///< lines (.mif, .mid) or records (.shp, .shx, .dbf) read or written so far
    /// bounds of what was written; xmax below xmin before the first object
    double xmin = 0.0, ymin = 0.0, xmax = -1.0, ymax = -1.0;
};

struct LayerFormat;

/// One entry of the table. Filled by gisOpenLayer and then by the layer's format.
struct GisLayer {
    std::int32_t id = 0;
    GisFormat format = GisFormat::None;
    bool open = false;
    GisMode mode = GisMode::NotSet;
    bool eofPending = false;        ///< set by gisWriteHeader and gisWriteObject; gisCloseLayer then runs gisWriteEoF
    bool tableOnly = false;         ///< .dbf or .csv alone
    bool dropShortRegions = false;  ///< gisDropShortRegions
    bool warnedOfText = false;      ///< the one WARNING of characters that code page 1252 lacks has been given
    std::string path;               ///< name the layer was opened with
    std::size_t listNumber = 0;     ///< its number in the input-layer list, from 1; 0 when not tracked
    GisHeader header;
    GisKind kind = GisKind::None;  ///< of the last object read or written, for messages
    const LayerFormat* routines = nullptr;
    std::array<GisFile, 3> files;  ///< .mif, .mid; or .shp, .shx, .dbf
    std::shared_ptr<void> state;   ///< what else the format keeps; made by its open
};

/// How reading went. Failed: the format has reported its own numbered error with DMESSAGE; the operation then adds
/// ERROR 0253 or 0254 and stops. End: nothing left, in order. Dropped: a short region was passed over, with its
/// WARNING.
enum class GisRead : std::uint8_t { Done, End, Dropped, Failed };

// ---- the table ----
/// The entry of gisID 1 to MOST_LAYERS, open or not.
GisLayer& gisEntry(std::int32_t gisID);
/// Stops with "Should not be here <operation>[gisID=0] - please contact ..." for a handle below 1.
void gisCheckHandle(std::int32_t gisID, std::string_view operation);
/// What gisSetExtent was given.
const MapExtent& gisExtent();

// ---- for the formats ----
/// "POINT", "PLINE MULTIPLE", ... as the messages name it.
std::string_view gisKindName(GisKind kind);
/// The shape that holds objects of this kind; Any for kinds that a shapefile lacks.
GisShape gisShapeOf(GisKind kind);
/// "ERROR 0310 - <text>" with the lines "Requested" and "Limit"; the caller then returns Failed. text: "Exceeded number
/// of ...".
void gisReportTooManyVertices(std::string_view text, std::int64_t requested);
/// Stops with the stated check unless the part ends of `o` rise strictly.
void gisCheckParts(const GisLayer& layer, const GisObject& o);
/// True when they do, and every part has its coordinates.
bool gisHasGoodParts(const GisObject& o);
/// True when one of the object's coordinates is NaN or infinite.
bool gisHasBadCoordinate(const GisObject& o);
/// Stops the run: `file` would pass MOST_FILE_BYTES with what comes next. advice: "Use -mif or a coarser output."
[[noreturn]] void gisStopAtFileLimit(std::string_view file, std::string_view advice);
/// ERROR or, with GisProjection::differenceIsWarning, WARNING 0305: the input layer `name` lies in another projection
/// than the run. extension: ".mif" or ".shp".
void gisReportProjection(std::string_view extension, const std::string& name, std::string_view layers,
                         std::string_view runs);
/// Takes a code page for the text of an input layer, with a WARNING when this system does not have it.
void gisChoosePage(const GisLayer& layer, TextDecoder& text, int page);
/// The one WARNING of a layer whose text holds characters that code page 1252 lacks.
void gisWarnOfText(GisLayer& layer);
/// "Should not be here [<check>].  Please contact <support>", the wording of the format checks of the write operations.
[[noreturn]] void gisFormatCheck(std::string_view check);

// ---- what a format provides ----
/// One format: a row of gis/layer_formats.cpp. The operations of layers.h have already checked the handle, the mode,
/// and for writeObject the planned shape and the part ends, and have set layer.kind. path, mode, tableOnly, id and
/// listNumber are set before open; header is filled by the producer before writeHeader. Routines without a result stop
/// the run when they fail, after the stated message. Every result of the file service is checked.
struct LayerFormat {
    GisFormat number = GisFormat::Other;
    std::vector<std::string_view> extensions;  ///< of layers of objects; "" for a name without one
    std::vector<std::string_view> tables;      ///< of tables alone
    std::string_view checkName;                ///< names the format in the checks of gisWriteObject
    /// Opens or creates the files, and checks an input's coordinate system against gisProjection().
    void (*open)(GisLayer&) = nullptr;
    /// Closes whatever of its files is open. Does not write anything.
    void (*close)(GisLayer&) = nullptr;
    // A format with none of the following is opened and closed only.
    /// Fills layer.header and stands at the first object and record.
    void (*readHeader)(GisLayer&) = nullptr;
    /// Writes the headers. Attribute names are cleaned here (CLEANED_NAMES), not in the record.
    void (*writeHeader)(GisLayer&) = nullptr;
    /// Done with o started (GisObject::start) as the next object's kind, or End. Its errors stop the run here: no
    /// object is known yet.
    GisRead (*objectType)(GisLayer&, GisObject& o) = nullptr;
    /// The coordinates of that object: Done, Dropped or Failed. Never allocates more than the rest of the file can
    /// fill.
    GisRead (*readObject)(GisLayer&, GisObject& o) = nullptr;
    /// Done with the data line in UTF-8, End (table-only layers), or Failed.
    GisRead (*readRecord)(GisLayer&, std::string& line) = nullptr;
    /// Back to the first object and record; the header stays as read.
    void (*gotoBeginningOfData)(GisLayer&) = nullptr;
    /// ERROR 0439 when the coordinates are refused or not written, ERROR 0350 for a kind that the format lacks.
    void (*writeObject)(GisLayer&, const GisObject& o) = nullptr;
    /// large: the line is beyond DATA_LINE_WIDTH, for messages. False: its own error is reported and the operation
    /// adds ERROR 0254.
    bool (*writeRecord)(GisLayer&, std::string_view line, bool large) = nullptr;
    /// Adds to a batch what writeObject and writeRecord would write, or finds it not plain. On any thread; says
    /// nothing.
    void (*addToBatch)(const GisLayer&, GisBatch&, const GisObject& o, std::string_view line) = nullptr;
    /// Writes a plain batch behind what is there. Failed: as writeRecord.
    GisBatchWrite (*writeBatch)(GisLayer&, GisBatch&) = nullptr;
    /// Final headers of an output; nullptr for none.
    void (*writeEoF)(GisLayer&) = nullptr;
};
