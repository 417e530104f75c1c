// Statistics of a band, gathered row by row while it is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// Of the values that are there.
struct BandStatistics {
    std::int64_t count = 0;
    double lowest = 0.0, highest = 0.0;
    double mean = 0.0, squares = 0.0;  ///< squares: sum of the squared differences from the mean
};

/// One entry a row, summed up in the order of the rows, so that the result does not depend on how they came.
class RowStatistics {
public:
    explicit RowStatistics(std::int32_t rows) : rows_(static_cast<std::size_t>(rows)) {}
    /// row: from 0. values: of the whole row, `noData` where there is nothing; all finite.
    void note(std::int32_t row, const float* values, std::size_t count, float noData);
    BandStatistics total() const;

private:
    std::vector<BandStatistics> rows_;
};
