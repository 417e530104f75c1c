#include "services/output_time.h"
#include "services/calendar.h"
#include "services/time_subset.h"

#include "testing.h"

TEST_CASE("Stored times become hours; markers are told by the stored number and stay") {
    constexpr double SECONDS = 1.0, MINUTES = 60.0, HOURS = 3600.0;
    constexpr auto EXTREMES = TimeMarkers::Extremes, ALL = TimeMarkers::All;
    constexpr double SINGLE = 99999.1015625;
    const std::tuple<double, TimeMarkers, std::vector<double>, std::vector<OutputTime>> rows[] = {
        {HOURS, EXTREMES, {0.3, 99999}, {{0.3}, TIME_MAXIMUM}},
        {MINUTES, EXTREMES, {90, -99999, SINGLE}, {{1.5}, TIME_MINIMUM, {SINGLE, TimeKind::TimeOfMaximum}}},
        // a second among others, though the stored maximums follow at the end
        {SECONDS,
         EXTREMES,
         {99939, 99999, 100059, 99999},
         {{27.760833333333333}, {27.7775}, {27.794166666666667}, TIME_MAXIMUM}},
        {SECONDS, EXTREMES, {72000, 99999, 100800}, {{20}, TIME_MAXIMUM, {28}}},  // not evenly
        {SECONDS, EXTREMES, {99998, 99999}, {{27.777222222222222}, TIME_MAXIMUM}},
        {MINUTES, EXTREMES, {99939, 99999, 100059}, {{1665.65}, TIME_MAXIMUM, {1667.65}}},
        {SECONDS, EXTREMES, {100800, 111111.0 + 24}, {{28}, {30.870833333333334}}},
        {HOURS, EXTREMES, {100005, 200005, 900001}, {{100005}, {200005}, {900001}}},
        {SECONDS, ALL, {100800}, {{100800, TimeKind::Exceedance}}},
        {SECONDS,
         ALL,
         {222222, 222221, 900002, 7200},
         {{222222, TimeKind::MaxSource}, {222221, TimeKind::Duration}, TIME_OF_PEAK_VELOCITY, {2}}},
    };
    for (const auto& [unit, markers, stored, expected] : rows) {
        CAPTURE(stored);
        const std::vector<OutputTime> times = OUTPUT_TIMES(stored, unit, markers);
        REQUIRE(times.size() == expected.size());
        for (std::size_t i = 0; i < times.size(); ++i) {
            CHECK(times[i].kind == expected[i].kind);
            CHECK(times[i].number == doctest::Approx(expected[i].number).epsilon(1e-15));
        }
    }
}

TEST_CASE("Tolerance and decimals tell the times of a file apart") {
    constexpr double SECOND = 1.0 / 3600.0;
    // text of the last one
    const std::tuple<std::vector<OutputTime>, double, int, int, const char*> rows[] = {
        {{{0}, {0.5}, {1}}, 0.001, 1, 0, "1."},
        {{{100}, {100 + SECOND}}, SECOND / 2, 4, 0, "100.0003"},
        {{{1.0}, {1.0}, {2.0}, {1.0 + 1e-12}}, 0.001, 0, 0, "1."},               // equal ones do not count
        {{{99998.9999}, TIME_MAXIMUM, TIME_OF_MAXIMUM}, 0.001, 0, 0, "99999."},  // nor do markers
        {{{0.049}, {0.051}, {0.06}}, 0.001, 3, 0, "0.06"},                       // the first two apart at 1, alike at 2
        {{{0}, {SECOND / 100}}, SECOND / 200, 6, 2, "0.000003"},
    };
    for (const auto& [times, tolerance, decimals, decimalsOfSeconds, last] : rows) {
        CAPTURE(last);
        CHECK(TIME_TOLERANCE(times) == doctest::Approx(tolerance).epsilon(1e-9));
        CHECK(TIME_DECIMALS(times, false) == decimals);
        CHECK(TIME_DECIMALS(times, true) == decimalsOfSeconds);
        CHECK(TIME_TEXT(times.back(), decimals, false) == last);
    }
    CHECK(TIME_TEXT({1.5}, 0, true) == "5400.");
    CHECK(TIME_TEXT(TIME_MAXIMUM, 0, true) == "99999.");
}

TEST_CASE("A subset takes ordinary times between two ends, and every so many from the first of these") {
    const std::vector<OutputTime> hourly = {TIME_MINIMUM, {0}, {1}, {2}, {3}, {4}, TIME_MAXIMUM};
    const std::vector<OutputTime> seconds = {{0}, {1 / 3600.0}, {2 / 3600.0}};
    struct {
        const std::vector<OutputTime>& times;
        TimeSubset subset;
        std::vector<std::size_t> taken;
    } const rows[] = {
        {hourly, {1.0, 3.0, {}}, {2, 3, 4}},        // both ends
        {hourly, {1.0009, 2.9991, {}}, {2, 3, 4}},  // within 0.001 h
        {hourly, {1.0011, 2.9989, {}}, {3}},
        {hourly, {1.0, {}, 2}, {2, 4}},            // from the first taken, not from the file's
        {hourly, {{}, {}, 3}, {1, 4}},             // the minimums are not counted
        {hourly, {4.5, {}, {}}, {}},               // nor are the maximums a late time
        {seconds, {1.05 / 3600, {}, {}}, {1, 2}},  // a tenth of a step
        {seconds, {1.2 / 3600, {}, {}}, {2}},      // not half of it
    };
    for (const auto& r : rows) CHECK(TIMES_TAKEN(r.subset, r.times) == r.taken);
}

TEST_CASE("A date may have a clock behind a T or a blank") {
    const auto time = READ_CALENDAR_TIME("2020-12-31 23:54");
    CHECK((time && time == READ_CALENDAR_TIME("2020-12-31t23:54:00z")));
    CHECK_FALSE(READ_CALENDAR_TIME("2020-12-31 24:00"));
}
