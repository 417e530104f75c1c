#include "run_control/run_crs.h"

#include "gdal_outputs/gdal_module.h"
#include "gis/layers.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/paths.h"

#include <utility>

namespace {

bool isPrjFile(const std::string& text) { return FILEEXT(text) == ".prj" && FIND_FILE(text); }

std::string named(const Crs& crs) { return crs.code().empty() ? crs.name() : crs.code() + " (" + crs.name() + ")"; }

[[noreturn]] void stopForTwo(const std::string& first, const std::string& second) {
    STOP_RUN("ERROR - -crs is given twice and different: " + first + " and " + second + ".");
}

}  // namespace

RunCrs::RunCrs(const RunOptions& options, const OutputFormat& format, Projection& projection)
    : options_(options), format_(format), projection_(projection) {
    if (options.crs.empty()) {
        awaited_ = !options.likeGrid.empty() && PROJECTION_FILES(options.inputFile, format.projection).empty();
        if (!awaited_) projection_ = FIND_PROJECTION(options.inputFile, format.projection);
        return;
    }
    takeGiven();
    for (const ProjectionFile& file : PROJECTION_FILES(options.inputFile, format.projection))
        warnWhereDifferent(file.name, file.text);
}

void RunCrs::takeGiven() {
    const std::string& given = options_.crs.front();
    for (const std::string& text : options_.crs)
        if (const auto file = FIND_FILE(text)) NOTE_FILE_USED(*file);  // no output may replace it
    if (isPrjFile(given) && format_.projection.coordSys != ProjectionNeed::Wanted && !HAVE_GDAL_MODULE())
        return takePrjFile(given);
    gdal_ = &GDAL_MODULE("-crs");
    Crs crs = RESOLVE_CRS(*gdal_, given, "-crs");
    for (const std::string& other : options_.crs)
        if (!crs.same(RESOLVE_CRS(*gdal_, other, "-crs"))) stopForTwo(given, other);
    REPORT("Coordinate system: " + named(crs));
    if (crs.esriWkt().empty() && format_.driver.empty() && format_.projection.prj != ProjectionNeed::None)
        STOP_RUN("ERROR - The coordinate system has no form for .prj files, use -gtif or -gpkg.");
    use(std::move(crs));
}

void RunCrs::takePrjFile(const std::string& name) {
    const std::string text = READ_PRJ(*FIND_FILE(name));
    if (COORDINATE_KIND(text) == CoordinateKind::Unknown)
        STOP_RUN("ERROR - -crs " + name + ": not the text of a coordinate system.");
    for (const std::string& other : options_.crs)
        if (!isPrjFile(other) || !SAME_PROJECTION(READ_PRJ(*FIND_FILE(other)), text)) stopForTwo(name, other);
    projection_ = {.coordSys = {}, .prj = text, .wkt = {}};
}

void RunCrs::use(Crs crs) {
    projection_ = {.coordSys = {}, .prj = crs.esriWkt(), .wkt = crs.wkt()};
    crs_ = std::move(crs);
}

void RunCrs::warnWhereDifferent(const std::string& name, const std::string& text) const {
    bool same = false;
    if (gdal_ == nullptr) {
        same = SAME_PROJECTION(text, projection_.prj);
    } else {
        const std::optional<Crs> other = TRY_RESOLVE_CRS(*gdal_, text);
        same = other && crs_->same(*other);
    }
    if (!same) DMESSAGE("WARNING - The coordinate system of " + name + " is not that of -crs, which is used.");
}

void RunCrs::takePrjOf(const std::string& templateName, const std::string& prj) {
    if (prj.empty()) return;
    if (!options_.crs.empty()) return warnWhereDifferent(templateName, prj);
    projection_.prj = prj;
    projection_.wkt.clear();
}

void RunCrs::takeSystemOf(const std::string& templateName, const std::string& wkt) {
    if (wkt.empty()) return;
    if (!options_.crs.empty()) return warnWhereDifferent(templateName, wkt);
    const std::string own = projection_.text().empty() ? projection_.coordSys : projection_.text();
    const GdalTable& gdal = GDAL_MODULE("-like");
    if (!own.empty()) {
        const std::optional<Crs> ofFile = TRY_RESOLVE_CRS(gdal, own), ofTemplate = TRY_RESOLVE_CRS(gdal, wkt);
        if (ofFile && !(ofTemplate && ofFile->same(*ofTemplate)))
            DMESSAGE("WARNING - The coordinate system of " + templateName +
                     " is not that of the projection file, which is used.");
        return;
    }
    gdal_ = &gdal;
    use(RESOLVE_CRS(gdal, wkt, "-like"));
    REPORT("Using " + templateName + " for setting projection.");
}

void RunCrs::fitMesh(const Mesh& mesh) {
    if (awaited_ && projection_.text().empty()) projection_ = FIND_PROJECTION(options_.inputFile, format_.projection);
    const bool ofGdal = !format_.driver.empty() || options_.samplesPackage;
    if (!crs_ && ofGdal && !projection_.text().empty()) {
        crs_ = TRY_RESOLVE_CRS(GDAL_MODULE("-" + std::string(format_.keyword)), projection_.text());
        if (!crs_) STOP_RUN("ERROR - The text of the .prj file is no coordinate system that GDAL knows.");
    }
    const GdalBox box{mesh.xmin, mesh.ymin, mesh.xmax, mesh.ymax};
    if (crs_ && mesh.xmin <= mesh.xmax) {
        if (format_.projection.coordSys == ProjectionNeed::Wanted) projection_.coordSys = crs_->coordSys(box);
        const GdalAreaOfUse place = crs_->areaOfUse(box);
        if (place == GdalOutside || place == GdalPartlyOutside)
            DMESSAGE("WARNING - The mesh lies " + std::string(place == GdalOutside ? "" : "partly ") +
                     "outside the area that " + named(*crs_) + " is meant for.");
    }
    setLayerProjection();
}

void RunCrs::setLayerProjection() const {
    GisProjection projection{projection_.coordSys, projection_.prj, options_.projectionWarning, {}};
    if (gdal_ != nullptr)
        projection.isRuns = [this](const std::string& text) {
            const std::optional<Crs> layer = TRY_RESOLVE_CRS(*gdal_, text);
            return layer && crs_->same(*layer);
        };
    gisSetProjection(projection);
}
