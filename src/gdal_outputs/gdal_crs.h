// Coordinate systems by name, file or text, through the GDAL module.
#pragma once

#include "gdal_outputs/gdal_table.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// A resolved system; its texts live as long as it does.
class Crs {
public:
    Crs(const GdalTable& gdal, GdalCrs* crs) : gdal_(&gdal), crs_(crs, gdal.crsFree) {}
    std::string name() const { return gdal_->crsFacts(crs_.get())->name; }
    /// "EPSG:28355"; blank where none is known.
    std::string code() const { return gdal_->crsFacts(crs_.get())->code; }
    /// For the formats of GDAL: every detail, on one line.
    std::string wkt() const { return gdal_->crsFacts(crs_.get())->wkt; }
    /// For .prj files, on one line; blank for a system that this form lacks.
    std::string esriWkt() const { return gdal_->crsFacts(crs_.get())->esriWkt; }
    /// Compared as systems, not as texts.
    bool same(const Crs& other) const { return gdal_->crsSame(crs_.get(), other.crs_.get()) != 0; }
    GdalAreaOfUse areaOfUse(const GdalBox& mesh) const {
        return static_cast<GdalAreaOfUse>(gdal_->crsAreaOfUse(crs_.get(), &mesh));
    }
    /// The CoordSys line for .mif files; stops the run where it would not be exact: a corner of the mesh moves by more
    /// than 0.1 m between the line and the system.
    std::string coordSys(const GdalBox& mesh) const;

private:
    const GdalTable* gdal_;
    std::unique_ptr<GdalCrs, void (*)(GdalCrs*)> crs_;
};

/// A file of that name wins; else a code ("EPSG:28355"), well-known text, a PROJ text, a CoordSys line. What is neither
/// stops the run, as does an installation without PROJ's data. neededBy: what named it, for the message ("-crs").
Crs RESOLVE_CRS(const GdalTable& gdal, const std::string& text, std::string_view neededBy);
/// The same of a text alone, not of a file; nothing for what is no coordinate system.
std::optional<Crs> TRY_RESOLVE_CRS(const GdalTable& gdal, const std::string& text);
