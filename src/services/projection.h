// The coordinate system of the run, taken from a projection file in the folder of the input file.
#pragma once

#include "services/projection_text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Of a run: found by FIND_PROJECTION or settled by -crs, handed to whoever opens an output or a layer of the user's.
struct Projection {
    std::string coordSys;  ///< the CoordSys line; blank when none is known: layers are then NonEarth, and not compared
    std::string prj;       ///< the .prj text on one line; blank when there is none to write

    std::string wkt;  ///< well-known text of every detail, for GDAL's formats; blank where the .prj text serves

    const std::string& text() const { return wkt.empty() ? prj : wkt; }
    CoordinateKind kind() const {
        const CoordinateKind known = COORDINATE_KIND(text().empty() ? coordSys : text());
        const bool localPlane = known == CoordinateKind::Unknown && !wkt.empty();  // a system, but of nowhere on earth
        return localPlane ? CoordinateKind::NonEarth : known;
    }
    bool geographic() const { return kind() == CoordinateKind::Geographic; }  ///< degrees
};

/// What a format does with a projection text.
enum class ProjectionNeed : std::uint8_t {
    None,
    Taken,   ///< where there is one; a file without any is passed over with a warning
    Wanted,  ///< a warning when there is none; a file that holds none stops the run
};

/// Which texts an output format takes: the CoordSys line of a .mif, the text of a .prj.
struct ProjectionUse {
    ProjectionNeed coordSys = ProjectionNeed::None;
    ProjectionNeed prj = ProjectionNeed::None;
};

/// Looks beside the input file for Header.mif, else Projection.mif, and Header.prj, else Projection.prj, as the output
/// needs them, and says which file it took. Without a wanted one: non-earth coordinates, or no .prj.
Projection FIND_PROJECTION(const std::string& inputFile, ProjectionUse use);

/// A text that stands beside the input, and where.
struct ProjectionFile {
    std::string name, text;
};
/// The files that FIND_PROJECTION would take, without a word.
std::vector<ProjectionFile> PROJECTION_FILES(const std::string& inputFile, ProjectionUse use);

/// The text of a .prj file that is there, on one line, saying that it is used; blank with a warning when it holds none.
std::string USE_PRJ(const std::string& name);
