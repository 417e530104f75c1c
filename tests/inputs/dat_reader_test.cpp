#include "inputs/dat_reader.h"

#include "inputs/dat_bytes.h"
#include "inputs/results.h"
#include "run_control/read_switches.h"
#include "services/files.h"
#include "services/options.h"
#include "testing.h"

#include <array>
#include <bit>

using namespace dat_bytes;

namespace {

constexpr float MISSING = -99999.0F;
constexpr float INFINITE = std::numeric_limits<float>::infinity();

DatFile dat;      // of the last file read
Results results;  // and its values

void maximums() { EXTRACT_DAT_MAXIMUMS(dat, results); }

/// Opens and lists the file, then takes the step; what was printed.
std::string readFile(
    const std::string& name, const std::function<void()>& then = [] {}) {
    return consoleOf([&] {
        INITIALISE_FILES();
        const int file = OPEN_FILE(name, "I ", "dat");
        dat = READ_DAT_HEADER(file, OPTIONS().seconds);
        ALLOCATE_DAT_RESULTS(dat, false, "", "", results);
        LIST_DAT_TIMES(dat, results);
        then();
        CLOSE_FILE(file);
    });
}

std::string readDat(
    const std::string& bytes, const std::function<void()>& then = [] {}) {
    const TemporaryFolder folder;
    return readFile(folder.write("x_h.dat", bytes), then);
}

}  // namespace

TEST_CASE("The header is read past cards of other programs") {
    // values are no cards
    const std::string more =
        integer(250) + integer(2) + integer(-7) + integer(150) + integer(200) + integer(160) + integer(210);
    const std::string said = readDat(datBytes(more + header(3, 2, true), {{5400, {1, 2, 3, 4, 5, 6}, {1, 0}}}),
                                     [] { NEXT_DAT_TIME(dat, results); });
    CHECK(holds(said, "Number Cells: 2\nNumber Nodes: 3\nData Description: Water Level\n"));
    CHECK_FALSE(holds(said, "Check"));
    CHECK(dat.header.vector);
    CHECK(results.times == std::vector<OutputTime>{{1.5}});
    CHECK(results.x == std::vector<float>{MISSING, 1, 3, 5});
    CHECK(results.y == std::vector<float>{MISSING, 2, 4, 6});
    CHECK(results.wet == std::vector<std::uint8_t>{1, 1, 0});
}

TEST_CASE("For a file of results minimums come first and maximums last, each with the flags it has in the file") {
    const TemporaryFolder folder;
    const std::string name = folder.write(
        "x_h.dat", datBytes(header(1, 1), {{99999, {9}, {1}}, {1, {5}, {0}}, {-99999, {4}, {}}, {2, {6}, {1}}}));
    std::vector<std::array<float, 2>> held;  // value, flag
    readFile(name, [&] {
        ORDER_DAT_STEPS(dat);
        while (NEXT_DAT_TIME(dat, results)) held.push_back({results.x[1], static_cast<float>(results.wet[1])});
    });
    CHECK(held == std::vector<std::array<float, 2>>{{4, 0}, {5, 0}, {6, 1}, {9, 1}});
}

TEST_CASE("A file that is no whole binary .dat is refused by name") {
    constexpr int MOST = std::numeric_limits<int>::max();
    const Step whole = {1.0F, {1, 2, 3}, {1, 0}};
    const std::tuple<std::string, std::string> rows[] = {
        {"", "x_h.dat is empty."},
        {"DATASET\nOBJTYPE \"mesh2d\"\nBEGSCL\n", "x_h.dat is a text file"},
        {header(3, 2), "no output time found"},
        {header(3, 2) + integer(210) + stepBytes(whole), "no output time found"},  // behind the end of the dataset
        // a long crawl to the first step
        {std::string(1 << 20, '\x07') + datBytes(header(3, 2), {whole}), "no output time found"},
        {datBytes(header(MOST, MOST, true), {whole}), "cannot hold 2147483647 values and 2147483647 cells"},
        {datBytes(header(3, MOST), {{1.0F, {1, 2, 3}, {}}}), "cannot hold"},  // no flags vouch for the cells
        {datBytes(header(-1, 2), {whole}), "cannot be right: -1 values"},
        {datBytes(header(0, 2), {whole}), "cannot be right"},
        {datBytes(header(3, -2), {whole}), "cannot be right"},
        // too few: rubbish follows the first step
        {datBytes(header(2, 2), {{1.0F, std::vector<float>(30), {}}}), "does not hold 2 values"},
        {datBytes(header(3, 2), {{INFINITE, {1, 2, 3}, {}}}), "<stopped>"},
    };
    for (const auto& [bytes, expected] : rows) {
        CAPTURE(expected);
        const std::string said = readDat(bytes);
        CHECK((holds(said, expected) && holds(said, "ERROR - ") && holds(said, "<stopped>")));
    }
}

TEST_CASE("The first time within the tolerance is taken, and a closer one later is named") {
    const std::vector<Step> hours = {
        {0.995F, {1}, {0}}, {1.0F, {2}, {}}, {2.0F, {3}, {1}}, {99999.0F, {4}, {}}, {99999.1F, {5}, {}}};
    std::vector<Step> seconds = {{99939, {1}, {}}, {99999, {2}, {}}, {100059, {3}, {}}, {900001, {4}, {}}};
    const std::string cards = integer(250) + integer(2) + header(1, 1);
    const std::string inHours = datBytes(header(1, 1), hours), inSeconds = datBytes(cards, seconds);
    seconds.push_back({99999, {5}, {}});
    const std::string withMaximums = datBytes(cards, seconds);
    const float second = 99999.0F;
    const std::string none = "ERROR - Could not find specified timestep in .dat file.\n";
    const std::tuple<const std::string&, WantedTime, double, float, int, std::string> rows[] = {
        {inHours, {1, 1}, 0.01, 1, 0, "WARNING - Time 1. in .dat file is closer to the specified time than 0.995,"},
        // no flags of its own: those of the step before, though it was skipped
        {inHours, {1, 1}, 0.001, 2, 0, "...Found time 1. in dat file."},
        // strictly closer; a marker is no time that could be the nearest
        {inHours, {1.5F, 1.5}, 0.5, 0, 1, none + "        The nearest output time is 1.\n"},
        {inHours, {90000, 90000}, 1, 0, 1, none + "        The nearest output time is 2.\n"},
        {inHours, {99999, 99999}, 9, 4, 1, "...Found time 99999. in dat file."},
        {inHours, {99999.1F, 99999.1}, 0, 5, 1, "...Found time 99999. in dat file."},
        {inHours, {-99999, -99999}, 0.001, 0, 1, none + "\n"},
        {withMaximums, {second, 99999 / 3600.0}, 0.001, 5, 1, "...Found time 99999. in dat file."},
        {inSeconds, {second, 99999 / 3600.0}, 0.001, 2, 1, "...Found time 27.78 in dat file."},
        {inSeconds, {900001, 900001 / 3600.0}, 0.001, 4, 1, "...Found time 250. in dat file."},
    };
    for (const auto& [bytes, wanted, tolerance, value, wet, expected] : rows) {
        CAPTURE(expected);
        const std::string said = readDat(bytes, [&] { FIND_DAT_TIME(dat, wanted, tolerance, results); });
        CHECK_MESSAGE(holds(said, expected), said);
        CHECK(holds(said, "WARNING") == holds(expected, "WARNING"));
        if (holds(expected, "ERROR")) continue;
        CHECK((results.x[1] == value && results.wet[1] == wet));
    }
}

TEST_CASE("Card 250 gives the unit of times; messages show hours, or seconds with -sec") {
    const std::tuple<int, double, const char*> rows[] = {{0, 72, "time 259200."},
                                                         {1, 1.2, "time 4320."},
                                                         {2, 0.02, "time 72."},
                                                         {4, 1728, "time 6220800."},
                                                         {3, 72, "WARNING - Unknown time unit 3 of "}};
    for (const auto& [unit, hours, expected] : rows) {
        readSwitches({"-sec"});
        const std::string cards = integer(250) + integer(unit) + header(1, 0);
        const std::string said = readDat(datBytes(cards, {{72, {1}, {}}, {99999, {4}, {}}}), [] {
            while (NEXT_DAT_TIME(dat, results)) {
            }
        });
        INITIALISE_OPTIONS();
        CHECK_MESSAGE(holds(said, expected), said);
        CHECK(holds(said, "Reading data for time 99999.\nEnd of .dat file.\n"));
        CHECK(results.times == std::vector<OutputTime>{{hours}, TIME_MAXIMUM});
    }
}

TEST_CASE("Maximums of scalars") {
    const std::string lastLeftOut = "WARNING - Last timestep is not included in the extracted maximums.";
    const std::string stored =
        "File has maximums stored (time = 99,999) using these values and ignoring all other timesteps.";
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        std::vector<Step> steps;
        std::vector<float> values;  ///< entry 0 too; none: the run stops
        std::vector<std::uint8_t> wet;
        std::string said;
    };
    const float o = MISSING;
    for (const Case& c : std::vector<Case>{
             {{{1, {5, -3}, {1, 0}}, {2, {4, -2}, {0, 0}}, {3, {9, 9}, {1, 1}}}, {o, 5, -2}, {1, 0}, lastLeftOut},
             {{{1, {5, 5}, {1, 1}}, {99999.0F, {2, 3}, {0, 1}}}, {o, 2, 3}, {0, 1}, stored},  // its flags too
             // none stored: wet at any time
             {{{1, {5, 5}, {1, 0}}, {2, {5, 5}, {0, 0}}, {99999.0F, {2, 3}, {}}}, {o, 2, 3}, {1, 0}, stored},
             {{{1, {5, 5}, {}}, {99999.0F, {2, 3}, {}}}, {o, 2, 3}, {1, 1}, stored},
             // nothing behind it counts
             {{{1, {5, 1}, {}}, {2, {4, 2}, {1, 0}}, {99999.1F, {9, 9}, {}}, {3, {8, 8}, {}}},
              {o, 5, 2},
              {1, 1},
              "time 2."},
             {{{99999.0F, {7, 1}, {}}, {-99999, {0, 0}, {}}}, {o, 7, 1}, {1, 1}, "Extracting maximums"},
             {{{6, {1, 2}, {0, 1}}}, {o, 1, 2}, {0, 1}, "Extracting maximums from all timesteps in .dat file"},
             {{{1, {nan, INFINITE}, {}}, {2, {o, 3}, {}}, {3, {0, 0}, {}}}, {o, o, 3}, {1, 1}, lastLeftOut},
             {{{99999.1F, {9, 9}, {}}, {2, {4, 2}, {}}}, {}, {}, "ERROR - "}}) {
        CAPTURE(c.said);
        const std::string said = readDat(datBytes(header(2, 2), c.steps), maximums);
        CHECK(holds(said, c.said));
        CHECK(holds(said, "WARNING") == (c.said == lastLeftOut));
        if (c.values.empty()) continue;
        CHECK(results.x == c.values);
        CHECK(std::vector<std::uint8_t>(results.wet.begin() + 1, results.wet.end()) == c.wet);
        CHECK(results.time == TIME_MAXIMUM);
    }
}

TEST_CASE("The maximum of vectors keeps both components of the longest, and missing ones are shorter than any") {
    const std::vector<Step> steps = {{1, {3, -4, MISSING, MISSING, 0, 0, 1, 0}, {}},
                                     {2, {4, 0, -1e-9F, 0, MISSING, 0, 0, 1}, {}},
                                     {3, {0, 4.5F, 0, 0, 0, 0, 2, 2}, {}},
                                     {4, {9, 9, 9, 9, 9, 9, 9, 9}, {}}};
    readDat(datBytes(header(4, 0, true), steps), maximums);
    CHECK(results.x == std::vector<float>{MISSING, 3, -1e-9F, 0, 2});  // -4 in y beats 4.5; at rest nothing is longer
    CHECK(results.y == std::vector<float>{MISSING, -4, 0, 0, 2});
}

TEST_CASE("Flags of the declared size, or behind a true of -1, are read where no other layout fits") {
    const std::vector<Step> steps = {{1, {1, 2, 3}, {1, 0, -1, 256}}, {2, {4, 5, 6}, {}}};
    const std::string check = "Check - ";
    const std::tuple<int, int, int> rows[] = {{4, 4, 1},  {4, 1, 1}, {1, 1, 1}, {2, 2, 1},
                                              {1, 1, -1}, {1, 1, 2}, {4, 4, -1}};
    for (const auto& [declared, used, active] : rows) {
        CAPTURE(declared);
        const std::string bytes = datBytes(header(3, 4, false, declared), steps, used, active);
        const std::string said = readDat(bytes, [] { CHECK(NEXT_DAT_TIME(dat, results)); });
        CHECK(holds(said, check) == (used != 1));
        CHECK_FALSE(holds(said, "WARNING"));
        CHECK(results.x == std::vector<float>{MISSING, 1, 2, 3});
        CHECK(results.wet == std::vector<std::uint8_t>{1, 1, 0, 1, used == 1 ? std::uint8_t{0} : std::uint8_t{1}});
        CHECK(dat.steps.size() == 2);
    }
}

TEST_CASE("Cut at any byte, a file gives its whole steps and a word about the next") {
    const std::vector<Step> steps = {{1, {1, 2}, {1, 0, 1}}, {2, {3, 4}, {}}, {3, {5, 6}, {1, 1, 1}}};
    const std::string cards = header(2, 3), bytes = datBytes(cards, steps);
    const TemporaryFolder folder;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        CAPTURE(length);
        const std::string name = folder.write("x_h.dat", bytes.substr(0, length));
        std::size_t whole = 0, end = cards.size();
        while (whole < 3 && end + stepBytes(steps[whole]).size() <= length) end += stepBytes(steps[whole++]).size();
        const bool damaged = whole < 3 && length > end;
        std::size_t read = 0;
        const std::string all = readFile(name, [&] {
            while (NEXT_DAT_TIME(dat, results)) CHECK(results.x[2] == steps[read++].values[1]);
        });
        CHECK(read == whole);
        CHECK(holds(all, "<stopped>") == (whole == 0));
        CHECK(holds(all, "ends inside time step " + std::to_string(whole + 1)) == (damaged && whole > 0));
        if (whole == 0) continue;
        CHECK(holds(readFile(name, maximums), "is incomplete or damaged.") == damaged);
        const bool timeThere = damaged && length >= end + 9;  // card, activity byte, time
        const float next = static_cast<float>(whole) + 1.0F;
        if (whole < 3)
            CHECK(holds(readFile(name,
                                 [&] {
                                     FIND_DAT_TIME(dat, {next, next}, 0.1, results);
                                 }),
                        timeThere ? "is incomplete or damaged." : "Could not find"));
    }
    CHECK(holds(readDat(bytes + "more"), "WARNING - "));
}

TEST_CASE("Wrong bytes anywhere end in results of the counts or in an ERROR") {
    const TemporaryFolder folder;
    const std::string bytes = datBytes(header(20, 9), {{1, std::vector<float>(20, 1.0F), std::vector<int>(9, 1)},
                                                       {2, std::vector<float>(20, 2.0F), {}}});
    for (std::size_t at = 0; at < bytes.size(); ++at)
        for (const int value : {0, 0x7F, 0xC8, 0xFF}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(value);
            const std::string said = readFile(folder.write("x_h.dat", changed), maximums);
            CHECK(holds(said, "<stopped>") == holds(said, "ERROR - "));
        }
}
