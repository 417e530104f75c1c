#include "text_utils/numbers.h"

#include "testing.h"
#include "text_utils/free_form.h"

namespace {

/// "value text value text ...": a row of each two.
std::vector<Row> pairsOf(const std::string& text) {
    std::vector<Row> rows;
    const std::vector<std::string> words = wordsOf(text);
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) rows.push_back({words[i], words[i + 1]});
    return rows;
}

}  // namespace

TEST_CASE("AREAL takes its decimals from the magnitude, with the limits themselves in the upper band") {
    // 0.01 has five decimals, so has what follows; 1234.5 is rounded half to even in binary
    for (const Row& row : pairsOf("2 2. 1500 1500. 0.25 0.25 0 0. 0.0099999 0.01 0.01 0.01 0.0123456 0.01235 "
                                  "0.0012346 0.001235 0.123456 0.1235 -1.23456 -1.235 12.3456 12.35 123.456 123.5 "
                                  "999.96 1000. 100 100. 1234.5 1234. nan nan"))
        CHECK(AREAL(std::stof(row[0])) == row[1]);
}

TEST_CASE("AREAL8 loses one decimal per power of ten") {
    for (const Row& row : pairsOf("1500 1500. 0.1234567891234 0.1234567891 1.23456789123 1.234567891 "
                                  "12.3456789123 12.34567891 512345.678912 512345.6789 6250000.25 6250000.25 "
                                  "123456789.96 123456790. 999999999.5 999999999.5 1e9 1000000000. -2.5 -2.5 inf inf"))
        CHECK(AREAL8(std::stod(row[0])) == row[1]);
}

TEST_CASE("Fixed decimals widen and are never starred") {
    CHECK(AREALD(2.5F, 2) == "2.50");
    CHECK(AREALD8(2.5, 0) == "2.");
    CHECK(FIXED_FIELD(1.5, 8, 3) == "   1.500");
    CHECK(FIXED_FIELD(-123456.75, 8, 3) == "-123456.750");
    CHECK(AINTEGER(std::numeric_limits<std::int32_t>::min()) == "-2147483648");
    CHECK(AINTEGER8(std::numeric_limits<std::int64_t>::max()) == "9223372036854775807");
}

TEST_CASE("POSITIVEINTEGERNUMBER takes digits only") {
    for (const char* text : {"5", " 12 ", "0", "007", "2147483647"}) CHECK(POSITIVEINTEGERNUMBER(text));
    for (const char* text : {"", " ", "-1", "-0", "+5", "1.0", "5x", "1 2", "2147483648"})
        CHECK_FALSE(POSITIVEINTEGERNUMBER(text));
}

TEST_CASE("FreeForm reads every form of a real, and nothing that is none") {
    // "~" a tab, "$" a carriage return; the last but one has digits beyond what is exact
    for (const Row& row : pairsOf("1. 1 .5 0.5 +2 2 -.5 -0.5 1d3 1000 1.5D+003 1500 1.0E-003 0.001 1e-400 0 -1D-400 0 "
                                  "~,7,8 7 3$ 3 6250000.4321 6250000.4321 .123456789012345 0.123456789012345 "
                                  "9007199254740993 9007199254740992 9007199254740993.1 9007199254740994")) {
        CAPTURE(row[0]);
        double value = -1.0;
        CHECK(FreeForm(replaced(replaced(row[0], "~", "\t"), "$", "\r")).NEXT_REAL(value) == FreeForm::Read::Value);
        CHECK(value == std::stod(row[1]));
    }
    for (const char* text : {"1x", "1e400", "1D400", "+-1", "++1", "+", "1e5d2", "0x10", "--1", "1..2", ".", "1.5."}) {
        CAPTURE(text);
        double value = 0.0;
        CHECK(FreeForm(text).NEXT_REAL(value) == FreeForm::Read::Bad);
    }
    float narrow = -1.0F;
    CHECK(FreeForm("1e39").NEXT_REAL(narrow) == FreeForm::Read::Bad);  // fits 64 bits only
    CHECK(FreeForm("1e-60").NEXT_REAL(narrow) == FreeForm::Read::Value);
    CHECK(narrow == 0.0F);
    CHECK(FreeForm("1.00000005960464478").NEXT_REAL(narrow) == FreeForm::Read::Value);
    CHECK(narrow == 1.00000012F);  // just above the middle: rounding by way of 64 bits would give 1
    CHECK(FreeForm("16777217.").NEXT_REAL(narrow) == FreeForm::Read::Value);
    CHECK(narrow == 16777216.0F);
}

TEST_CASE("FreeForm walks a line of mixed values") {
    FreeForm line("  12,-3 \"Lower Reach\",'x y' word 99999999999 4.0 ");
    std::int32_t whole = 0;
    std::string_view text;
    CHECK(line.NEXT_INTEGER(whole) == FreeForm::Read::Value);
    CHECK(line.NEXT_INTEGER(whole) == FreeForm::Read::Value);
    CHECK(whole == -3);
    for (const char* expected : {"Lower Reach", "x y", "word"}) {
        CHECK(line.NEXT_TEXT(text) == FreeForm::Read::Value);
        CHECK(text == expected);
    }
    CHECK(line.NEXT_INTEGER(whole) == FreeForm::Read::Bad);  // beyond 32 bits
    CHECK(line.REST() == "4.0 ");
    CHECK(line.NEXT_INTEGER(whole) == FreeForm::Read::Bad);  // a real
    CHECK(line.ENDED());
    CHECK(line.NEXT_INTEGER(whole) == FreeForm::Read::End);
    CHECK(FreeForm("\"open").NEXT_TEXT(text) == FreeForm::Read::Bad);
}
