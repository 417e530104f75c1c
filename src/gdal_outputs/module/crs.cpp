#include "gdal_outputs/module/crs.h"

#include "gdal_outputs/module/failures.h"

#include <ogr_spatialref.h>

#include <cstring>
#include <string_view>

namespace {

constexpr int CERTAIN = 90;  ///< per cent, of a match with an authority's entry: all but the name agree

SrsHandle newSrs() {
    SrsHandle srs(OSRNewSpatialReference(nullptr));
    OSRSetAxisMappingStrategy(srs.get(), OAMS_TRADITIONAL_GIS_ORDER);
    return srs;
}

/// Without its data PROJ knows no code and no datum, and its messages do not say so plainly.
void checkProjData() {
    const SrsHandle probe = newSrs();
    if (OSRImportFromEPSG(probe.get(), 4326) == OGRERR_NONE) return;
    throw GdalFailure{
        "the data of the PROJ library (proj.db) were not found; PROJ_DATA or PROJ_LIB may be set wrongly"};
}

bool beginsWith(std::string_view text, std::string_view with) {
    return text.size() >= with.size() && EQUALN(text.data(), with.data(), with.size());
}

bool isCoordSys(std::string_view text) { return beginsWith(text, "CoordSys"); }

OGRErr import(OGRSpatialReferenceH srs, const char* text) {
    if (isCoordSys(text)) return OSRImportFromMICoordSys(srs, text);
    if (beginsWith(text, "Projection ")) {  // a .prj of the time before well-known text
        CPLStringList lines(CSLTokenizeString2(text, "\r\n", 0));
        return OSRImportFromESRI(srs, lines.List());
    }
    const char* const neither[] = {"ALLOW_NETWORK_ACCESS=NO", "ALLOW_FILE_ACCESS=NO", nullptr};
    return OGRSpatialReference::FromHandle(srs)->SetFromUserInput(text, const_cast<CSLConstList>(neither));
}

SrsHandle authorityEntry(OGRSpatialReferenceH srs) {
    int count = 0;
    int* confidence = nullptr;
    OGRSpatialReferenceH* matches = OSRFindMatches(srs, nullptr, &count, &confidence);
    SrsHandle best;
    if (count > 0 && confidence[0] >= CERTAIN && (count == 1 || confidence[1] < confidence[0])) {
        OSRReference(matches[0]);
        best.reset(matches[0]);
        OSRSetAxisMappingStrategy(best.get(), OAMS_TRADITIONAL_GIS_ORDER);
    }
    OSRFreeSRSArray(matches);
    CPLFree(confidence);
    return best;
}

std::string codeOf(OGRSpatialReferenceH srs) {
    const char* authority = srs != nullptr ? OSRGetAuthorityName(srs, nullptr) : nullptr;
    const char* code = srs != nullptr ? OSRGetAuthorityCode(srs, nullptr) : nullptr;
    return authority != nullptr && code != nullptr ? std::string(authority) + ":" + code : std::string{};
}

std::string wktAs(OGRSpatialReferenceH srs, const char* format) {
    const char* const options[] = {format, "MULTILINE=NO", nullptr};
    char* text = nullptr;
    const OGRErr failed = OSRExportToWktEx(srs, &text, options);
    const std::string wkt = failed == OGRERR_NONE && text != nullptr ? text : "";
    CPLFree(text);
    return wkt;
}

}  // namespace

SrsHandle SRS_OF(const char* text) {
    checkProjData();
    SrsHandle srs = newSrs();
    while (*text != '\0' && std::strchr(" \t\r\n", *text) != nullptr) ++text;
    if (*text == '\0' || import(srs.get(), text) != OGRERR_NONE) FAIL("not a coordinate system that GDAL knows");
    OSRSetAxisMappingStrategy(srs.get(), OAMS_TRADITIONAL_GIS_ORDER);
    CLEAR_FAILURES();  // a guess at the text that failed before another one did not
    return srs;
}

std::string WKT_OF(OGRSpatialReferenceH srs) { return srs != nullptr ? wktAs(srs, "FORMAT=WKT2_2019") : ""; }

GdalCrs::GdalCrs(const char* text) : srs(SRS_OF(text)), fromCoordSys(isCoordSys(text)) {
    if (OSRIsProjected(srs.get()) == 0 && OSRIsGeographic(srs.get()) == 0 && OSRIsLocal(srs.get()) == 0)
        throw GdalFailure{"a system of heights or of the whole earth, not one of a map"};
    code = codeOf(srs.get());
    if (code.empty()) {
        known = authorityEntry(srs.get());
        code = codeOf(known.get());
    }
    const char* named = OSRGetName(srs.get());
    name = named != nullptr ? named : "";
    wkt = WKT_OF(srs.get());
    esriWkt = wktAs(srs.get(), "FORMAT=WKT1_ESRI");
    facts = {name.c_str(), code.c_str(), wkt.c_str(), esriWkt.c_str()};
    if (wkt.empty()) FAIL("a coordinate system that cannot be written as well-known text");
    CLEAR_FAILURES();  // of the ESRI form, which does not have every system
}

bool GdalCrs::same(const GdalCrs& other) const {
    const char* const options[] = {"IGNORE_DATA_AXIS_TO_SRS_AXIS_MAPPING=YES",
                                   "CRITERION=EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS", nullptr};
    if (OSRIsSameEx(srs.get(), other.srs.get(), options) != 0) return true;
    // northing and easting the other way round in the authority's own order
    if (!code.empty() && code == other.code) return true;
    // a CoordSys line says less than other forms do: they are the same when nothing that it says differs
    if (!fromCoordSys && !other.fromCoordSys) return false;
    const std::string line = PLAIN_COORD_SYS(srs.get());
    return !line.empty() && line == PLAIN_COORD_SYS(other.srs.get());
}

TransformHandle TRANSFORM(OGRSpatialReferenceH from, OGRSpatialReferenceH to) {
    TransformHandle transform(OCTNewCoordinateTransformation(from, to));
    return transform;
}
