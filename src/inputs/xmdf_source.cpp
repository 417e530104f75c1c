#include "inputs/xmdf_source.h"

#include "inputs/xmdf_messages.h"
#include "inputs/xmdf_selection.h"
#include "services/console.h"
#include "services/options.h"

#include <algorithm>

namespace {

Dataset datasetOf(const XmdfItem& item) {
    Dataset dataset;
    dataset.path = item.path;
    dataset.quantity = item.quantity;
    dataset.code = item.code;
    dataset.tag = item.tag;
    dataset.vector = item.kind == XmdfKind::Vector;
    dataset.values = item.facts.values;
    dataset.flags = item.facts.flags;
    if (item.read != XmdfRead::AllTimes) return dataset;
    dataset.outputs = item.facts.times.size();
    dataset.timed = std::any_of(item.facts.times.begin(), item.facts.times.end(),
                                [](const OutputTime& time) { return time.ordinary(); });
    return dataset;
}

}  // namespace

XmdfSource::XmdfSource(const std::string& name, const RunOptions& options, const std::string& typeName)
    : catalogue_(OPEN_XMDF_FILES({name})),
      items_(SELECT_XMDF_OUTPUTS(catalogue_, options, typeName)),
      seconds_(options.seconds && !options.resultsFile) {
    for (const XmdfItem& item : items_) datasets_.push_back(datasetOf(item));
}

std::string_view XmdfSource::heading(bool vector) const {
    return vector ? "Processing Vector Datasets..." : "Processing Scalar Datasets...";
}

std::vector<OutputTime> XmdfSource::times() const {
    std::vector<OutputTime> times;
    for (const XmdfItem& item : items_) times.insert(times.end(), item.facts.times.begin(), item.facts.times.end());
    return times;
}

std::vector<OutputTime> XmdfSource::outputTimes(std::size_t dataset) const {
    const XmdfItem& item = items_[dataset];
    return item.read == XmdfRead::AllTimes ? item.facts.times : std::vector<OutputTime>{};
}

void XmdfSource::goTo(std::size_t output, Results&) {
    reading_->next = static_cast<std::int32_t>(output) + 1;
    reading_->done = reading_->next > reading_->last;
}

void XmdfSource::begin(std::size_t dataset, bool cellCentred, Results& results) {
    const XmdfItem& item = items_[dataset];
    reading_.reset();
    reading_ = BEGIN_XMDF_READING(catalogue_[item.file], item, cellCentred, seconds_, results);
}

bool XmdfSource::next(Results&) {
    try {
        return NEXT_XMDF_OUTPUT(*reading_);
    } catch (const XmdfUnreadable& unreadable) {
        if (items_.size() == 1) STOP_XMDF(unreadable);
        LEAVE_XMDF_OUT(reading_->item->path, unreadable);
        return false;
    }
}

void XmdfSource::finish() { REPORT("Finished processing xmdf file."); }
