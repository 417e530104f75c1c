#include "gdal_outputs/gdal_layers.h"
#include "gdal_outputs/gdal_module.h"
#include "services/exits.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

GdalGeometry geometryOf(GisKind kind) {
    switch (kind) {
        case GisKind::None: return GdalNoGeometry;
        case GisKind::Point: return GdalPoint;
        case GisKind::MultiPoint: return GdalMultiPoint;
        case GisKind::Line:
        case GisKind::Pline: return GdalLine;
        case GisKind::PlineMultiple: return GdalMultiLine;
        case GisKind::Region: return GdalRegion;
        default: return GdalAnyGeometry;  // text and curves of .mif files, which the module refuses
    }
}

std::filesystem::path pathOf(const std::string& utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

}  // namespace

LayersWriter::LayersWriter(const GdalTable& gdal, const std::string& path, const std::string& driver,
                           const std::vector<std::string>& options, const std::string& shown)
    : gdal_(gdal),
      shown_(shown.empty() ? path : shown),
      output_(gdal.layersOpen(path.c_str(), driver.c_str(), TextsView(options).get())) {
    check(output_ != nullptr);
}

LayersWriter::~LayersWriter() {
    if (output_ != nullptr) gdal_.layersAbandon(output_);
}

void LayersWriter::check(bool done) {
    if (!done) STOP_RUN("ERROR - Could not write " + shown_ + ": " + gdal_.reason() + ".");
}

std::int32_t LayersWriter::add(const LayerFacts& facts) {
    std::vector<GdalField> fields;
    for (const LayerField& field : facts.fields)
        fields.push_back({field.name.c_str(), field.type, field.width, field.decimals});
    const TextsView options(facts.options);
    const GdalLayerFacts given{
        facts.name.c_str(), facts.geometry, facts.crs.c_str(), fields.data(), static_cast<std::int32_t>(fields.size()),
        options.get()};
    const std::int32_t layer = gdal_.layersAdd(output_, &given);
    check(layer >= 0);
    fieldCounts_.push_back(fields.size());
    return layer;
}

void LayersWriter::feature(std::int32_t layer, const GisObject& o, std::span<const GdalValue> values) {
    if (fieldCounts_.at(static_cast<std::size_t>(layer)) != values.size()) SHOULD_NOT_BE_HERE("GDAL layer values");
    const GdalShape shape{geometryOf(o.kind), o.nr, o.ir.data() + 1, o.x.data() + 1, o.y.data() + 1};
    check(gdal_.layersFeature(output_, layer, &shape, values.data()));
}

void LayersWriter::close() { check(gdal_.layersClose(std::exchange(output_, nullptr))); }

std::optional<std::string> OPEN_ELSEWHERE(const std::string& path) {
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
        std::error_code ignored;
        if (std::filesystem::exists(pathOf(path + suffix), ignored)) return path + suffix;
    }
    return {};
}

LayerPath SPLIT_LAYER_PATH(const std::string& text) {
    std::error_code ignored;
    if (std::filesystem::exists(pathOf(text), ignored)) return {text, ""};
    for (std::size_t colon = text.rfind(':'); colon != std::string::npos && colon > 0;
         colon = text.rfind(':', colon - 1)) {
        LayerPath split{text.substr(0, colon), text.substr(colon + 1)};
        if (std::filesystem::exists(pathOf(split.file), ignored)) return split;
    }
    return {text, ""};
}
