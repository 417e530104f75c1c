#include "result_files/xmdf_writer.h"

#include "inputs/output_types.h"
#include "inputs/xmdf_search.h"
#include "result_files/value_range.h"
#include "services/console.h"
#include "services/exits.h"

#include <algorithm>
#include <cstddef>

namespace {

/// "Times" holds datasets whose values are times.
std::string folderOf(const OutputTime& time, const std::string& path) {
    switch (time.kind) {
        case TimeKind::Ordinary: return XMDF_FOLDER_OF(path) == XmdfFolder::Times ? "Times" : "Temporal";
        case TimeKind::Maximum: return "Maximums";
        case TimeKind::Minimum: return "Minimums";
        default: return "Times";
    }
}

/// The times of maximum of a .dat are the times of peak of an .xmdf.
bool ofPeak(const Results& results) {
    return results.time.kind == TimeKind::TimeOfMaximum &&
           (IS_WATER_LEVEL(results.quantity) || IS_VELOCITY(results.quantity));
}

double storedTime(const Results& results) {
    if (!ofPeak(results)) return results.time.number;
    return IS_WATER_LEVEL(results.quantity) ? TIME_OF_PEAK_LEVEL.number : TIME_OF_PEAK_VELOCITY.number;
}

std::string nameOf(const Results& results, const std::string& path) {
    if (ofPeak(results)) return IS_WATER_LEVEL(results.quantity) ? "Time of Peak h" : "Time of Peak V";
    std::string name = path.empty() ? results.quantity : std::string(XMDF_LAST_PART(path));
    std::replace(name.begin(), name.end(), '/', '_');
    return name.empty() || name == "." ? "Results" : name;
}

}  // namespace

XmdfWriter::XmdfWriter(const std::string& name, const std::string& run, std::string shown)
    : run_(run), shown_(std::move(shown)) {
    check(XMDF_CREATE(name, file_));
}

void XmdfWriter::check(const XmdfStatus& status) const {
    if (status >= 0) return;
    DMESSAGE("ERROR - Could not write " + shown_ + ". The file is incomplete.");
    REPORT("        " + status.reason);
    EXITS();
}

void XmdfWriter::begin(const Results& results, const std::string& path, const std::string& folder, std::size_t flags) {
    XmdfNewDataset dataset;
    dataset.run = run_;
    dataset.folder = folder;
    const std::string name = nameOf(results, path);
    dataset.name = name;
    dataset.vector = results.vector;
    dataset.values = results.nodes;
    dataset.flags = static_cast<std::int32_t>(flags);
    dataset.units = results.units;
    for (int copy = 2; XMDF_HAS_DATASET(*file_, dataset); ++copy) dataset.name = name + "_" + std::to_string(copy);
    if (dataset.name != name)
        DMESSAGE("WARNING - Another dataset of " + folder + " is called " + name + ": " + path + " is written as " +
                 dataset.name + ".");
    check(XMDF_BEGIN_DATASET(*file_, dataset));
}

void XmdfWriter::write(const Results& results, const std::string& path, std::span<const std::uint8_t> flags) {
    const std::string folder = folderOf(results.time, path);
    const std::string key = folder + "/" + path + (results.vector ? "/v" : "/s");
    if (key != current_) begin(results, path, folder, flags.size());
    current_ = key;
    XmdfNewTime time;
    time.hours = storedTime(results);
    time.flags = flags;
    const ValueRange range = VALUE_RANGE(results);
    time.least = range.least;
    time.most = range.most;
    time.values = std::span(results.x).subspan(1);
    if (results.vector) {
        components_.resize(2 * (results.x.size() - 1));
        for (std::size_t i = 1; i < results.x.size(); ++i) {
            components_[2 * i - 2] = results.x[i];
            components_[2 * i - 1] = results.y[i];
        }
        time.values = components_;
    }
    check(XMDF_ADD_TIME(*file_, time));
}

void XmdfWriter::close() { check(XMDF_FINISH(file_)); }
