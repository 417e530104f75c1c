// Values of little-endian files in the host's own order.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

inline std::uint32_t littleUint32(const unsigned char* bytes) {
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8U | static_cast<std::uint32_t>(bytes[2]) << 16U |
           static_cast<std::uint32_t>(bytes[3]) << 24U;
}
inline std::int32_t littleInt32(const unsigned char* bytes) { return static_cast<std::int32_t>(littleUint32(bytes)); }
inline float littleFloat(const unsigned char* bytes) { return std::bit_cast<float>(littleUint32(bytes)); }

/// Turns floats whose bytes were read straight into memory; on little-endian hosts there is nothing to do.
inline void turnLittleFloats(std::span<float> values) {
    if constexpr (std::endian::native != std::endian::little)
        for (float& value : values) {
            const auto bytes = std::bit_cast<std::array<unsigned char, sizeof(float)>>(value);
            value = littleFloat(bytes.data());
        }
}
