#include "run_control/gdal_layer_output.h"

#include "gdal_outputs/gdal_module.h"
#include "services/calendar.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"

#include <algorithm>

namespace {

GdalFieldType typeOf(Column column) {
    switch (column) {
        case Column::SmsId:
        case Column::MatId: return GdalInteger;
        case Column::PtType:
        case Column::GridRef: return GdalTextField;
        default: return GdalReal;
    }
}

GdalGeometry geometryOf(const LayerJob& job) {
    return job.source.kind.drawnAs == DrawnAs::Point ? GdalPoint : GdalRegion;
}

/// The columns of the layer; of all times the time stands in a column of its own.
bool isShown(const RunOptions& options, Column column) { return column != Column::Time || !options.allTimes; }

std::vector<LayerField> fieldsOf(const LayerJob& job, const RunOptions& options) {
    const std::vector<GisAttribute> attributes = ATTRIBUTES_OF(job.record, false);
    std::vector<LayerField> fields;
    for (std::size_t i = 0; i < attributes.size(); ++i)
        if (isShown(options, job.record.columns[i].column))
            fields.push_back({attributes[i].name, typeOf(job.record.columns[i].column)});
    return fields;
}

}  // namespace

void TimeFields::add(std::vector<LayerField>& fields) const {
    if (!options_.allTimes) return;
    fields.push_back({"Time", GdalReal});
    if (!options_.epoch.empty()) fields.push_back({"DateTime", GdalDateTime});
}

void TimeFields::set(const OutputLabel& label) {
    const bool ordinary = label.timed && label.time.ordinary();
    time_ = {};
    time_.set = ordinary ? 1 : 0;
    if (!ordinary) return;
    time_.real = ROUNDED(SHOWN_TIME(label.time, options_.seconds), label.timeDecimals);
    if (options_.epoch.empty()) return;
    date_ = CALENDAR_TEXT(*READ_CALENDAR_TIME(options_.epoch), label.time.number) + "Z";
    time_.text = date_.c_str();
}

void TimeFields::put(std::vector<GdalValue>& values) const {
    if (!options_.allTimes) return;
    values.push_back(time_);
    if (!options_.epoch.empty()) values.push_back(time_);
}

GdalLayerOutput::GdalLayerOutput(const OutputFormat& format, const RunOptions& options, const Projection& projection)
    : format_(format), options_(options), projection_(projection), times_(options) {
    CHECK_GDAL_OPTIONS(GDAL_MODULE("-" + std::string(format.keyword)), std::string(format.driver),
                       options.driverOptions);
}

std::string GdalLayerOutput::stemOf(OutputLabel label, std::string_view beside) const {
    label.timed = false;
    if (format_.holds == Holds::Run && label.severalDatasets) {
        label.base = label.run;
        label.vector = false;
    }
    return OUTPUT_NAME(label, format_.files, beside);
}

std::string GdalLayerOutput::next(const OutputLabel& label, std::string_view beside) {
    times_.set(label);
    const std::string dataset = format_.holds == Holds::Run ? "all" : label.base + "\n" + label.quantity;
    if (dataset != dataset_) {
        finish();
        dataset_ = dataset;
        stem_ = stemOf(label, format_.holds == Holds::Run ? std::string_view{} : beside);
        REFUSE_OPEN_ELSEWHERE(stem_ + std::string(format_.files.front()));
    }
    OutputLabel named = label;
    named.timed = named.timed && !options_.allTimes;
    return layerName_ = FILENAMEEXT(USUAL_NAME(named));
}

GdalLayerOutput::Layer GdalLayerOutput::addLayer(const LayerJob& job, const std::string& name) {
    const std::string ending = format_.holds == Holds::Run ? "" : name.substr(layerName_.size());
    auto file = files_.find(ending);
    if (file == files_.end()) {
        file = files_
                   .try_emplace(ending, "-" + std::string(format_.keyword), std::string(format_.driver),
                                options_.driverOptions)
                   .first;
        file->second.expect(stem_ + ending + std::string(format_.files.front()));
    }
    LayerFacts facts;
    facts.name = name;
    facts.geometry = geometryOf(job);
    facts.crs = projection_.text();
    facts.fields = fieldsOf(job, options_);
    times_.add(facts.fields);
    return {&file->second, file->second.add(facts)};
}

void GdalLayerOutput::begin(const LayerJob& job) {
    record_ = &job.record;
    texts_.assign(job.record.columns.size(), {});
    const std::string name = job.name.substr(0, job.name.size() - format_.files.front().size());
    std::string key = name + "\n" + job.record.valueName;
    for (const RecordColumn& column : job.record.columns) key += "\n" + std::to_string(static_cast<int>(column.column));
    const auto known = layers_.find(key);
    layer_ = known != layers_.end() ? known->second : layers_[key] = addLayer(job, name);
}

void GdalLayerOutput::finish() {
    for (auto& [ending, file] : files_) file.close();
    files_.clear();
    layers_.clear();
}

void GdalLayerOutput::object(const MapItem& item, const GisObject& o) {
    values_.clear();
    for (std::size_t i = 0; i < record_->columns.size(); ++i) {
        const Column column = record_->columns[i].column;
        if (!isShown(options_, column)) continue;
        GdalValue value{1, 0, 0.0, ""};
        if (typeOf(column) == GdalReal) {
            value.real = SHOWN_REAL(*record_, item, column);
        } else if (typeOf(column) == GdalInteger) {
            value.integer = column == Column::SmsId ? item.id : item.material;
        } else {
            texts_[i].clear();
            ADD_COLUMN(texts_[i], *record_, item, column);
            texts_[i] = texts_[i].substr(1, texts_[i].size() - 2);  // without the quotes
            value.text = texts_[i].c_str();
        }
        values_.push_back(value);
    }
    times_.put(values_);
    layer_.file->writer().feature(layer_.number, o, values_);
}
