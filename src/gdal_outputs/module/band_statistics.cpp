#include "gdal_outputs/module/band_statistics.h"

#include <algorithm>

namespace {

/// The joint mean and sum of squares of two sets, without the loss of digits of plain sums.
void join(BandStatistics& all, const BandStatistics& part) {
    if (part.count == 0) return;
    if (all.count == 0) {
        all = part;
        return;
    }
    const auto before = static_cast<double>(all.count);
    const auto added = static_cast<double>(part.count);
    const double difference = part.mean - all.mean;
    all.mean += difference * added / (before + added);
    all.squares += part.squares + difference * difference * before * added / (before + added);
    all.lowest = std::min(all.lowest, part.lowest);
    all.highest = std::max(all.highest, part.highest);
    all.count += part.count;
}

}  // namespace

void RowStatistics::note(std::int32_t row, const float* values, std::size_t count, float noData) {
    BandStatistics& of = rows_[static_cast<std::size_t>(row)];
    double sum = 0.0;
    double offset = 0.0;  // the first value: differences from it keep the digits of the squares
    double squares = 0.0;
    float lowest = 0.0F;
    float highest = 0.0F;
    std::int64_t found = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const float value = values[i];
        if (value == noData) continue;
        if (found++ == 0) {
            lowest = highest = value;
            offset = static_cast<double>(value);
        }
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        const double difference = static_cast<double>(value) - offset;
        sum += difference;
        squares += difference * difference;
    }
    of = {};
    if (found == 0) return;
    const auto number = static_cast<double>(found);
    of = {found, static_cast<double>(lowest), static_cast<double>(highest), offset + sum / number,
          std::max(0.0, squares - sum * sum / number)};
}

BandStatistics RowStatistics::total() const {
    BandStatistics all;
    for (const BandStatistics& row : rows_) join(all, row);
    return all;
}
