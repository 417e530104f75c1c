// The interface between the program and its GDAL module, a library of its own that is loaded when a run needs it.
//
// C only: records of plain fields and one table of functions. Nothing is thrown across it: a call that fails returns
// null, false or a negative number, and reason() says why. Texts are UTF-8 and end in a zero byte. What the program
// hands in stays its own and is not kept beyond the call, the opening calls included; what the module hands out lives
// as long as its handle, or where there is none until the next call of the same function. A change of anything here
// raises GDAL_TABLE_VERSION: program and module are taken from one build.
#pragma once

#include <cstdint>

constexpr std::int32_t GDAL_TABLE_VERSION = 1;

extern "C" {

struct GdalTexts {
    const char* const* texts;
    std::int32_t count;
};

/// A rectangle in map units.
struct GdalBox {
    double xmin, ymin, xmax, ymax;
};

// ---- rasters ----
/// What is written: a Cloud Optimized GeoTIFF of one band, or a tiled GeoTIFF of any number, band after band.
enum GdalRasterKind : std::int32_t { GdalCog = 0, GdalMultiband = 1 };

struct GdalBand {
    const char* description;  ///< blank for none
    const char* unit;         ///< blank for none
    GdalTexts metadata;       ///< "KEY=VALUE"
};

struct GdalRasterFacts {
    const char* path;   ///< created or replaced
    std::int32_t kind;  ///< GdalRasterKind
    std::int32_t columns;
    std::int32_t rows;
    double geoTransform[6];  ///< of the north-west corner, as GDAL has it: x, width, 0, y, 0, -height
    float noData;            ///< cells of this value, and those that are not finite, hold nothing
    const char* crs;         ///< any text that crsResolve takes; blank for none
    GdalTexts metadata;      ///< "KEY=VALUE"
    const GdalBand* bands;
    std::int32_t bandCount;  ///< 1 of a COG
    GdalTexts options;       ///< "KEY=VALUE" of the driver; they win over what is set here
    std::int32_t threads;    ///< that compress, from 1
    std::int64_t memory;     ///< bytes that values may take; a COG beyond goes through a file beside it. 0: no limit
};

/// Where an existing raster lies.
struct GdalRasterPlace {
    std::int32_t columns;
    std::int32_t rows;
    double geoTransform[6];
    const char* crs;  ///< well-known text; blank for none
};

// ---- layers ----
enum GdalGeometry : std::int32_t {
    GdalNoGeometry = 0,
    GdalPoint,
    GdalMultiPoint,
    GdalLine,
    GdalMultiLine,
    GdalRegion,
    GdalMultiRegion,
    GdalAnyGeometry  ///< of a layer read
};

enum GdalFieldType : std::int32_t {
    GdalInteger = 0,  ///< 32 bits
    GdalInteger64,
    GdalReal,
    GdalTextField,
    GdalLogical,
    GdalDate,     ///< travels as text, "2020-01-31"
    GdalDateTime  ///< travels as text, "2020-01-31T12:00:00.000Z"
};

struct GdalField {
    const char* name;
    std::int32_t type;      ///< GdalFieldType
    std::int32_t width;     ///< characters; 0: any
    std::int32_t decimals;  ///< of a number that has a width
};

struct GdalValue {
    std::int32_t set;      ///< 0: null
    std::int64_t integer;  ///< of GdalInteger, GdalInteger64 and GdalLogical
    double real;           ///< of GdalReal
    const char* text;      ///< of the others; of every type when read
};

/// The vertices of one object, part after part.
struct GdalShape {
    std::int32_t geometry;           ///< GdalGeometry; a layer of a Multi kind takes the single one too
    std::int32_t parts;              ///< rings of regions, lines, or points; 1 of a single line or point
    const std::int32_t* lastVertex;  ///< per part: number of its last vertex, counted from 1 over all parts
    const double* x;                 ///< per vertex, map units
    const double* y;
};

struct GdalLayerFacts {
    const char* name;
    std::int32_t geometry;  ///< GdalGeometry
    const char* crs;        ///< any text that crsResolve takes; blank: undefined Cartesian
    const GdalField* fields;
    std::int32_t fieldCount;
    GdalTexts options;  ///< "KEY=VALUE" of the layer
};

struct GdalInputFacts {
    const char* name;       ///< of the layer
    std::int32_t geometry;  ///< GdalGeometry
    std::int32_t hasZ;      ///< heights are there, and not handed out
    std::int64_t features;
    const GdalField* fields;
    std::int32_t fieldCount;
    const char* crs;     ///< well-known text; blank for none
    const char* format;  ///< short name of GDAL's driver: "GPKG"
};

// ---- coordinate systems ----
struct GdalCrsFacts {
    const char* name;     ///< "GDA94 / MGA zone 55"
    const char* code;     ///< "EPSG:28355"; blank where none is known
    const char* wkt;      ///< on one line, every detail
    const char* esriWkt;  ///< on one line, for .prj files; blank where that form lacks the system
};

enum GdalAreaOfUse : std::int32_t { GdalAreaUnknown = 0, GdalInside, GdalPartlyOutside, GdalOutside };

struct GdalRasterOutput;
struct GdalLayerOutput;
struct GdalLayerInput;
struct GdalCrs;

struct GdalTable {
    std::int32_t version;  ///< GDAL_TABLE_VERSION of the module
    std::int32_t bytes;    ///< sizeof(GdalTable) there

    const char* (*libraryVersion)();  ///< "3.6.2"
    const char* (*reason)();          ///< of the last failure

    /// True when every option is one that the driver lists and its value fits; the reason lists the valid ones.
    /// driver: short name ("COG", "GTiff", "GPKG", "FlatGeobuf").
    bool (*checkOptions)(const char* driver, GdalTexts options);

    // Open, then rows, then close or abandon, either of which ends the handle. A failed close leaves nothing behind.
    GdalRasterOutput* (*rasterOpen)(const GdalRasterFacts*);
    /// Rows of one band, numbered from 1 at the south; values: south to north, each west to east. Blocks of rows come
    /// from south to north or from north to south, each row once. band: from 1, one after the other.
    bool (*rasterRows)(GdalRasterOutput*, std::int32_t band, std::int32_t firstRow, std::int32_t count,
                       const float* values);
    bool (*rasterClose)(GdalRasterOutput*);
    void (*rasterAbandon)(GdalRasterOutput*);
    /// Rasters that are turned, south-up or not square, or lie nowhere, fail with what is wrong.
    bool (*rasterPlace)(const char* path, GdalRasterPlace* place);

    // Open, then layers and features, then close or abandon, either of which ends the handle.
    /// driver: "GPKG", or "FlatGeobuf" for one layer under a path that ends in ".fgb".
    GdalLayerOutput* (*layersOpen)(const char* path, const char* driver, GdalTexts options);
    /// The number of the new layer, from 0; negative: failed.
    std::int32_t (*layersAdd)(GdalLayerOutput*, const GdalLayerFacts*);
    /// values: one for each field.
    bool (*layersFeature)(GdalLayerOutput*, std::int32_t layer, const GdalShape*, const GdalValue* values);
    bool (*layersClose)(GdalLayerOutput*);
    void (*layersAbandon)(GdalLayerOutput*);

    /// layer: blank for the only one.
    GdalLayerInput* (*inputOpen)(const char* path, const char* layer);
    const GdalInputFacts* (*inputFacts)(const GdalLayerInput*);
    /// 1: the next feature; 0: there is none; negative: failed. Curves come as lines.
    std::int32_t (*inputNext)(GdalLayerInput*, GdalShape*, const GdalValue** values);
    void (*inputRewind)(GdalLayerInput*);
    void (*inputClose)(GdalLayerInput*);

    /// text: a code, well-known text, a PROJ text, a CoordSys line; never a file.
    GdalCrs* (*crsResolve)(const char* text);
    const GdalCrsFacts* (*crsFacts)(const GdalCrs*);
    /// 1: the same system, however it is written; 0: another.
    std::int32_t (*crsSame)(const GdalCrs*, const GdalCrs*);
    /// The CoordSys line of .mif files; null where that form lacks the system or moves a corner of the box.
    const char* (*crsCoordSys)(GdalCrs*, const GdalBox*);
    /// Where the box lies in the area that the system is meant for: GdalAreaOfUse.
    std::int32_t (*crsAreaOfUse)(const GdalCrs*, const GdalBox*);
    void (*crsFree)(GdalCrs*);
};

/// The one function that the module exports, by this name. Null when it has no table of that version.
using GdalTableFunction = const GdalTable* (*)(std::int32_t version);
constexpr const char* GDAL_TABLE_FUNCTION = "vorantGdalTable";
}
