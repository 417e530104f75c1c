#include "run_control/switch_checks.h"

#include "inputs/output_types.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace {

void stopIf(bool fault, std::string_view message) {
    if (fault) STOP_RUN(message);
}

/// A warning or check and what is done about it.
void say(std::string_view message, std::string_view consequence) {
    DMESSAGE(message);
    REPORT(consequence);
}

/// Points and profiles are the format of such a run.
bool takesSamples(const RunOptions& o) { return GIVEN(o, Family::Profile) || GIVEN(o, Family::Points); }

std::string driverFormats() {
    std::string list;
    for (const OutputFormat& format : OUTPUT_FORMATS())
        if (!format.driver.empty()) list += (list.empty() ? "-" : ", -") + std::string(format.keyword);
    return list;
}

void checkFormats(RunOptions& o) {
    stopIf(o.vmi, "ERROR - vmi output no longer supported.");
    const std::vector<const OutputFormat*> formats = FORMATS_GIVEN(o);
    for (const OutputFormat* format : formats) REPORT(format->line);
    std::size_t count = formats.size();
    if (GIVEN(o, Family::Profile) && GIVEN(o, Family::Points)) --count;  // points along profiles are one output
    o.samplesPackage = takesSamples(o) && GIVEN(o, "gpkg");
    if (o.samplesPackage) --count;
    if (count == 1) return;
    DMESSAGE(count == 0 ? "ERROR - No output format flag specified."
                        : "ERROR - More than one output format specified. Refer to above for more information.");
    o.inputError = true;
    PAUSE("");
}

void checkTimes(const RunOptions& o) {
    stopIf(o.timeValueGiven && o.max,
           "Error - Both max (-max) and time (-t) arguments found, please specify only one.");
    stopIf(o.timeValueGiven && o.min,
           "Error - Both min (-min) and time (-t) arguments found, please specify only one.");
    stopIf(o.tmax && (o.max || o.min || o.timeValueGiven),
           "Error - Maxtime (-tmax) flag found with addition time flags.");
}

/// Said before any of the time switches gives way to another.
void checkTimeSubset(RunOptions& o) {
    if (!o.subset.given()) return;
    stopIf(o.timeGiven,
           "ERROR - -from, -until and -nth take some of all output times, not those of -max, -min, -tmax or -t.");
    stopIf(o.subset.from && o.subset.until && *o.subset.from > *o.subset.until,
           "ERROR - The time of -from is above that of -until.");
    o.subsetAlone = !o.allTimes;
    o.allTimes = true;
}

void checkTypeOfPeak(RunOptions& o) {
    if (!o.typeGiven || !o.tmax || o.allTypes) return;
    if (IS_WATER_LEVEL(o.typeText)) o.secondDatasetName = "Time of Peak h";
    else if (IS_VELOCITY(o.typeText)) o.secondDatasetName = "Time of Peak V";
    else STOP_RUN("Error - Maxtime (-tmax) flag found, with xmdf date type other than \"h\" or \"v\".");
}

void checkOutputName(RunOptions& o) {
    if (o.suppressGridSize && o.outputNameGiven) {
        DMESSAGE("Warning - Supress grid size (-sgs) switch ignored as output file specified.");
        o.suppressGridSize = false;
    }
    const bool named = !takesSamples(o) && (GIVEN(o, Family::Raster) || GIVEN(o, Family::Layer) ||
                                            GIVEN(o, Family::ResultsFile) || GIVEN(o, Family::Scene));
    if ((o.suppressGridSize || o.outputNameGiven) && !named) {
        say("Warning - Supress grid size (-sgs) or output filename (-out) switch only available for mif, shp or asc "
            "outputs.",
            "-sgs or -out flag ignored.");
        o.suppressGridSize = false;
        DROP_OUTPUT_NAME();
    }
}

void checkShapes(RunOptions& o) {
    constexpr float LEAST_THICKNESS = 0.00001F;
    const std::vector<const OutputFormat*> formats = FORMATS_GIVEN(o);
    const bool outlined = std::any_of(formats.begin(), formats.end(), [](const auto* f) { return f->outlinedArrows; });
    if (outlined && std::find(o.outputs.begin(), o.outputs.end(), "mif") != o.outputs.end()) {
        say("Warning - Both .mif and .shp outputs requested, can only process on at a time.", "Ignoring shp format.");
        DROP_FORMATS(o, [](const OutputFormat& format) { return format.outlinedArrows; });
    } else if (outlined && o.vector && std::abs(o.tailThicknessFactor) < LEAST_THICKNESS) {
        DMESSAGE("Check - Tail Thickness Factor not set for Arc Shape vectors, using 0.01 times arrow size.");
        o.tailThicknessFactor = 0.01F;
    }
}

void checkDatasets(RunOptions& o) {
    if (o.scalarIdGiven && o.vectorIdGiven) {
        say("Warning - Both xmdf scalar (-s) and vector (-v) dataset IDs specified.", "Ignoring -v dataset.");
        o.vectorIdGiven = false;
    }
    stopIf(o.scalarIdGiven && o.scalarId < 1, "Error - Specified scalar dataset (-s<id>) cannot be less than 1.");
    stopIf(o.vectorIdGiven && o.vectorId < 1, "Error - Specified vector dataset (-v<id>) cannot be less than 1.");
    if (o.allTypes && (o.scalarIdGiven || o.vectorIdGiven)) {
        say("Warning - All data (-typeAll) specified with one of -s<id> or -v<id>.",
            "Exporting all dataset and ignoring -s or -v flag.");
        o.datasetByNumber = o.scalarIdGiven = o.vectorIdGiven = false;
    }
}

void checkAllTimes(RunOptions& o) {
    if (!o.timeGiven || !o.allTimes) return;
    say("Warning - All output times conflicts with another time step (-max, -min, -tmax or -t<output time>.",
        "Exporting all times.");
    o.timeGiven = o.timeValueGiven = o.max = o.min = o.tmax = false;
    o.secondDatasetName.clear();
}

void checkRecorded(const RunOptions& o) {
    if (!o.recordedField.empty() && !GIVEN(o, Family::Points))
        DMESSAGE("WARNING - Recorded values (-obs) are those of calibration points (-cp), -obs ignored.");
}

void checkRegions(RunOptions& o) {
    stopIf(o.region && GIVEN(o, Family::Raster), "ERROR - Invalid flag combination (-region and -asc).");
    if (takesSamples(o)) {
        o.vmi = false;
        DROP_FORMATS(o, [](const OutputFormat& format) {
            return format.family == Family::Raster || format.family == Family::Layer;
        });
    }
    stopIf(o.region && o.vector, "ERROR - Both -region and -arrows or -vector specified.");
    if (!ASAME(o.pointTypes, "All") && GIVEN(o, Family::Raster)) {
        DMESSAGE("WARNING - Filtering (-pts) option only valid with -shp or -mif output.");
        PAUSE();
    }
}

void checkComponents(const RunOptions& o) {
    constexpr std::string_view ONE_COMPONENT = "ERROR - Please specify only one of -vx or -vy.";
    stopIf(o.vx && o.vy, ONE_COMPONENT);
    // the same text, as users' scripts look for it
    stopIf(!(o.slantAngle >= 0.0F && o.slantAngle < 90.0F), ONE_COMPONENT);
}

void checkGdal(RunOptions& o) {
    const std::vector<const OutputFormat*> formats = FORMATS_GIVEN(o);
    const bool gdal = o.samplesPackage ||
                      std::any_of(formats.begin(), formats.end(), [](const auto* f) { return !f->driver.empty(); });
    stopIf(!o.driverOptions.empty() && !gdal,
           "ERROR - -co needs a format that takes driver options: " + driverFormats() + ".");
    if (!o.epoch.empty() && !(o.allTimes && (GIVEN(o, "gpkg") || GIVEN(o, "fgb") || o.samplesPackage)))
        say("WARNING - The -epoch option is only valid with -gpkg or -fgb output and -tAll.", "-epoch ignored.");
    stopIf(o.multiband && !(GIVEN(o, "gtif") && o.allTimes), "ERROR - -multiband needs -gtif and -tAll.");
}

void checkTemplateGrid(RunOptions& o) {
    if (o.likeGrid.empty()) return;
    const bool griddedLayer = GIVEN(o, Family::Layer) && o.grid;
    if (griddedLayer && !o.gridSpacingGiven) return;
    if (griddedLayer) {
        DMESSAGE("WARNING - Grid spacing is taken from the template grid (-like), -grid ignored.");
    } else if (!GIVEN(o, Family::Raster)) {
        DMESSAGE("WARNING - Template grid (-like) option only valid with -asc or -flt output, -like ignored.");
        o.likeGrid.clear();
    } else if (o.grid) {
        DMESSAGE("WARNING - Grid spacing is taken from the template grid (-like), -grid ignored.");
        DROP_GRID();
    }
}

void checkDifference(RunOptions& o) {
    stopIf(o.difference && TRIMMED(o.secondInput).empty(), "ERROR - No file specified after -dif.");
    if (!o.difference && !o.secondMesh.empty()) {
        DMESSAGE("WARNING - A second mesh (-mesh2) belongs to a second input (-dif), -mesh2 ignored.");
        o.secondMesh.clear();
    }
    if (o.difference && !o.recordedField.empty()) {
        DMESSAGE("WARNING - A difference (-dif) is not compared with recorded values, -obs ignored.");
        o.recordedField.clear();
    }
}

}  // namespace

void CHECK_SWITCHES() {
    REPORT("Checking input flags.");
    RunOptions& options = OPTIONS_TO_FILL();
    checkFormats(options);
    options.resultsFile = GIVEN(options, Family::ResultsFile);
    checkTimes(options);
    checkTimeSubset(options);
    stopIf(options.vector && !GIVEN(options, Family::Layer),
           "Error - Vector option requires -mif or -shp output type.");
    checkTypeOfPeak(options);
    checkOutputName(options);
    checkShapes(options);
    checkDatasets(options);
    checkAllTimes(options);
    checkRecorded(options);
    checkRegions(options);
    checkComponents(options);
    checkTemplateGrid(options);
    checkDifference(options);
    checkGdal(options);
}
