#include "run_control/output_stage.h"

#include "run_control/ensight_stage.h"
#include "run_control/layer_stage.h"
#include "run_control/output_formats.h"
#include "run_control/raster_stage.h"
#include "run_control/results_file_stage.h"
#include "run_control/sample_stage.h"
#include "services/console.h"
#include "services/exits.h"

namespace {

std::unique_ptr<OutputStage> stageOf(const OutputFormat& format, const RunOptions& options,
                                     const Projection& projection) {
    switch (format.family) {
        case Family::Raster: return MAKE_RASTER_STAGE(format, options, projection);
        case Family::Layer:
        case Family::Text: return MAKE_LAYER_STAGE(format, options, projection);
        case Family::Profile:
        case Family::Points: return std::make_unique<SampleStage>(options, projection);
        case Family::ResultsFile: return MAKE_RESULTS_FILE_STAGE(format, options);
        case Family::Scene: return MAKE_ENSIGHT_STAGE(format);
        case Family::WorldFile:
        case Family::Listing: break;
    }
    SHOULD_NOT_BE_HERE("MAKE_OUTPUT_STAGES");
}

}  // namespace

void STOP_WITHOUT_OUTPUT() {
    DMESSAGE("ERROR - No data processed - check that dataset and timestep exist in file.");
    REPORT("   E.g. if specifying a maximum (-max or -t99999) check that maximums are written.");
    EXITS();
}

OutputStages MAKE_OUTPUT_STAGES(const Projection& projection) {
    OutputStages stages;
    const bool profiles = GIVEN(OPTIONS(), Family::Profile);
    for (const OutputFormat* format : FORMATS_GIVEN(OPTIONS()))
        if (format->family != Family::Points || !profiles)  // the stage of the profiles takes the points too
            stages.push_back(stageOf(*format, OPTIONS(), projection));
    return stages;
}
