#include "run_control/output_names.h"

#include "run_control/quantity_units.h"
#include "run_control/read_switches.h"
#include "services/files.h"
#include "testing.h"

namespace {

OutputLabel labelled(std::string base, const OutputTime& time, double gridSize, std::string quantity = {}) {
    OutputLabel label;
    label.base = std::move(base);
    label.time = time;
    label.gridSize = gridSize;
    label.quantity = std::move(quantity);
    return label;
}

}  // namespace

TEST_CASE("names are base, time tag, component and grid size") {
    INITIALISE_FILES();
    const OutputTime ofMaximum = TIME_OF_MAXIMUM;
    const std::tuple<const char*, const char*, const char*, OutputTime, double, const char*> rows[] = {
        {"-asc", "x_h_", "", TIME_MAXIMUM, 5.0, "x_h_Max_g005"},       // no doubled underscore
        {"-asc", "x_h", "", {1234.5}, 1000.0, "x_h_t1234.50_g1000"},   // wider than three digits: nothing cut
        {"-asc", "x_h", "", {-0.5}, 1e-5, "x_h_t-000.50_g000.00001"},  // sign before the padding; degrees
        {"-asc -sec", "x_h", "", TIME_MAXIMUM, 5.0, "x_h_Max_g005"},
        {"-asc", "x_h", "", {100005}, 5.0, "x_h_t100005.00_g005"},  // an hour, whatever its number
        {"-asc", "x", "", TIME_OF_PEAK_LEVEL, 5.0, "x_time_hMax_g005"},
        {"-asc", "x", "", {222222, TimeKind::MaxSource}, 5.0, "x_MaxSource_g005"},
        {"-asc", "x", "", {100005, TimeKind::Exceedance}, 5.0, "x_time_exceed_5_g005"},
        {"-asc", "x", "", {200000.09375, TimeKind::Duration}, 5.0, "x_durn_above_0.1_g005"},
        {"-asc", "x_h", "Water Level", ofMaximum, 5.0, "x_h_time_hMax_g005"},
        {"-asc", "x_V", "Vector Velocity", ofMaximum, 5.0, "x_V_time_VMax_g005"},
        {"-asc", "x_d", "Depth", ofMaximum, 5.0, "x_d_tmax_g005"},
        {"-asc -vx", "x_h", "", {1}, 5.0, "x_h_t001.00_g005"},  // a scalar has no component
        {"-asc -va", "x_V", "V", {1}, 5.0, "x_V_t001.00_Vdir_g005"},
        {"-shp -vector -va", "x_V", "V", {1}, 0.0, "x_V_t001.00"},  // arrows show more than a direction
        {"-shp -vector -vy", "x_V", "V", {1}, 0.0, "x_V_t001.00_Vy"},
        {"-asc -out My.ASC", "x_h", "", {1}, 5.0, "My"},    // own extension goes, the grid size too
        {"-asc -out My.v2", "x_h", "", {1}, 5.0, "My.v2"},  // another format's "extension" stays
        {"-asc -out My -tAll", "x_h", "", {1}, 5.0, "My"},  // several outputs have dropped it before
    };
    for (const auto& [switches, base, quantity, time, gridSize, expected] : rows) {
        readSwitches(wordsOf(switches));
        OutputLabel label = labelled(base, time, gridSize, quantity);
        label.timeDecimals = NAME_DECIMALS({}, OPTIONS().seconds);
        label.vector = quantity[0] == 'V';
        CHECK(OUTPUT_NAME(label, {".asc", ".prj"}) == expected);
    }
    OutputLabel label;
    label.time = {0.001};
    label.timeDecimals = NAME_DECIMALS({{0.0}, {0.001}}, false);
    CHECK(TIME_TAG(label, false) == "t000.001");
    label.time = {0.0001};
    label.timeDecimals = NAME_DECIMALS({{0.0}, {0.0001}}, true);  // 0.36 s apart
    CHECK(TIME_TAG(label, true) == "t000000.4");
}

TEST_CASE("the last unit of a projected system tells metres from feet, and times have their own") {
    CHECK(IS_IN_FEET(R"(PROJCS["a",GEOGCS["b",UNIT["Degree",0.01]],UNIT["US survey foot",0.3]])"));
    CHECK_FALSE(IS_IN_FEET(R"(PROJCS["Foothills",PARAMETER["x",1],UNIT["metre",1]])"));
    CHECK_FALSE(IS_IN_FEET(R"(LOCAL_CS["a",UNIT["foot",0.3]])"));  // heights need not be in feet there
    CHECK(UNIT_OF("Vector Unit Flow", TimeKind::Maximum, true, true) == "ft2/s");
    CHECK(UNIT_OF("Depth", TimeKind::Duration, true, false) == "h");
}

TEST_CASE("a name that the run has read or written is not used again") {
    INITIALISE_FILES();
    readSwitches({"-flt"});
    NOTE_FILE_USED("x_h_Max_g005.hdr");    // a companion counts as much as the grid
    NOTE_FILE_USED("X_H_MAX_G005_2.FLT");  // letter case does not tell files apart on Windows
    std::string name;
    const std::string said = consoleOf([&] {
        name = OUTPUT_NAME(labelled("x_h", TIME_MAXIMUM, 5.0), {".flt", ".hdr", ".prj"});
    });
    CHECK(name == "x_h_Max_g005_3");
    CHECK(said.starts_with("WARNING - x_h_Max_g005.flt has been read or written"));
}
