// The next time of a dataset on its way, while the one before is being converted.
#pragma once

#include "services/workers.h"
#include "xmdf/packed_row.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

class XmdfAhead {
public:
    /// Begins to open a time, whose chunks are here. values, flags: of a time; flags 0 for a dataset without.
    void begin(std::int32_t step, PackedRow packedValues, std::size_t values, PackedRow packedFlags, std::size_t flags);
    /// Hands over the values, or the flags, of that time, each once. False where another was begun, or none, or it is
    /// damaged.
    bool take(std::int32_t step, std::span<float> values);
    bool take(std::int32_t step, std::span<std::uint8_t> flags);

private:
    struct Time {
        PackedRow packedValues, packedFlags;
        std::unique_ptr<float[]> values;
        std::unique_ptr<std::uint8_t[]> flags;
        std::size_t valueCount = 0, flagCount = 0;
        std::atomic<bool> good = true;
        void open(std::size_t piece);
    };
    bool opened(std::int32_t step);

    std::int32_t step_ = 0;
    std::unique_ptr<Time> time_;
    WorkAhead work_;  ///< ends before what it fills
};
