// Vector layers through the GDAL module: GeoPackages and FlatGeobufs out, any format that GDAL reads in.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "gis/object.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct LayerField {
    std::string name;
    GdalFieldType type = GdalReal;
    std::int32_t width = 0;     ///< characters of a text; 0: any
    std::int32_t decimals = 0;  ///< of a number that was read with a width
};

/// What a layer holds beside its objects. Filled by the layer outputs, or for an input by LayerReader.
struct LayerFacts {
    std::string name;  ///< UTF-8, of any length
    GdalGeometry geometry = GdalPoint;
    std::string crs;  ///< any text that RESOLVE_CRS takes; blank for none: an undefined plane in a GeoPackage
    std::vector<LayerField> fields;
    std::vector<std::string> options;  ///< "KEY=VALUE" for this layer alone
};

/// A vector file that is being written. Whatever fails stops the run, naming the file; without `close` nothing is left.
class LayersWriter {
public:
    /// driver: "GPKG" for any number of layers, or "FlatGeobuf" for one under a path that ends in ".fgb". options:
    /// "KEY=VALUE" of -co, for the file and for each of its layers. shown: its name in messages, blank: the path.
    LayersWriter(const GdalTable& gdal, const std::string& path, const std::string& driver,
                 const std::vector<std::string>& options, const std::string& shown = {});
    ~LayersWriter();
    LayersWriter(const LayersWriter&) = delete;
    LayersWriter& operator=(const LayersWriter&) = delete;

    /// The number of the new layer, from 0. Layers may be written in turns.
    std::int32_t add(const LayerFacts& facts);
    /// One object with one value for each field. Objects keep the order in which they come.
    void feature(std::int32_t layer, const GisObject& o, std::span<const GdalValue> values);
    /// Makes the spatial indexes and completes the file.
    void close();

private:
    void check(bool done);

    const GdalTable& gdal_;
    std::string shown_;
    GdalLayerOutput* output_;
    std::vector<std::size_t> fieldCounts_;  ///< by layer
};

/// The file beside `path` by which a program that has the GeoPackage open shows itself (-wal, -shm, -journal); nothing
/// when there is none. Moving a new file over an open one would ruin it.
std::optional<std::string> OPEN_ELSEWHERE(const std::string& path);

/// A file and one of its layers: "a.gpkg:banks" -> "a.gpkg", "banks".
struct LayerPath {
    std::string file, layer;
};
/// Split at the last colon where the text before it exists and the whole text does not; no layer otherwise.
LayerPath SPLIT_LAYER_PATH(const std::string& text);

/// A layer that is being read. What GDAL cannot read stops the run, naming the file; so does a file of several layers
/// when none is named, listing them.
class LayerReader {
public:
    LayerReader(const GdalTable& gdal, const std::string& name);
    ~LayerReader();
    LayerReader(const LayerReader&) = delete;
    LayerReader& operator=(const LayerReader&) = delete;

    const LayerFacts& facts() const { return facts_; }
    std::int64_t featureCount() const { return gdal_.inputFacts(input_)->features; }
    /// Heights that the layer has are not read.
    bool hasHeights() const { return gdal_.inputFacts(input_)->hasZ != 0; }
    /// The next object, GisKind::None for one without geometry; false behind the last.
    bool next(GisObject& o);
    /// Of the object just read, one for each field; valid until the next call of `next`.
    std::span<const GdalValue> values() const { return {values_, facts_.fields.size()}; }
    /// The same as a data line of the gis operations (gis/data_line.h); null is blank.
    void dataLine(std::string& line) const;
    void rewind() { gdal_.inputRewind(input_); }

private:
    const GdalTable& gdal_;
    std::string name_;
    GdalLayerInput* input_;
    LayerFacts facts_;
    const GdalValue* values_ = nullptr;
};

/// The attribute type, in MIF column syntax, that holds a field's values: "Integer", "Char(40)", "Decimal(10,4)".
std::string ATTRIBUTE_TYPE_OF(const LayerField& field);
