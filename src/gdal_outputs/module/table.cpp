// The table that the program gets, and nothing else of this module.
#include "gdal_outputs/gdal_table.h"

#include "gdal_outputs/module/crs.h"
#include "gdal_outputs/module/driver_options.h"
#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/layer_input.h"
#include "gdal_outputs/module/layer_output.h"
#include "gdal_outputs/module/raster_output.h"
#include "gdal_outputs/module/raster_place.h"

#include <gdal.h>

#include <memory>

#ifdef _WIN32
#define VORANT_EXPORT __declspec(dllexport)
#else
#define VORANT_EXPORT __attribute__((visibility("default")))
#endif

namespace {

/// Ends a handle: completes its output, and removes it when that fails.
template <typename Output>
bool closeOrAbandon(Output* given) noexcept {
    std::unique_ptr<Output> output(given);
    const bool whole = guarded(false, [&] {
        output->close();
        return true;
    });
    const std::string reason = REASON();
    guarded(false, [&] {
        if (!whole) output->abandon();
        output.reset();
        return true;
    });
    if (!whole) SET_REASON(reason);
    return whole;
}

template <typename Output>
void abandon(Output* given) noexcept {
    guarded(false, [&] {
        const std::unique_ptr<Output> output(given);
        output->abandon();
        return true;
    });
}

const char* libraryVersion() { return GDALVersionInfo("RELEASE_NAME"); }

bool checkOptions(const char* driver, GdalTexts options) {
    return guarded(false, [&] {
        CHECK_DRIVER_OPTIONS(driver, options);
        return true;
    });
}

GdalRasterOutput* rasterOpen(const GdalRasterFacts* facts) {
    return guarded(static_cast<GdalRasterOutput*>(nullptr), [&] { return OPEN_RASTER(*facts).release(); });
}

bool rasterRows(GdalRasterOutput* raster, std::int32_t band, std::int32_t firstRow, std::int32_t count,
                const float* values) {
    return guarded(false, [&] {
        raster->rows(band, firstRow, count, values);
        return true;
    });
}

bool rasterPlace(const char* path, GdalRasterPlace* place) {
    return guarded(false, [&] {
        READ_RASTER_PLACE(path, *place);
        return true;
    });
}

GdalLayerOutput* layersOpen(const char* path, const char* driver, GdalTexts options) {
    return guarded(static_cast<GdalLayerOutput*>(nullptr),
                   [&] { return std::make_unique<GdalLayerOutput>(path, driver, options).release(); });
}

std::int32_t layersAdd(GdalLayerOutput* output, const GdalLayerFacts* facts) {
    return guarded(-1, [&] { return output->add(*facts); });
}

bool layersFeature(GdalLayerOutput* output, std::int32_t layer, const GdalShape* shape, const GdalValue* values) {
    return guarded(false, [&] {
        output->feature(layer, *shape, values);
        return true;
    });
}

GdalLayerInput* inputOpen(const char* path, const char* layer) {
    return guarded(static_cast<GdalLayerInput*>(nullptr),
                   [&] { return std::make_unique<GdalLayerInput>(path, layer).release(); });
}

const GdalInputFacts* inputFacts(const GdalLayerInput* input) { return &input->facts; }

std::int32_t inputNext(GdalLayerInput* input, GdalShape* shape, const GdalValue** values) {
    return guarded(-1, [&] { return input->next(*shape, *values) ? 1 : 0; });
}

void inputRewind(GdalLayerInput* input) { input->rewind(); }
void inputClose(GdalLayerInput* input) { delete input; }

GdalCrs* crsResolve(const char* text) {
    return guarded(static_cast<GdalCrs*>(nullptr), [&] { return std::make_unique<GdalCrs>(text).release(); });
}

const GdalCrsFacts* crsFacts(const GdalCrs* crs) { return &crs->facts; }

std::int32_t crsSame(const GdalCrs* a, const GdalCrs* b) {
    return guarded(0, [&] { return a->same(*b) ? 1 : 0; });
}

const char* crsCoordSys(GdalCrs* crs, const GdalBox* box) {
    return guarded(static_cast<const char*>(nullptr), [&] {
        crs->coordSys = EXACT_COORD_SYS(crs->srs.get(), *box);
        return crs->coordSys.c_str();
    });
}

std::int32_t crsAreaOfUse(const GdalCrs* crs, const GdalBox* box) {
    return guarded(static_cast<std::int32_t>(GdalAreaUnknown),
                   [&] { return static_cast<std::int32_t>(AREA_OF_USE(*crs, *box)); });
}

void crsFree(GdalCrs* crs) { delete crs; }

constexpr GdalTable TABLE{
    .version = GDAL_TABLE_VERSION,
    .bytes = sizeof(GdalTable),
    .libraryVersion = libraryVersion,
    .reason = REASON,
    .checkOptions = checkOptions,
    .rasterOpen = rasterOpen,
    .rasterRows = rasterRows,
    .rasterClose = closeOrAbandon<GdalRasterOutput>,
    .rasterAbandon = abandon<GdalRasterOutput>,
    .rasterPlace = rasterPlace,
    .layersOpen = layersOpen,
    .layersAdd = layersAdd,
    .layersFeature = layersFeature,
    .layersClose = closeOrAbandon<GdalLayerOutput>,
    .layersAbandon = abandon<GdalLayerOutput>,
    .inputOpen = inputOpen,
    .inputFacts = inputFacts,
    .inputNext = inputNext,
    .inputRewind = inputRewind,
    .inputClose = inputClose,
    .crsResolve = crsResolve,
    .crsFacts = crsFacts,
    .crsSame = crsSame,
    .crsCoordSys = crsCoordSys,
    .crsAreaOfUse = crsAreaOfUse,
    .crsFree = crsFree,
};

}  // namespace

extern "C" VORANT_EXPORT const GdalTable* vorantGdalTable(std::int32_t version) {
    if (version != GDAL_TABLE_VERSION) return nullptr;
    return guarded(static_cast<const GdalTable*>(nullptr), [] {
        START_GDAL();
        return &TABLE;
    });
}
