#include "inputs/output_types.h"

#include "testing.h"

namespace {
std::string nameOf(const OutputType* row) { return row == nullptr ? "none" : std::string(row->name); }
}  // namespace

TEST_CASE("Output types keep their numbers") {
    const auto types = OUTPUT_TYPES();
    REQUIRE(types.size() == 60);
    const std::tuple<std::size_t, const char*, const char*> rows[] = {
        {1, "Water Level", "h"},  {14, "Mass Error %", "ME%"}, {24, "Stream Power", "SP"}, {28, "ZUK1", "ZUK1"},
        {29, "029", "029"},       {40, "UD10", "UD10"},        {50, "Z9", "Z9"},           {51, "Vector Velocity", "v"},
        {53, "Vector Wind", "W"}, {60, "060", "n/a"},
    };
    for (const auto& [number, name, code] : rows) {
        CHECK(types[number - 1].name == name);
        CHECK(types[number - 1].code == code);
    }
}

TEST_CASE("A -type text is a code of which the last row wins, else searched for as it is") {
    const std::tuple<const char*, const char*> rows[] = {
        {"h", "Water Level"}, {"V", "Vector Velocity"},      {"q", "Vector Unit Flow"},
        {"zh", "Bathymetry"}, {" evis ", "Viscosity Coeff"}, {"n2", "Manning n2"},  // not "n", which it begins with
    };
    for (const auto& [text, name] : rows) CHECK(consoleOf([&] { CHECK(DATASET_NAME_OF_TYPE(text) == name); }) == "");
    CHECK(consoleOf([] { CHECK(DATASET_NAME_OF_TYPE("XYZ") == "XYZ"); }) ==
          "WARNING - Unable to match data output type specified with output name.\n"
          "For example data type \"h\" is stored in .XMDF file as \"Water Level\"\n"
          "Searching for data stored in .XMDF file as: XYZ\n");
}

TEST_CASE("The tag of a .dat name picks the row of the file's own sort") {
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"V", true, "Vector Velocity"}, {"V", false, "Velocity"}, {"Q", false, "Unit Flow"},
        {"H", false, "Water Level"},    {"d", true, "none"},      {"W", false, "none"},
        {"run1", false, "none"},        {"", false, "none"},
    };
    for (const auto& [tag, vector, name] : rows) CHECK(nameOf(OUTPUT_TYPE_OF_TAG(tag, vector)) == name);
    CHECK(nameOf(OUTPUT_TYPE_OF_NAME("vector velocity")) == "Vector Velocity");
    CHECK(nameOf(OUTPUT_TYPE_OF_NAME("Vector")) == "none");
}

TEST_CASE("Quantities are known by code and by name") {
    for (const char* type : {"h", "H", "water level"}) CHECK(IS_WATER_LEVEL(type));
    for (const char* type : {"v", "Velocity", "VECTOR VELOCITY"}) CHECK(IS_VELOCITY(type));
    for (const char* type : {"d", "depth"}) CHECK(IS_DEPTH(type));
    for (const char* type : {"", "haz", "vx", "Water"})
        CHECK_FALSE((IS_WATER_LEVEL(type) || IS_VELOCITY(type) || IS_DEPTH(type)));
}
