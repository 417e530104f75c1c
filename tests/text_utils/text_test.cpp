#include "text_utils/text.h"

#include "testing.h"
#include "text_utils/paths.h"

TEST_CASE("ASAME looks past quotes, outer blanks and letter case, and past nothing else") {
    const std::tuple<const char*, const char*, bool, bool> rows[] = {
        {"asc", "\"ASC\" ", true, false},
        {"\" asc\"", "asc", true, true},  // blanks inside the quotes are outer ones once the quotes are gone
        {"asc", "asci", false, false},    // a prefix is not the whole
        {"a b", "ab", false, false},
        {"", "\"\"", true, true},
    };
    for (const auto& [a, b, same, sameWithCase] : rows) CHECK((ASAME(a, b) == same && ASAMECS(a, b) == sameWithCase));
}

TEST_CASE("FLAGEXISTSRET finds a text anywhere and returns what follows") {
    const std::tuple<const char*, const char*, bool, const char*> rows[] = {
        {"  Type \"RASTER\" x", "type \"raster\"  ", true, " x"},
        {"aabab", "AB", true, "ab"},  // the first match
        {"short", "shorter", false, ""},
        {"text", " ", true, "text"},  // a blank stands everywhere
        {"", "x", false, ""},
    };
    for (const auto& [a, b, found, expected] : rows) {
        std::string rest = "left over";
        CHECK(FLAGEXISTS(a, b) == found);
        CHECK(FLAGEXISTSRET(a, b, rest) == found);
        CHECK(rest == expected);
    }
}

TEST_CASE("COMMENTLINE keeps the data in front of the earlier comment sign") {
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"  ! note", true, "! note"},       {"\t# note", true, "# note"},         {"   ", true, ""},
        {"12 # note ! more", false, "12 "}, {" 12 ! note # more ", false, "12 "}, {"12  ", false, "12"},
    };
    for (const auto& [whole, comment, left] : rows) {
        std::string line = whole;
        CHECK(COMMENTLINE(line) == comment);
        CHECK(line == left);
    }
}

// Name, extension, path without it, without what follows the first underscore of the name too, folder, name.
TEST_CASE("File names come apart at the last dot and separator") {
    for (const Row& r : rowsOf(R"(
results\x_h.DAT | .dat | results\x_h | results\x | results\ | x_h.DAT
# the underscore and the dot of a folder stay
a_b/x.dat | .dat | a_b/x | a_b/x | a_b/ | x.dat
C:\run.v2\x | | C:\run.v2\x | C:\run.v2\x | C:\run.v2\ | x
# an extension only stays whole
.2dm | .2dm | .2dm | .2dm | | .2dm
_h.dat | .dat | _h | _h | | _h.dat
a_b_V.x.dat | .dat | a_b_V.x | a_b | | a_b_V.x.dat
)")) {
        const std::array parts = {FILEEXT(r[0]), FILENAMEPATH(r[0]), FILENAMEPATHNO_(r[0]), FILEFOLDERPATH(r[0]),
                                  FILENAMEEXT(r[0])};
        for (std::size_t i = 0; i < parts.size(); ++i) CHECK(parts[i] == r[i + 1]);
    }
    CHECK((FILENAMEEXT("x.dat  ") == "x.dat  " && FILEEXT("x.dat  ") == ".dat" && FILENAMEPATH("x.dat  ") == "x"));
}
