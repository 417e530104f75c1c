#include "run_control/output_names.h"

#include "console_of.h"
#include "run_control/arguments.h"
#include "services/files.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

namespace {

void useSwitches(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "VORANT_to_GIS");
    consoleOf([&] { READ_ARGUMENTS(static_cast<int>(arguments.size()), arguments.data()); });
}

OutputLabel labelled(std::string base, float time, double gridSize) {
    OutputLabel label;
    label.base = std::move(base);
    label.time = time;
    label.gridSize = gridSize;
    return label;
}

}  // namespace

TEST_CASE("names are base, time tag, component and grid size") {
    INITIALISE_FILES();
    struct {
        std::vector<const char*> switches;
        const char* base;
        float time;
        double gridSize;
        bool vector;
        const char* expected;
    } const rows[] = {
        {{"-asc"}, "x_h", 99999.0F, 5.0, false, "x_h_Max_g005"},
        {{"-asc"}, "x_h_", 99999.0F, 5.0, false, "x_h_Max_g005"},  // no doubled underscore
        {{"-asc"}, "x_h", -99999.0F, 12.5, false, "x_h_Min_g012.5"},
        {{"-asc"}, "x_h", 20.0F, 2.5, false, "x_h_t020.00_g002.5"},
        {{"-asc"}, "x_h", 1234.5F, 1000.0, false, "x_h_t1234.50_g1000"},   // wider than three digits: nothing cut
        {{"-asc"}, "x_h", -0.5F, 1e-5, false, "x_h_t-000.50_g000.00001"},  // sign before the padding; degrees
        {{"-asc", "-sec"}, "x_h", 2.5F, 5.0, false, "x_h_t009000_g005"},   // shown in seconds
        {{"-asc", "-sec"}, "x_h", 99999.0F, 5.0, false, "x_h_Max_g005"},   // a marker is no time
        {{"-asc"}, "x_h", 900001.0F, 5.0, false, "x_h_time_hMax_g005"},
        {{"-asc"}, "x_h", 222222.0F, 5.0, false, "x_h_MaxSource_g005"},    // lies among the durations
        {{"-asc"}, "x_h", 100005.0F, 5.0, false, "x_time_exceed_5_g005"},  // the trailing part goes
        {{"-asc"}, "r.v2_h", 200000.1F, 5.0, false, "r.v2_durn_above_0.1_g005"},
        {{"-asc", "-vx"}, "x_V", 1.0F, 5.0, true, "x_V_t001.00_Vx_g005"},
        {{"-asc", "-vx"}, "x_h", 1.0F, 5.0, false, "x_h_t001.00_g005"},  // a scalar has no component
        {{"-asc", "-vdir"}, "x_V", 1.0F, 5.0, true, "x_V_t001.00_Vdir_g005"},
        {{"-asc", "-sgs"}, "x_h", 1.0F, 5.0, false, "x_h_t001.00"},
        {{"-asc", "-out", "My.ASC"}, "x_h", 1.0F, 5.0, false, "My"},    // own extension goes, the grid size too
        {{"-asc", "-out", "My.v2"}, "x_h", 1.0F, 5.0, false, "My.v2"},  // another format's "extension" stays
        {{"-asc", "-out", "My", "-tAll"}, "x_h", 1.0F, 5.0, false, "x_h_t001.00_g005"},
    };
    SET_TIME_PRECISION({1.0F, 20.0F}, false);
    for (const auto& row : rows) {
        useSwitches(row.switches);
        SET_TIME_PRECISION({}, OPTIONS().seconds);
        OutputLabel label = labelled(row.base, row.time, row.gridSize);
        label.vector = row.vector;
        CHECK(OUTPUT_NAME(label, {".asc", ".prj"}) == row.expected);
    }
}

TEST_CASE("times of a run stay apart in names with the fewest decimals") {
    struct {
        std::vector<float> times;
        bool seconds;
        float time;
        const char* expected;
    } const rows[] = {
        {{0.0F, 0.5F, 1.0F}, false, 0.5F, "_t000.50"},
        {{0.0F, 0.001F}, false, 0.001F, "_t000.001"},
        {{1.0F, 1.0000010F}, false, 1.0F, "_t001.000000"},
        // a repeated time cannot be told apart: no decimals wasted
        {{1.0F, 1.0F}, false, 1.0F, "_t001.00"},
        {{0.01F, 99999.0F, 99999.1F}, false, 0.01F, "_t000.01"},  // markers do not count
        {{0.0F, 0.0001F}, true, 0.0001F, "_t000000.4"},           // 0.36 s apart
    };
    for (const auto& row : rows) {
        SET_TIME_PRECISION(row.times, row.seconds);
        CHECK(TIME_TAG(row.time, row.seconds) == row.expected);
    }
}

TEST_CASE("a name that the run has read or written is not used again") {
    INITIALISE_FILES();
    useSwitches({"-flt"});
    NOTE_FILE_USED("x_h_Max_g005.hdr");    // a companion counts as much as the grid
    NOTE_FILE_USED("X_H_MAX_G005_2.FLT");  // letter case does not tell files apart on Windows
    std::string name;
    const std::string said = consoleOf([&] {
        name = OUTPUT_NAME(labelled("x_h", 99999.0F, 5.0), {".flt", ".hdr", ".prj"});
    });
    CHECK(name == "x_h_Max_g005_3");
    CHECK(said.starts_with("WARNING - x_h_Max_g005.flt has been read or written"));
}
