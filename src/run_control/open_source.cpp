#include "run_control/open_source.h"

#include "inputs/bed_source.h"
#include "inputs/dat_source.h"
#include "inputs/subset_source.h"
#include "inputs/xmdf_source.h"
#include "run_control/results_choice.h"
#include "services/console.h"
#include "services/options.h"

#include <utility>

namespace {

/// Blank where it is not known.
std::string quantityOf(const Identified* found) {
    if (found == nullptr || !found->dat) return {};
    const Dataset& dataset = found->dat->datasets().front();
    return dataset.code.empty() ? std::string{} : dataset.quantity;
}

}  // namespace

Identified IDENTIFY_RESULTS(const InputFiles& files, const Identified* other) {
    const RunOptions& options = OPTIONS();
    Identified found;
    if (files.kind == InputKind::Xmdf) found.xmdfType = CHOOSE_XMDF_TYPE(options, quantityOf(other));
    if (files.kind != InputKind::Dat) return found;
    found.dat = std::make_unique<DatSource>(files.input, TIME_CHOICE(options));
    REPORT_CUTOFF(options, found.dat->datasets().front().quantity);
    return found;
}

std::unique_ptr<ResultsSource> OPEN_SOURCE(const InputFiles& files, Identified found, const Mesh& mesh) {
    if (files.kind == InputKind::Mesh) return std::make_unique<BedSource>(mesh);
    if (files.kind == InputKind::Xmdf)
        return std::make_unique<XmdfSource>(files.input, OPTIONS(), found.xmdfType);  // takes its time
    REPORT("Reading .dat file...");
    return std::move(found.dat);
}

std::unique_ptr<ResultsSource> WITH_SUBSET(std::unique_ptr<ResultsSource> source, const InputFiles& input) {
    const RunOptions& options = OPTIONS();
    if (!options.subset.given()) return source;
    return std::make_unique<SubsetSource>(std::move(source), options.subset, input.input, options.seconds);
}
