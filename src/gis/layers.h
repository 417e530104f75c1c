// The GIS layer library: vector layers written and read through one set of operations, whatever the format on disk.
//
// A layer is opened by file name and known by its gisID. The extension, in any letter case, chooses the format:
//   .mif, .mid or none   a MIF/MID pair: <base>.mif with header and geometry, <base>.mid with one attribute line per
//   object .shp                 a shapefile set: <base>.shp, .shx, .dbf, .cpg and, when a projection text is set, .prj
//   .dbf, .csv           the attribute table alone, for callers that allow it
// Writing:  gisOpenLayer("x.shp", "R", "O "); gisHeader(id) = {...}; gisWriteHeader(id);
//           then gisWriteObject and gisWriteRecord for each object, in pairs; gisCloseLayer(id).
// Reading:  gisOpenLayer("x.shp", "R", "I "); gisReadHeader(id);
//           while (gisObjectType(id, o)) { if gisReadObject(id, o) ...; gisReadRecord(id, line); }  gisCloseLayer(id).
//
// What stops the run. A numbered ERROR, after saying which file and where; "Should not be here ..." when an operation
// is called with a handle that is not open or that does not suit it; a file that the disk refuses. WARNINGs let the
// operation go on. A layer is complete once gisCloseLayer has returned. No file passes MOST_FILE_BYTES: the run stops
// before it does.
#pragma once

#include "gis/batch.h"
#include "gis/object.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

constexpr std::int32_t MOST_LAYERS = 100;         ///< open at once
constexpr std::size_t MOST_ATTRIBUTES = 256;      ///< of a layer; a shapefile takes 128
constexpr std::size_t MOST_INPUT_LAYERS = 999;    ///< tracked
constexpr std::size_t ATTRIBUTE_NAME_WIDTH = 32;  ///< characters kept when read
constexpr std::size_t ATTRIBUTE_TYPE_WIDTH = 24;
constexpr std::size_t DATA_LINE_WIDTH = 1000;         ///< characters of a data line; longer ones are "large"
constexpr std::int64_t MOST_FILE_BYTES = 2147483647;  ///< GIS packages keep file offsets in 32 bits

struct GisAttribute {
    std::string name;  ///< as the producer likes it; cleaned, cut and made unique when written (gis/attributes.h)
    std::string type;  ///< MIF column syntax: "Integer", "Float", "Char(40)", "Decimal(10,4)", "Logical"
};

/// Other: a format that callers tell by its extension alone.
enum class GisFormat : std::int32_t { Csv = -1, None = 0, Mif = 1, Shp = 2, Other = 3 };

/// The part of a layer that stands before its objects. A producer fills it between gisOpenLayer and gisWriteHeader;
/// gisReadHeader fills it for an input layer.
struct GisHeader {
    std::string coordSys;  ///< CoordSys line of a .mif file. Blank on output: the run's, else the NonEarth default
    /// the line's "Bounds(...) (...)". Output: put behind a NonEarth line that has none; blank: the default
    std::string bounds;
    /// planned shape of the objects; an object of another shape is refused. A shapefile needs it to be
    GisShape shape = GisShape::Any;
    ///< valid while empty: with Any its first object decides
    std::vector<GisAttribute> attributes;  ///< in column order, at least one
    std::string prj = {};                  ///< .prj text of a shapefile. Blank on output: the run's
    GisFormat format = GisFormat::None;    ///< that it was read from; nothing to the writers
};

/// The coordinate system of the run, set before layers are opened.
struct GisProjection {
    /// CoordSys line for .mif outputs, checked against .mif inputs; blank when none is known
    std::string coordSys;
    /// text of the .prj beside .shp outputs, of any length, checked against .shp inputs; blank writes none
    std::string prj;
    /// an input in another coordinate system gives WARNING 0305 instead of ERROR 0305
    bool differenceIsWarning = false;
    /// true for a text of an input that names the run's system; in place of comparing texts, where it is set
    std::function<bool(const std::string& text)> isRuns = {};
};

// ---- the run ----
/// Forgets every layer, the input-layer list and the settings below, closing nothing: the start of a run and of a test.
void gisInitialise();
void gisSetProjection(const GisProjection& projection);
const GisProjection& gisProjection();
/// Extent of the run's objects in map units (the mesh). NonEarth bounds are widened to hold it, and its own size again
/// on every side, where it lies outside the default bounds.
void gisSetExtent(double xmin, double ymin, double xmax, double ymax);
/// Opens the companions of the run that log its input layers: <base>.wor, a workspace that opens them, and
/// <base>_input_layers.mif/.mid, a table of them. Called for -verbose, before the first input layer; without it nothing
/// is written.
void gisOpenInputLog(std::string_view base);

// ---- opening and closing ----
enum class GisTable : std::uint8_t { WithObjects, Alone };

/// Opens a layer under the lowest free gisID, from 1. action: "R" or "PR" (kept for callers that name it; both open
/// alike). mode: "I " reads, "O " creates or replaces. table: whether a .dbf or .csv alone will do. An input layer is
/// added to the input-layer list unless it is there, and its coordinate system is checked against the run's. ERROR 0251
/// with MOST_LAYERS open, ERROR 0252 for another extension, ERROR 0305 for another coordinate system.
std::int32_t gisOpenLayer(std::string_view name, std::string_view action, std::string_view mode,
                          GisTable table = GisTable::WithObjects);
/// Resets the entry of one gisID to its defaults. gisOpenLayer does it.
void gisInitialiseLayer(std::int32_t gisID);
/// Completes an output (gisWriteEoF), closes the files and frees the gisID. 0 is reported as a SOFTWARE CHECK and the
/// run goes on.
void gisCloseLayer(std::int32_t gisID);
/// gisCloseLayer for every open layer, then the input-layer log: the end of a run.
void gisCloseAllLayers();

// ---- header ----
/// The header record of an open layer.
GisHeader& gisHeader(std::int32_t gisID);
/// Reads the coordinate system and the attributes and stands at the first object.
void gisReadHeader(std::int32_t gisID);
/// Writes the header from the record. Called once, before the first object.
void gisWriteHeader(std::int32_t gisID);

// ---- objects and records ----
// A record travels as one data line: values in column order, comma between them, text in double quotes with a quote
// inside doubled (gis/data_line.h builds and splits it). Inside the program it is UTF-8. On disk both formats hold code
// page 1252; what that page lacks becomes "?", with one WARNING a layer.

/// The next object's kind and section count into `o`. False at the end of the layer. ERROR 0303 for a collection, 0423
/// for Z and M shapes.
bool gisObjectType(std::int32_t gisID, GisObject& o);
/// The coordinates of the object whose kind has just been read. False: a region too short for its format was dropped
/// with WARNING 0318 (after gisDropShortRegions); its record still follows and is to be read. A region of fewer than 5
/// points a ring (MIF) stops otherwise. ERROR 0253 after the reason when the file does not hold the object.
bool gisReadObject(std::int32_t gisID, GisObject& o);
/// The next record as a data line, of as many values as there are attributes: what a .mid line holds beyond them is
/// dropped, one that holds fewer is ERROR 0254. False only behind the last record of a table-only layer: elsewhere a
/// missing record is ERROR 0254.
bool gisReadRecord(std::int32_t gisID, std::string& line);
/// From here on this input layer drops short regions instead of stopping: for the profile and point readers, which do
/// not need them.
void gisDropShortRegions(std::int32_t gisID);
/// Back to the first object and record of an input layer.
void gisGotoBeginningOfData(std::int32_t gisID);

/// Writes one object: rings and parts as given, coordinates in map units. A NaN or infinite coordinate is refused with
/// ERROR 0439, a kind that the format lacks with ERROR 0350, part ends that do not rise with a check that prints them.
void gisWriteObject(std::int32_t gisID, const GisObject& o);
/// Writes the record of the object just written. The library adds nothing to the line; a line break inside it is
/// refused.
void gisWriteRecord(std::int32_t gisID, std::string_view line);

/// Adds an object and its record to a batch for this output layer, whose header has been written, as gisWriteObject and
/// gisWriteRecord would write them. On any thread, several batches at once: the layer is only looked at, and nothing is
/// said; what needs saying leaves the batch with plain = false.
void gisAddToBatch(std::int32_t gisID, GisBatch& batch, const GisObject& o, std::string_view line);
/// Writes its objects and records behind what the layer has. False, and nothing is written: see GisBatchWrite::Unfit;
/// written one by one they tell what is the matter.
bool gisWriteBatch(std::int32_t gisID, GisBatch& batch);

/// Completes an output layer so that it opens elsewhere (lengths, counts, bounds). gisCloseLayer does it when it is
/// due.
void gisWriteEoF(std::int32_t gisID);
