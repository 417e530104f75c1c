// Coordinate systems: from any text, as texts, and compared.
#pragma once

#include "gdal_outputs/gdal_table.h"
#include "gdal_outputs/module/gdal_handles.h"

#include <string>

/// A system and what the program asks of it.
struct GdalCrs {
    /// As crsResolve of the table.
    explicit GdalCrs(const char* text);
    /// As crsSame of the table.
    bool same(const GdalCrs& other) const;

    SrsHandle srs;    ///< x east or along, y north or across, whatever the authority's order
    SrsHandle known;  ///< the entry of the authority that it stands for; null where none is certain
    bool fromCoordSys = false;
    std::string name, code, wkt, esriWkt, coordSys;
    GdalCrsFacts facts{};
};

/// The system of a text; fails with PROJ's reason, or when PROJ's data are missing.
SrsHandle SRS_OF(const char* text);
/// Well-known text on one line; blank for null.
std::string WKT_OF(OGRSpatialReferenceH srs);
/// GDAL's CoordSys line with its keyword; blank when it has none but NonEarth.
std::string PLAIN_COORD_SYS(OGRSpatialReferenceH srs);
/// The CoordSys line, or fails: GDAL's is read back, since it loses the datum shift or the false origin of some
/// systems. No corner of the box may move by more than 0.1 m, by itself or on its way to WGS 84.
std::string EXACT_COORD_SYS(OGRSpatialReferenceH srs, const GdalBox& box);
/// As crsAreaOfUse of the table.
GdalAreaOfUse AREA_OF_USE(const GdalCrs& crs, const GdalBox& box);
/// From one system into another; null when PROJ knows no way.
TransformHandle TRANSFORM(OGRSpatialReferenceH from, OGRSpatialReferenceH to);
