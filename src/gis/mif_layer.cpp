#include "gis/mif_layer.h"

#include "gis/coord_sys.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/projection_text.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

namespace {

void seekTo(GisFile& file, std::int64_t offset) {
    if (!SEEK_FILE(file.handle, offset)) STOP_UNREADABLE(file.handle);
}

/// The name with the extension .mif, which it may have already in another letter case.
std::string mifName(const std::string& path) { return FILEEXT(path) == ".mif" ? path : FILENAMEPATH(path) + ".mif"; }

void checkProjection(GisLayer& layer) {
    const GisProjection& run = gisProjection();
    if (TRIMMED(run.coordSys).empty() && !run.isRuns) return;
    std::string line = READ_COORD_SYS_LINE(layer.files[0].handle);
    seekTo(layer.files[0], 0);
    if (line.empty()) line = DEFAULT_COORD_SYS;
    const bool same = run.isRuns ? run.isRuns(line) : SAME_PROJECTION(line, run.coordSys);
    if (!same) gisReportProjection(".mif", GETNAM(layer.files[0].handle), line, run.coordSys);
}

}  // namespace

void mifReportPlace(const GisFile& file) {
    REPORT("   " + GETNAM(file.handle) + ", line " + std::to_string(file.count));
}

void mifReportValues(const GisLayer& layer, std::size_t values) {
    REPORT("   The line has " + std::to_string(values) + " of " + std::to_string(layer.header.attributes.size()) +
           " values.");
}

void mifOpen(GisLayer& layer) {
    layer.state = std::make_shared<MifLayer>();
    const std::string_view mode = layer.mode == GisMode::Input ? "I " : "O ";
    layer.files[0].handle = OPEN_FILE(mifName(layer.path), mode, "mif");
    layer.files[1].handle = OPEN_FILE(FILENAMEPATH(GETNAM(layer.files[0].handle)) + ".mid", mode, "mid");
    if (layer.mode != GisMode::Input) return;
    for (std::size_t i = 0; i < 2; ++i) layer.files[i].bytes = FILE_LENGTH(layer.files[i].handle);
    checkProjection(layer);
}

void mifClose(GisLayer& layer) {
    for (GisFile& file : layer.files) {
        if (file.handle != 0) CLOSE_FILE(file.handle);
        file.handle = 0;
    }
    layer.state.reset();
}

void mifGotoBeginningOfFiles(GisLayer& layer) {
    for (std::size_t i = 0; i < 2; ++i) {
        seekTo(layer.files[i], 0);
        layer.files[i].count = 0;
    }
    MIF_OF(layer).objects = MIF_OF(layer).records = 0;
}

void mifGotoBeginningOfData(GisLayer& layer) {
    if (MIF_OF(layer).dataOffset == 0) SHOULD_NOT_BE_HERE("mifGotoBeginningOfData");
    mifGotoBeginningOfFiles(layer);
    seekTo(layer.files[0], MIF_OF(layer).dataOffset);
    layer.files[0].count = MIF_OF(layer).headerLines;
}
