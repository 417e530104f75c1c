// The coordinate system of the outputs, taken from a projection file in the folder of the input file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Filled by FIND_PROJECTION; read by whoever opens an output.
struct Projection {
    /// -mif: the CoordSys line; -shp, -asc, -flt: the .prj text on one line; blank when there is none to write
    std::string text;
};

const Projection& PROJECTION();

/// Looks beside OPTIONS().inputFile. -mif: Header.mif, else Projection.mif, else non-earth coordinates with a warning.
/// -shp: Header.prj, else Projection.prj, else blank with a warning. -asc and -flt: the same .prj files, quietly. Any
/// other run: blank. A file that is there but holds no projection stops a -mif or -shp run; grids are then written
/// without, with a warning.
void FIND_PROJECTION();

/// Takes over another grid's projection (-like). Blank for none.
void SET_PROJECTION(std::string_view text);

/// A .prj file read whole: lines trimmed and joined, byte-order mark dropped. Nothing when it holds no PROJCS, GEOGCS,
/// COMPD_CS, PROJCRS or GEOGCRS, or is longer than any projection (1 MiB). The file has to exist; one that cannot be
/// read stops the run.
std::optional<std::string> READ_PRJ(std::string_view name);
