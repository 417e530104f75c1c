// Binary .dat files, put together by hand.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace dat_bytes {

/// One output time by hand; no flags: the activity byte is 0. Vectors are x, y, x, y.
struct Step {
    float time;
    std::vector<float> values;
    std::vector<int> flags;
};

inline std::string integer(std::int64_t value, int size = 4) {
    std::string bytes;
    for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    return bytes;
}
inline std::string real(float value) { return integer(std::bit_cast<std::int32_t>(value)); }

inline std::string header(int nodes, int cells, bool vector = false, int flagSize = 1,
                          std::string quantity = "Water Level") {
    quantity.resize(40, ' ');
    return integer(3000) + integer(100) + integer(3) + integer(110) + integer(4) + integer(120) + integer(flagSize) +
           integer(vector ? 140 : 130) + integer(170) + integer(nodes) + integer(180) + integer(cells) + integer(190) +
           quantity;
}

inline std::string stepBytes(const Step& step, int flagSize = 1, int active = 1) {
    std::string bytes = integer(200) + integer(step.flags.empty() ? 0 : active, flagSize) + real(step.time);
    for (const int flag : step.flags) bytes += integer(flag, flagSize);
    for (const float value : step.values) bytes += real(value);
    return bytes;
}

inline std::string datBytes(const std::string& cards, const std::vector<Step>& steps, int flagSize = 1,
                            int active = 1) {
    std::string bytes = cards;
    for (const Step& step : steps) bytes += stepBytes(step, flagSize, active);
    return bytes + integer(210);
}

}  // namespace dat_bytes
