// Numbers of binary files as bytes, written and read field by field, whatever the byte order of the host.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

static_assert(sizeof(float) == 4 && sizeof(double) == 8);

// ---- writing: each returns the position behind what it wrote ----
/// All bytes of an unsigned number, lowest first.
template <typename Unsigned>
char* putLittle(char* at, Unsigned value) {
    if constexpr (std::endian::native == std::endian::little) std::memcpy(at, &value, sizeof value);  // one move
    else
        for (std::size_t i = 0; i < sizeof value; ++i) at[i] = static_cast<char>(value >> (8 * i));
    return at + sizeof value;
}
inline char* putLittleInt32(char* at, std::int32_t value) { return putLittle(at, static_cast<std::uint32_t>(value)); }
inline char* putLittleFloat(char* at, float value) { return putLittle(at, std::bit_cast<std::uint32_t>(value)); }
inline char* putLittleDouble(char* at, double value) { return putLittle(at, std::bit_cast<std::uint64_t>(value)); }

inline char* putBigInt32(char* at, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int i = 0; i < 4; ++i) at[i] = static_cast<char>(bits >> (24 - 8 * i));
    return at + 4;
}

// ---- reading: Byte is char or unsigned char ----
template <typename Unsigned, typename Byte>
Unsigned littleUnsigned(const Byte* at) {
    static_assert(sizeof(Byte) == 1);
    Unsigned bits = 0;
    for (std::size_t i = 0; i < sizeof bits; ++i)
        bits = static_cast<Unsigned>(bits | static_cast<Unsigned>(static_cast<unsigned char>(at[i])) << (8 * i));
    return bits;
}
template <typename Byte>
std::int32_t littleInt32(const Byte* at) {
    return static_cast<std::int32_t>(littleUnsigned<std::uint32_t>(at));
}
template <typename Byte>
float littleFloat(const Byte* at) {
    return std::bit_cast<float>(littleUnsigned<std::uint32_t>(at));
}
template <typename Byte>
double littleDouble(const Byte* at) {
    return std::bit_cast<double>(littleUnsigned<std::uint64_t>(at));
}
template <typename Byte>
std::int32_t bigInt32(const Byte* at) {
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i) bits = bits << 8 | static_cast<unsigned char>(at[i]);
    return static_cast<std::int32_t>(bits);
}

/// Turns floats whose little-endian bytes were read straight into memory, or are about to be written from it; on
/// little-endian hosts there is nothing to do.
inline void turnLittleFloats(std::span<float> values) {
    if constexpr (std::endian::native != std::endian::little)
        for (float& value : values) value = littleFloat(reinterpret_cast<const char*>(&value));
}
