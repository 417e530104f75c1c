#include "raster/fixed_decimals.h"

#include "testing.h"

#include <bit>
#include <cstdio>

namespace {

std::string put(const std::vector<float>& values, int width, int decimals) {
    std::vector<char> room(FIXED_FIELDS_ROOM(values.size()), '#');
    const char* end = PUT_FIXED_FIELDS(room.data(), values, width, decimals);
    return {room.data(), static_cast<std::size_t>(end - room.data())};
}

std::string printed(const std::vector<float>& values, int width, int decimals) {
    std::string text;
    std::array<char, 200> field{};
    for (const float value : values) {
        std::snprintf(field.data(), field.size(), " %*.*f", width, decimals, static_cast<double>(value));
        text += field.data();
    }
    return text;
}

}  // namespace

TEST_CASE("PUT_FIXED_FIELDS: one blank and a right-aligned field that widens") {
    constexpr float INFINITE = std::numeric_limits<float>::infinity();
    const std::tuple<float, int, int, const char*> rows[] = {
        {12.5F, 10, 3, "     12.500"},      {9.96F, 3, 1, " 10.0"},  // rounding adds the digit that does not fit
        {NAN, 10, 3, " -99999.000"},        {-INFINITE, 10, 3, " -99999.000"},
        {0.1F, 15, 12, "  0.100000001490"},
    };
    for (const auto& [value, width, decimals, expected] : rows) CHECK(put({value}, width, decimals) == expected);
}

TEST_CASE("PUT_FIXED_FIELDS writes what printf writes") {
    // exact halves, which go to the even digit; as wide as their field and one wider, before and after rounding
    std::vector<float> edges = listOf<float>(
        "0 -0 -99999 -99998.99 1e15 4503599627370496 12.5 -12.5 0.0625 0.1875 2.5 0.001 -0.0001 99999.99 999999.5 "
        "-999999.5 999.96 9.96 5 1.5 0.1");
    edges.insert(edges.end(), {1e-45F, std::numeric_limits<float>::max()});
    for (float power = 1e-9F; power < 1e17F; power *= 10.0F)
        for (const float factor : {1.0F, 5.0F, -1.0F, -5.0F})
            for (const float next : {0.0F, 1e30F, -1e30F})
                edges.push_back(next == 0.0F ? factor * power : std::nextafter(factor * power, next));
    std::vector<float> swept;
    std::uint64_t state = 1;
    for (int i = 0; i < 20000; ++i) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        const auto bits = static_cast<std::uint32_t>(state >> 32);
        if (const auto any = std::bit_cast<float>(bits); std::isfinite(any)) swept.push_back(any);
        // ties at every short count of decimals
        swept.push_back(static_cast<float>(static_cast<std::int32_t>(bits)) / 65536.0F);
        swept.push_back(static_cast<float>(static_cast<std::int32_t>(bits) / 100000) / 1000.0F);
    }
    const std::tuple<int, int> formats[] = {{10, 3},   {15, 3}, {14, 3}, {9, 3},  {8, 2},  {6, 1}, {10, 8},
                                            {12, 7},   {9, 7},  {25, 6}, {26, 5}, {40, 4}, {3, 1}, {20, 12},
                                            {100, 98}, {10, 1}, {10, 2}, {5, 1},  {0, 1},  {6, 0}, {15, 12}};
    for (const auto& [width, decimals] : formats) {
        CAPTURE(width);
        CAPTURE(decimals);
        CHECK(put(edges, width, decimals) == printed(edges, width, decimals));
        CHECK((put(swept, width, decimals) == printed(swept, width, decimals)));
    }
}
