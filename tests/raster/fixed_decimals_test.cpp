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
        {12.5F, 10, 3, "     12.500"},
        {-12.5F, 10, 3, "    -12.500"},
        {0.0625F, 10, 3, "      0.062"},
        {0.1875F, 10, 3, "      0.188"},  // exact halves go to the even digit
        {2.5F, 10, 1, "        2.5"},
        {0.001F, 10, 2, "       0.00"},
        {-0.0001F, 10, 3, "     -0.000"},
        {-0.0F, 10, 3, "     -0.000"},  // as printf writes them
        {99999.99F, 10, 3, "  99999.992"},
        {-99999.0F, 10, 3, " -99999.000"},
        {999999.5F, 10, 3, " 999999.500"},
        {-999999.5F, 10, 3, " -999999.500"},  // one too wide
        {999.96F, 5, 1, " 1000.0"},
        {9.96F, 3, 1, " 10.0"},  // rounding adds the digit that does not fit
        {5.0F, 0, 1, " 5.0"},
        {1.5F, 6, 0, "      2"},
        {NAN, 10, 3, " -99999.000"},
        {-INFINITE, 10, 3, " -99999.000"},
        {-99999.0F, 3, 1, " -99999.0"},
        {0.1F, 15, 12, "  0.100000001490"},
    };
    for (const auto& [value, width, decimals, expected] : rows) CHECK(put({value}, width, decimals) == expected);
}

TEST_CASE("PUT_FIXED_FIELDS writes what printf writes") {
    std::vector<float> edges = {
        0.0F, -0.0F, -99999.0F, -99998.99F, 1e-45F, 1e15F, std::numeric_limits<float>::max(), 4503599627370496.0F};
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
    const std::tuple<int, int> formats[] = {{10, 3}, {15, 3}, {14, 3}, {9, 3},  {8, 2}, {6, 1},   {10, 8},  {12, 7},
                                            {9, 7},  {25, 6}, {26, 5}, {40, 4}, {3, 1}, {20, 12}, {100, 98}};
    for (const auto& [width, decimals] : formats) {
        CAPTURE(width);
        CAPTURE(decimals);
        CHECK(put(edges, width, decimals) == printed(edges, width, decimals));
        CHECK((put(swept, width, decimals) == printed(swept, width, decimals)));
    }
}
