#include "gis/attributes.h"

#include "gis/code_page.h"
#include "gis/coord_sys.h"
#include "gis/data_line.h"
#include "gis/fixed_text.h"
#include "testing.h"

#include <cstdio>
#include <cstring>

namespace {

std::string valuesOf(std::string_view line, char delimiter = ',') {
    DataLine values(line, delimiter);
    DataValue value;
    std::string all;
    while (values.NEXT(value)) all += (value.quoted ? "T<" : "<") + std::string(value.text) + ">";
    return all;
}

std::string cleanedNames(std::vector<std::string> names, std::size_t width) {
    std::vector<GisAttribute> attributes;
    for (const auto& name : names) attributes.push_back({name, "Integer"});
    std::string all;
    for (const auto& name : CLEANED_NAMES(attributes, width)) all += name + " ";
    return all;
}

}  // namespace

TEST_CASE("PUT_FIXED writes what printf writes") {
    std::vector<double> values = listOf(
        "0 -0 0.5 1.5 2.5 -0.0000004 0.0000005 0.0000015 0.0078125 2.0078125 1e15 9.99999999e8 0.9999995 "
        "999999999.9999999 1234567.0000005 -6250000.0234375 1e300 4503599627370497.5 1.7976931348623157e308");
    values.push_back(5e-324);
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 30000; ++i) {
        values.push_back(std::ldexp(static_cast<double>(random()), -static_cast<int>(random() % 70)));  // every size
        // ties in binary, short in decimal
        values.push_back(static_cast<double>(random() % 2000000001) / 2000.0);
    }
    for (const double value : values)
        for (const int decimals : {0, 3, 6}) {
            std::array<char, LONGEST_FIXED> expected{};
            std::array<char, LONGEST_FIXED> written{};
            const int length = std::snprintf(expected.data(), expected.size(), "%.*f", decimals, value);
            const char* end = PUT_FIXED(written.data(), value, decimals);
            if (end - written.data() != length || std::strcmp(written.data(), expected.data()) != 0)
                FAIL(expected.data() << " " << written.data());
        }
}

TEST_CASE("numbers that fill their field are written wider behind a blank") {
    const std::pair<double, const char*> rows[] = {
        {1234.5, "     1234.500000"},
        {99999999.0, " 99999999.000000"},
        {100000000.0, " 100000000.000000"},       // 16 characters: would touch its neighbour
        {99999999.9999999, " 100000000.000000"},  // reaches the limit by rounding
        {-9999999.0, " -9999999.000000"},
        {-10000000.0, " -10000000.000000"},
    };
    for (const auto& [value, text] : rows) {
        std::array<char, LONGEST_FIXED + 1> field{};
        CHECK(std::string(field.data(), PUT_FIXED_FIELD(field.data(), value, 16, 6)) == text);
    }
}

TEST_CASE("a data line splits at commas outside quotes") {
    const std::tuple<const char*, std::string> rows[] = {
        {R"(1,"a, b",,"say ""hi""",2.5)", R"(<1>T<a, b><>T<say "hi"><2.5>)"},
        {"", "<>"},
        {",", "<><>"},  // the blank value behind the last comma
        {R"( 1 , "x" ,"")", "<1>T<x>T<>"},
        {R"("open, to the end)", "T<open, to the end>"},  // never closed
        {R"(5'6",7)", R"(<5'6"><7>)"},                    // a quote inside a value is no opening quote
        {R"("""",1)", R"(T<"><1>)"},
        {R"("a" "junk,1)", "T<a><1>"},
        {"1\t\t\"a\tb\"", "<1><>T<a\tb>"},  // the tab separates and is no blank
    };
    for (const auto& [line, values] : rows) {
        const char delimiter = holds(line, "\t") ? '\t' : ',';
        CHECK(valuesOf(line, delimiter) == values);
        CHECK_MESSAGE(VALUE_COUNT(line, delimiter) == static_cast<std::size_t>(countOf(values, "<")), line);
    }
    std::string line;
    ADD_TEXT(line, "say \"hi\",\nbye");
    ADD_INTEGER(line, -5);
    ADD_REAL(line, 2.5, 2);
    ADD_TEXT(line, "");
    CHECK(line == R"("say ""hi"", bye",-5,2.50,"")");
    CHECK(valuesOf(line) == R"(T<say "hi", bye><-5><2.50>T<>)");
}

TEST_CASE("attribute names are cleaned, cut and unique") {
    const std::tuple<std::string_view, std::string_view> rows[] = {{"Water Level", "Water_Level"}, {"2D", "_2D"},
                                                                   {" Vx (m/s) ", "Vx__m_s_"},     {"", "_"},
                                                                   {"H\xC3\xB6he", "H__he"},       {"A_1", "A_1"}};
    for (const auto& [name, clean] : rows) CHECK(CLEANATTRIBUTENAME(name) == clean);
    CHECK(cleanedNames({"Elevation", "ELEVATION", "Elevation"}, 31) == "Elevation ELEVATION2 Elevation3 ");
    CHECK(cleanedNames({"X_component_of_V", "X_component_of_Q"}, 11) == "X_component X_componen2 ");
    CHECK(cleanedNames({"V2", "V", "V"}, 11) == "V2 V V3 ");  // the number itself may be taken
}

TEST_CASE("column types are taken apart") {
    for (const Row& row : rowsOf(R"(
Char(254) | CHAR | 254
decimal ( 10, 4 ) | DECIMAL | 10 | 4
Integer | INTEGER
 |
(5) |
Char( |
Char() |
Char(x) |
Char(-1) |
Char(40000) |
Char(5 |
Decimal(1,2,3) |
Char(5)x |
)")) {
        CAPTURE(row[0]);
        const auto type = COLUMN_TYPE(row[0]);
        CHECK(type.has_value() != row[1].empty());
        if (!type) continue;
        CHECK((type->word == row[1] && type->width == wholeOf(row[2]) && type->decimals == wholeOf(row[3])));
    }
    CHECK(COLUMN_TYPE(" Logical ")->word == "LOGICAL");
}

TEST_CASE("text changes between UTF-8 and code page 1252") {
    const std::tuple<std::string_view, std::string_view, bool> rows[] = {
        {"Caf\xC3\xA9 5\xC2\xB0", "Caf\xE9 5\xB0", true},
        {"\xE2\x82\xAC\xE2\x80\x93", "\x80\x96", true},  // the euro and the en dash stand in the page's own rows
        {"\xC2\x81", "\x81", true},                      // an unused byte
        {"\xE6\xB0\xB4 x", "? x", false},                // one "?" for a character of three bytes
    };
    for (const auto& [utf8, expected, whole] : rows) {
        std::string page;
        std::string back;
        CHECK(ADD_AS_CODE_PAGE(page, utf8) == whole);
        CHECK(page == expected);
        ADD_AS_UTF8(back, page);
        if (whole) CHECK(back == utf8);
    }
    std::string page;
    CHECK(ADD_AS_CODE_PAGE(page, "Stra\337e \342\202"));  // bytes that are no UTF-8 are the page's own
    CHECK(page == "Stra\337e \342\202");
}

TEST_CASE("a NonEarth line gets bounds that hold the mesh") {
    const std::string line = "CoordSys NonEarth Units \"m\"";
    const std::tuple<MapExtent, const char*> rows[] = {
        {MapExtent{}, " Bounds(-9999999, -9999999) (9999999, 9999999)"},
        {{300000, 6250000, 301000, 6252000}, " Bounds(-9999999, -9999999) (9999999, 9999999)"},
        {{9999000.5, 0, 10000000.25, 10}, " Bounds(-9999999, -9999999) (10001000, 9999999)"},  // 999.75 wide
        {{-2e7, -5, -1e7, 1e7}, " Bounds(-30000000, -10000010) (9999999, 20000005)"},
    };
    for (const auto& [extent, bounds] : rows) CHECK(WITH_BOUNDS(line, "", extent) == line + bounds);
    CHECK(WITH_BOUNDS(line, " Bounds(0, 0) (5, 5)", {}) == line + " Bounds(0, 0) (5, 5)");
    const std::string given = "CoordSys NonEarth Units \"m\" Bounds (0, 0) (1, 1)";
    CHECK(WITH_BOUNDS(given, "", {-2e7, 0, 2e7, 0}) == given);
    CHECK(WITH_BOUNDS("CoordSys Earth Projection 1, 104", "", {-2e7, 0, 2e7, 0}) == "CoordSys Earth Projection 1, 104");
    CHECK(BOUNDS_OF(given) == "Bounds (0, 0) (1, 1)");
}
