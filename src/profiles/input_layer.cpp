#include "profiles/input_layer.h"

#include "gdal_outputs/gdal_crs.h"
#include "gdal_outputs/gdal_module.h"
#include "gis/layer_table.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <optional>

bool IS_READ_BY_GDAL(std::string_view name) {
    const std::string extension = FILEEXT(SPLIT_LAYER_PATH(std::string(name)).file);
    constexpr std::string_view OWN[] = {"", ".mif", ".mid", ".shp"};
    return std::find(std::begin(OWN), std::end(OWN), extension) == std::end(OWN);
}

InputLayer::InputLayer(const std::string& name, std::string_view neededBy) {
    if (IS_READ_BY_GDAL(name)) {
        const GdalTable& gdal = GDAL_MODULE(neededBy);
        reader_ = std::make_unique<LayerReader>(gdal, name);
        NOTE_FILE_USED(SPLIT_LAYER_PATH(name).file);
        for (const LayerField& field : reader_->facts().fields)
            header_.attributes.push_back({field.name, ATTRIBUTE_TYPE_OF(field)});
        header_.prj = reader_->facts().crs;
        if (reader_->hasHeights()) DMESSAGE("Check - The heights of " + name + " are not read.");
        checkSystem(gdal, name);
        return;
    }
    layer_ = gisOpenLayer(name, "R", "I ");
    gisDropShortRegions(layer_);
    gisReadHeader(layer_);
    header_ = gisHeader(layer_);
}

void InputLayer::close() {
    if (layer_ > 0) gisCloseLayer(layer_);
    reader_.reset();
}

void InputLayer::checkSystem(const GdalTable& gdal, const std::string& name) const {
    const GisProjection& run = gisProjection();
    const std::string& runs = run.prj.empty() ? run.coordSys : run.prj;
    if (header_.prj.empty()) {
        if (!runs.empty()) DMESSAGE("WARNING - " + name + " has no coordinate system; it is taken to be the run's.");
        return;
    }
    if (runs.empty() && !run.isRuns) return;
    bool same = false;
    if (run.isRuns) {
        same = run.isRuns(header_.prj);
    } else {
        const std::optional<Crs> ofRun = TRY_RESOLVE_CRS(gdal, runs), ofLayer = TRY_RESOLVE_CRS(gdal, header_.prj);
        same = ofRun && ofLayer && ofRun->same(*ofLayer);
    }
    if (!same) gisReportProjection(FILEEXT(SPLIT_LAYER_PATH(name).file), name, header_.prj, runs);
}

bool InputLayer::next(GisObject& o, std::string& record) {
    if (reader_) {
        if (!reader_->next(o)) return false;
        reader_->dataLine(record);
        return true;
    }
    if (!gisObjectType(layer_, o)) return false;
    const bool whole = gisReadObject(layer_, o);
    gisReadRecord(layer_, record);
    if (!whole) o.start(GisKind::None);
    return true;
}
