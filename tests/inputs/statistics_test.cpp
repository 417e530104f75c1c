#include "inputs/statistics.h"

#include "geometry/no_value.h"
#include "testing.h"

TEST_CASE("Statistics: worked by hand, percentiles linear between the ranks") {
    constexpr float HUGE_ONE = std::numeric_limits<float>::max();
    std::vector<float> twentyOne;  // ranks 1 and 19 are the percentiles themselves
    for (int i = 20; i >= 0; --i) twentyOne.push_back(static_cast<float>(i) - 10.0F);
    const std::tuple<std::vector<float>, Statistics> rows[] = {
        {{}, {}},
        {{NO_VALUE, -99998.5F, std::nanf(""), INFINITY, -INFINITY}, {}},  // nothing but missing ones
        {{NO_VALUE, -2.5F}, {1, -2.5, -2.5, -2.5, 2.5, -2.5, -2.5}},
        {{4, NO_VALUE, -1, 0}, {3, -1, 4, 1, 5.0 / 3.0, -0.9, 3.6}},  // places 0.1 and 1.9
        {{10, 0}, {2, 0, 10, 5, 5, 0.5, 9.5}},
        {{-0.0F, 0.0F, -1, 1}, {4, -1, 1, 0, 0.5, -0.85, 0.85}},  // both zeros are one
        {{1.0F, 1.0000001F}, {2, 1, 1.00000012, 1.00000006, 1.00000006, 1.000000006, 1.000000113}},  // one upper half
        {{0, HUGE_ONE}, {2, 0, 3.40282347e38, 1.70141173e38, 1.70141173e38, 1.70141173e37, 3.23268230e38}},
        {twentyOne, {21, -10, 10, 0, 110.0 / 21.0, -9, 9}},
        {std::vector<float>(1000, 0.25F), {1000, 0.25, 0.25, 0.25, 0.25, 0.25, 0.25}},
    };
    for (const auto& [values, expected] : rows) {
        const Statistics found = STATISTICS_OF(values);
        const auto near = [](double a, double b) { return std::abs(a - b) <= 1e-8 * std::max(1.0, std::abs(b)); };
        CAPTURE(expected.count);
        CHECK(found.count == expected.count);
        CHECK((near(found.least, expected.least) && near(found.most, expected.most)));
        CHECK((near(found.mean, expected.mean) && near(found.meanAbsolute, expected.meanAbsolute)));
        CHECK((near(found.percentile5, expected.percentile5) && near(found.percentile95, expected.percentile95)));
    }
}
