#include "run_control/output_formats.h"

#include "raster/asc_writer.h"
#include "raster/flt_writer.h"
#include "services/exits.h"

#include <algorithm>

namespace {

constexpr double MIF_STEP = 1.0e-6;  // six decimals

constexpr ProjectionUse TAKES_PRJ = {ProjectionNeed::None, ProjectionNeed::Taken};
constexpr ProjectionUse WANTS_PRJ = {ProjectionNeed::None, ProjectionNeed::Wanted};
constexpr ProjectionUse WANTS_COORD_SYS = {ProjectionNeed::Wanted, ProjectionNeed::None};
constexpr ProjectionUse TAKES_BOTH = {ProjectionNeed::Taken, ProjectionNeed::Taken};  // degrees, the user's layers

/// A blank and the field, which is wider where the largest value asks for it: 11 units and a point more than decimals.
ValueBytes bytesOfText(const RunOptions& options) {
    if (options.precisionGiven) return {1.0 + options.precisionWidth, 1.0 + options.precisionWidth};
    constexpr GridPrecision USUAL;
    return {1.0 + USUAL.width, 1.0 + 11.0 + 1.0 + USUAL.decimals};
}
ValueBytes bytesOfFloat(const RunOptions&) { return {sizeof(float), sizeof(float)}; }

const OutputFormat TABLE[] = {
    {.keyword = "asc",
     .line = ".asc output format specified.",
     .family = Family::Raster,
     .files = {".asc", ".prj"},
     .projection = TAKES_PRJ,
     .writer = WRITE_ASC,
     .bytesOfValue = bytesOfText},
    {.keyword = "mif",
     .line = ".mif output format specified.",
     .family = Family::Layer,
     .files = {".mif", ".mid"},
     .projection = WANTS_COORD_SYS,
     .coordinateStep = MIF_STEP},
    {.keyword = "shp",
     .line = ".shp output format specified.",
     .family = Family::Layer,
     .files = {".shp", ".shx", ".dbf", ".prj", ".cpg"},
     .projection = WANTS_PRJ,
     .outlinedArrows = true},
    {.keyword = "txt",
     .line = ".txt output format specified.",
     .family = Family::Text,
     .files = {".txt"},
     .projection = TAKES_BOTH},
    {.keyword = "lp",
     .line = "Long profile (.csv) output format specified.",
     .family = Family::Profile,
     .files = {".csv"},
     .projection = TAKES_BOTH},
    {.keyword = "cp",
     .line = "Calibration point (.csv) output format specified.",
     .family = Family::Points,
     .files = {".csv"},
     .projection = TAKES_BOTH},
    {.keyword = "wld", .line = ".wld output format specified.", .family = Family::WorldFile, .files = {".wld"}},
    {.keyword = "flt",
     .line = ".flt output format specified.",
     .family = Family::Raster,
     .files = {".flt", ".hdr", ".prj"},
     .projection = TAKES_PRJ,
     .writer = WRITE_FLT,
     .writeBehind = WRITE_FLT_BEHIND,
     .bytesOfValue = bytesOfFloat},
    {.keyword = "dat",
     .line = ".dat output format specified.",
     .family = Family::ResultsFile,
     .files = {".dat"},
     .holds = Holds::Dataset,
     .wholeWord = true},
    {.keyword = "xmdf",
     .line = ".xmdf output format specified.",
     .family = Family::ResultsFile,
     .files = {".xmdf"},
     .holds = Holds::Run,
     .wholeWord = true},
    {.keyword = "ensight",
     .line = "EnSight Gold (.case) output format specified.",
     .family = Family::Scene,
     .files = {".case", ".geo"},
     .holds = Holds::Run,
     .wholeWord = true},
    {.keyword = "xnfo",
     .line = "Information (_info.txt) output format specified.",
     .family = Family::Listing,
     .files = {"_info.txt"},
     .wholeWord = true},
    {.keyword = "gtif",
     .line = ".tif output format specified.",
     .family = Family::Raster,
     .files = {".tif"},
     .projection = TAKES_PRJ,
     .driver = "COG"},
    {.keyword = "gpkg",
     .line = ".gpkg output format specified.",
     .family = Family::Layer,
     .files = {".gpkg"},
     .projection = WANTS_PRJ,
     .holds = Holds::Run,
     .outlinedArrows = true,
     .driver = "GPKG"},
    {.keyword = "fgb",
     .line = ".fgb output format specified.",
     .family = Family::Layer,
     .files = {".fgb"},
     .projection = WANTS_PRJ,
     .holds = Holds::Dataset,
     .outlinedArrows = true,
     .driver = "FlatGeobuf"},
};

bool given(const RunOptions& options, const OutputFormat& format) {
    return std::find(options.outputs.begin(), options.outputs.end(), format.keyword) != options.outputs.end();
}

}  // namespace

std::span<const OutputFormat> OUTPUT_FORMATS() { return TABLE; }

const OutputFormat* FORMAT_OF(std::string_view keyword) {
    const auto row =
        std::find_if(std::begin(TABLE), std::end(TABLE), [&](const OutputFormat& f) { return f.keyword == keyword; });
    return row == std::end(TABLE) ? nullptr : &*row;
}

const OutputFormat& OUTPUT_FORMAT(const RunOptions& options) {
    const std::vector<const OutputFormat*> formats = FORMATS_GIVEN(options);
    if (formats.empty())
        STOP_RUN("ERROR - Should not be here [adding extension type], contact " + std::string(SUPPORT_CONTACT));
    return *formats.front();
}

std::vector<const OutputFormat*> FORMATS_GIVEN(const RunOptions& options) {
    std::vector<const OutputFormat*> formats;
    for (const OutputFormat& format : TABLE)
        if (given(options, format)) formats.push_back(&format);
    return formats;
}

bool GIVEN(const RunOptions& options, Family family) {
    return std::any_of(std::begin(TABLE), std::end(TABLE),
                       [&](const OutputFormat& f) { return f.family == family && given(options, f); });
}

Holds OUTPUT_HOLDS(const RunOptions& options) {
    const OutputFormat& format = OUTPUT_FORMAT(options);
    return format.family == Family::Raster && options.multiband ? Holds::Dataset : format.holds;
}

bool GIVEN(const RunOptions& options, std::string_view keyword) {
    return std::find(options.outputs.begin(), options.outputs.end(), keyword) != options.outputs.end();
}

void DROP_FORMATS(RunOptions& options, bool (*drop)(const OutputFormat&)) {
    for (const OutputFormat& format : TABLE)
        if (drop(format)) std::erase(options.outputs, format.keyword);
}
