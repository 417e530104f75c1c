#include "gdal_outputs/layer_file.h"

#include "gdal_outputs/gdal_module.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/text.h"

#include <algorithm>
#include <utility>

namespace {

std::string uniqueName(const std::vector<std::string>& taken, const std::string& name) {
    const auto isTaken = [&](const std::string& one) {
        return std::any_of(taken.begin(), taken.end(), [&](const std::string& other) { return ASAME(one, other); });
    };
    std::string free = name;
    for (int copy = 2; isTaken(free); ++copy) free = name + "_" + std::to_string(copy);
    return free;
}

void makeUnique(std::vector<LayerField>& fields) {
    std::vector<std::string> taken;
    for (LayerField& field : fields) taken.push_back(field.name = uniqueName(taken, field.name));
}

}  // namespace

LayerFile::LayerFile(std::string_view neededBy, std::string driver, std::vector<std::string> options)
    : gdal_(GDAL_MODULE(neededBy)), driver_(std::move(driver)), options_(std::move(options)) {
    CHECK_GDAL_OPTIONS(gdal_, driver_, options_);
}

void REFUSE_OPEN_ELSEWHERE(const std::string& name) {
    if (const auto other = OPEN_ELSEWHERE(name))
        STOP_RUN("ERROR - " + name + " is open in another program, as " + *other + " shows; close it there.");
}

void LayerFile::expect(const std::string& name) {
    REFUSE_OPEN_ELSEWHERE(name);
    name_ = name;
}

void LayerFile::open() {
    layers_.clear();
    BEGIN_OUTPUT(name_);
    NOTE_FILE_USED(name_);
    writer_ = std::make_unique<LayersWriter>(gdal_, WORKING_NAME(name_, LibraryMakes::Anew), driver_, options_, name_);
}

std::int32_t LayerFile::add(LayerFacts facts) {
    if (!writer_) open();
    facts.name = uniqueName(layers_, facts.name);
    layers_.push_back(facts.name);
    makeUnique(facts.fields);
    return writer_->add(facts);
}

void LayerFile::close() {
    if (!writer_) return;
    writer_->close();
    writer_.reset();
    FINISH_OUTPUT(name_);
}
