#include "xmdf/xmdf_ahead.h"

#include <algorithm>
#include <utility>

void XmdfAhead::Time::open(std::size_t piece) {
    const bool value = piece < packedValues.count();
    const bool whole = value ? h5Unpack(packedValues, piece, std::span(values.get(), valueCount))
                             : h5Unpack(packedFlags, piece - packedValues.count(), std::span(flags.get(), flagCount));
    if (!whole) good.store(false, std::memory_order_relaxed);
}

void XmdfAhead::begin(std::int32_t step, PackedRow packedValues, std::size_t values, PackedRow packedFlags,
                      std::size_t flags) {
    work_.cancel();
    if (time_ == nullptr) time_ = std::make_unique<Time>();
    Time& time = *time_;
    if (time.valueCount != values) time.values = std::make_unique_for_overwrite<float[]>(values);
    if (time.flagCount != flags) time.flags = std::make_unique_for_overwrite<std::uint8_t[]>(flags);
    time.valueCount = values;
    time.flagCount = flags;
    time.packedValues = std::move(packedValues);
    time.packedFlags = std::move(packedFlags);
    time.good = true;
    step_ = step;
    work_.begin(time.packedValues.count() + time.packedFlags.count(), [&time](std::size_t piece) { time.open(piece); });
    if (!work_.begun()) step_ = 0;
}

bool XmdfAhead::opened(std::int32_t step) {
    if (step != step_) return false;
    if (work_.begun() && !work_.finish()) time_->good = false;
    return time_->good;
}

bool XmdfAhead::take(std::int32_t step, std::span<float> values) {
    if (!opened(step) || values.size() != time_->valueCount) return false;
    std::copy_n(time_->values.get(), values.size(), values.begin());
    return true;
}

bool XmdfAhead::take(std::int32_t step, std::span<std::uint8_t> flags) {
    if (!opened(step) || flags.size() != time_->flagCount) return false;
    std::copy_n(time_->flags.get(), flags.size(), flags.begin());
    return true;
}
