// The coordinate system of the run, taken from a projection file in the folder of the input file.
#pragma once

#include "services/projection_text.h"

#include <string>
#include <string_view>

/// Filled by FIND_PROJECTION; read by whoever opens an output or a layer of the user's.
struct Projection {
    std::string coordSys;  ///< the CoordSys line; blank when none is known: layers are then NonEarth, and not compared
    std::string prj;       ///< the .prj text on one line; blank when there is none to write

    CoordinateKind kind() const { return COORDINATE_KIND(prj.empty() ? coordSys : prj); }
    bool geographic() const { return kind() == CoordinateKind::Geographic; }  ///< degrees
};

const Projection& PROJECTION();
/// Forgets what was found: the start of a run and of a test.
void INITIALISE_PROJECTION();

/// Looks beside OPTIONS().inputFile and says which file it took. -mif: Header.mif, else Projection.mif, else non-earth
/// coordinates with a warning. -shp: Header.prj, else Projection.prj, else blank with a warning. -asc and -flt: the
/// same .prj files where there are any. -txt, -cp and -lp: both kinds where there are any, to know degrees and to
/// compare the user's layers. A file that is there but holds no projection stops a -mif or -shp run; elsewhere it is
/// passed over with a warning.
void FIND_PROJECTION();

/// Takes over another grid's .prj text (-like).
void SET_PRJ(std::string_view text);

/// The text of a .prj file that is there, on one line, saying that it is used; blank with a warning when it holds none.
std::string USE_PRJ(const std::string& name);
