#include "inputs/xmdf_extract.h"

#include "inputs/dat_reader.h"
#include "inputs/results.h"
#include "inputs/xmdf_messages.h"
#include "inputs/xmdf_selection.h"
#include "run_control/read_switches.h"
#include "services/files.h"
#include "services/options.h"
#include "testing.h"
#include "xmdf/make_xmdf.h"

namespace {

constexpr float MISSING = -99999.0F;
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

TestDataset threeNodes(const std::string& path, std::vector<double> times, std::vector<float> values,
                       std::vector<std::uint8_t> flags, bool vector = false) {
    TestDataset d;
    d.path = path;
    d.shape = {times.size(), 3};
    if (vector) d.shape.push_back(2);
    if (vector) d.groupType = "DATASET VECTOR";
    d.times = std::move(times);
    d.values = std::move(values);
    d.flags = std::move(flags);
    return d;
}

/// Reads every output of a run with these switches and hands each results record over.
template <typename Take>
std::string readAll(const std::string& file, const std::vector<std::string>& switches, const std::string& type,
                    Take take) {
    readSwitches(switches);
    return consoleOf([&] {
        INITIALISE_FILES();
        XmdfCatalogue catalogue = OPEN_XMDF_FILES({file});
        for (const XmdfItem& item : SELECT_XMDF_OUTPUTS(catalogue, OPTIONS(), type)) {
            Results results;
            XmdfReading reading = BEGIN_XMDF_READING(catalogue[item.file], item, false, OPTIONS().seconds, results);
            try {
                while (NEXT_XMDF_OUTPUT(reading)) take(results);
            } catch (const XmdfUnreadable& unreadable) {
                STOP_XMDF(unreadable);
            }
        }
    });
}

std::vector<float> withoutFirst(const std::vector<float>& table) {
    return {table.begin() + (table.empty() ? 0 : 1), table.end()};
}

}  // namespace

TEST_CASE("each way of reading fills the record with the right values, flags and time") {
    const TemporaryFolder folder;
    const std::string file = folder.name("x.xmdf");
    makeXmdf(file,
             {threeNodes("/r/Maximums/Stored", {99999.0, 1.0}, {7, 8, 9, 1, 1, 1}, {1, 0, 1, 1}),  // the first counts
              threeNodes("/r/Minimums/Stored", {-99999.0}, {1, 2, MISSING}, {0, 1}),
              threeNodes("/r/Temporal/Scalar", {0, 1, 2},
                         {5, MISSING, MISSING, 4, NOT_A_NUMBER, MISSING, 3, -2, MISSING}, {0, 0, 0, 1, 0, 0}),
              threeNodes("/r/Temporal/Arrows", {0, 1},
                         {3, 4, MISSING, MISSING, MISSING, MISSING, 0, -6, 1, 2, MISSING, MISSING}, {}, true),
              threeNodes("/r/Times/Time of Peak h", {900001.0}, {1.5F, MISSING, 0}, {}),
              threeNodes("/r/Times/Two", {900001.0, 900002.0}, {1, 2, 3, 4, 5, 6}, {})});
    using Values = std::vector<float>;
    using Flags = std::vector<std::uint8_t>;
    const std::tuple<const char*, const char*, OutputTime, Values, Values, Flags> rows[] = {
        // entry 0 unused
        {"-max", "Stored", TIME_MAXIMUM, {7, 8, 9}, {}, {1, 1, 0}},
        {"-min", "Stored", TIME_MINIMUM, {1, 2, MISSING}, {}, {1, 0, 1}},
        // first and last time fold too; a cell never wet stays dry
        {"-max", "Scalar", TIME_MAXIMUM, {5, -2, MISSING}, {}, {1, 0, 1}},
        // components of the longest; a missing one is no long vector
        {"-max", "Arrows", TIME_MAXIMUM, {0, 1, MISSING}, {-6, 2, MISSING}, {1}},
        {"-t2", "Scalar", {2}, {3, -2, MISSING}, {}, {1, 0, 0}},
        {"-tmax", "Water Level", TIME_OF_PEAK_LEVEL, {1.5F, MISSING, 0}, {}, {1}},
        {"-tmax -sec", "Water Level", TIME_OF_PEAK_LEVEL, {5400, MISSING, 0}, {}, {1}},
    };
    for (const auto& [switches, type, time, x, y, wet] : rows) {
        CAPTURE(type);
        int outputs = 0;
        const std::string console = readAll(file, wordsOf(switches), type, [&](const Results& results) {
            ++outputs;
            CHECK(results.time == time);
            CHECK(withoutFirst(results.x) == x);
            CHECK(withoutFirst(results.y) == y);
            for (std::size_t c = 1; c < wet.size(); ++c) CHECK(results.wet[c] == wet[c]);
            CHECK(results.endReached);
        });
        CHECK_MESSAGE(outputs == 1, console);
        CHECK(openHandles() == 0);
    }
    const std::string two =
        readAll(file, {"-path/r/Times/Two"}, "", [](const Results&) { FAIL("two times of one output"); });
    CHECK(
        two.ends_with("ERROR - Multiple output times exits, expecting 1.\n        Contact the maintainers (see "
                      "README)\n\nPress Enter to Close\n<stopped>"));
    CHECK(openHandles() == 0);
}

TEST_CASE("all times: the group is opened once, closed behind the last, and closed when an output fails between") {
    const TemporaryFolder folder;
    const std::string file = folder.name("x.xmdf");
    makeXmdf(file, {threeNodes("/r/Temporal/d", {0, 0.5, 1}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {})});
    std::vector<OutputTime> times;
    std::vector<float> first;
    const std::string console = readAll(file, {"-tAll"}, "d", [&](const Results& results) {
        times.push_back(results.time);
        first.push_back(results.x[1]);
        CHECK(results.endReached == (times.size() == 3));
        CHECK(results.times == std::vector<OutputTime>{{0}, {0.5}, {1}});
    });
    CHECK(times == std::vector<OutputTime>{{0}, {0.5}, {1}});
    CHECK(first == std::vector<float>{1, 4, 7});
    CHECK(countOf(console, "Opening Group.\nDone.\n") == 1);
    CHECK(countOf(console, "Processing final timestep... closing group\n") == 1);
    readAll(file, {"-tAll"}, "d", [](const Results&) { EXITS(); });
    CHECK(openHandles() == 0);
}
