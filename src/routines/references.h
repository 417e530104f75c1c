// What arrives through the C interface, made safe: values by reference, arrays with a count, truth values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The value, or 0 for a null reference.
template <typename Value>
Value at(const Value* reference) {
    return reference != nullptr ? *reference : Value{};
}

/// Writes a result the caller asked for.
template <typename Value>
void put(Value* result, Value value) {
    if (result != nullptr) *result = value;
}

/// All bits set, or none.
inline std::int32_t truth(bool value) { return value ? -1 : 0; }

/// An array of `count` values; empty when it is null or the count is below 1.
template <typename Value>
std::span<Value> array(Value* first, const std::int32_t* count) {
    const std::int32_t n = at(count);
    return first != nullptr && n > 0 ? std::span<Value>(first, static_cast<std::size_t>(n)) : std::span<Value>();
}
