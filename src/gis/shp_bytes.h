// Numbers of a shapefile set as bytes, written and read field by field. Each put routine returns the position behind
// what it wrote.
#pragma once

#include <bit>
#include <cstdint>

static_assert(sizeof(double) == 8);

inline char* putBigInt32(char* at, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int i = 0; i < 4; ++i) at[i] = static_cast<char>(bits >> (24 - 8 * i));
    return at + 4;
}

inline char* putLittleInt32(char* at, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int i = 0; i < 4; ++i) at[i] = static_cast<char>(bits >> (8 * i));
    return at + 4;
}

inline char* putLittleDouble(char* at, double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    for (int i = 0; i < 8; ++i) at[i] = static_cast<char>(bits >> (8 * i));
    return at + 8;
}

inline std::uint32_t littleUnsigned(const char* at, int bytes) {
    std::uint32_t bits = 0;
    for (int i = 0; i < bytes; ++i) bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(at[i])) << (8 * i);
    return bits;
}

inline std::int32_t littleInt32(const char* at) { return static_cast<std::int32_t>(littleUnsigned(at, 4)); }

inline std::int32_t bigInt32(const char* at) {
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i) bits = bits << 8 | static_cast<unsigned char>(at[i]);
    return static_cast<std::int32_t>(bits);
}

inline double littleDouble(const char* at) {
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits |= static_cast<std::uint64_t>(static_cast<unsigned char>(at[i])) << (8 * i);
    return std::bit_cast<double>(bits);
}
