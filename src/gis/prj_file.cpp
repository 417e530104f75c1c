#include "gis/prj_file.h"

#include "gis/layer_table.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/projection_text.h"
#include "text_utils/text.h"

#include <optional>

void CHECK_PRJ(const std::string& base) {
    const GisProjection& run = gisProjection();
    if (TRIMMED(run.prj).empty() && !run.isRuns) return;
    const std::optional<std::string> name = FIND_FILE(base + ".prj");
    const std::string text = name ? READ_PRJ(*name) : "";
    if (text.empty()) {
        REPORT(base + ".prj");
        DMESSAGE((run.differenceIsWarning ? "WARNING" : "ERROR") +
                 std::string(" 0420 - Could not read projection line in .prj file."));
        if (run.differenceIsWarning) return;
        EXITS();
    }
    if (!FLAGEXISTS(text, "PROJCS[")) {
        REPORT(*name);
        DMESSAGE("WARNING 0420 - Could not find PROJCS definition.  Projection of .shp file might not be cartesian.");
    }
    const bool same = run.isRuns ? run.isRuns(text) : SAME_PROJECTION(text, run.prj);
    if (!same) gisReportProjection(".shp", *name, text, run.prj);
}
