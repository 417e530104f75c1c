#include "inputs/dat_reader.h"

#include "geometry/no_value.h"
#include "inputs/dat_steps.h"
#include "inputs/fold_maximums.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"

#include <algorithm>

namespace {

/// The step at which folding stops: it is tested before it is folded, so neither times of maximum nor the last step of
/// the file ever join the maximum. steps.size() when that is the damaged one.
std::size_t stopStep(const DatFile& dat) {
    std::size_t k = 0;
    const std::size_t last = dat.damaged ? dat.steps.size() : dat.steps.size() - 1;
    while (k < last && dat.steps[k].time.kind != TimeKind::TimeOfMaximum) ++k;
    return k;
}

void foldSteps(const DatFile& dat, std::size_t end, Results& kept) {
    CHECK_DAT_MEMORY(dat, 1);
    std::vector<float> x(kept.x.size()), y(kept.y.size());
    std::vector<std::uint8_t> wet(kept.wet.size());
    std::fill(kept.x.begin(), kept.x.end(), NO_VALUE);
    std::fill(kept.y.begin(), kept.y.end(), NO_VALUE);
    std::fill(kept.wet.begin(), kept.wet.end(), std::uint8_t{0});
    for (std::size_t k = 0; k < end; ++k) {
        READ_DAT_STEP(dat, k, {x, y, wet});
        if (kept.vector) FOLD_VECTORS(x, y, kept.x, kept.y);
        else FOLD_SCALARS(x, kept.x);
        FOLD_FLAGS(wet, kept.wet);
    }
}

/// Stored maximums without flags of their own take the cells wet at any time before them.
void takeStoredMaximums(const DatFile& dat, std::size_t stored, Results& kept) {
    REPORT("File has maximums stored (time = 99,999) using these values and ignoring all other timesteps.");
    const auto hasFlags = [](const DatStep& step) { return step.flags; };
    std::vector<std::uint8_t> wet;
    if (!dat.steps[stored].flags &&
        std::any_of(dat.steps.begin(), dat.steps.begin() + static_cast<std::ptrdiff_t>(stored), hasFlags)) {
        foldSteps(dat, stored, kept);
        wet = kept.wet;
    }
    READ_DAT_STEP(dat, stored, {kept.x, kept.y, kept.wet});
    if (!wet.empty()) kept.wet = std::move(wet);
}

}  // namespace

void EXTRACT_DAT_MAXIMUMS(const DatFile& dat, Results& kept) {
    REPORT("Extracting maximums from all timesteps in .dat file");
    const std::size_t stop = stopStep(dat);
    if (stop == dat.steps.size()) STOP_AT_DAMAGED_STEP(dat);
    if (dat.steps[stop].time.kind == TimeKind::Maximum) {
        takeStoredMaximums(dat, stop, kept);
    } else if (dat.steps.size() == 1) {
        READ_DAT_STEP(dat, 0, {kept.x, kept.y, kept.wet});
    } else if (stop == 0) {
        STOP_RUN("ERROR - " + GETNAM(dat.file) +
                 " begins with times of maximum; there is no timestep to extract maximums from.");
    } else {
        foldSteps(dat, stop, kept);
        if (dat.steps[stop].time.ordinary())
            DMESSAGE("WARNING - Last timestep is not included in the extracted maximums.");
    }
    kept.time = TIME_MAXIMUM;
    kept.endReached = true;
}
