#include "text_utils/text.h"

#include "text_utils/paths.h"

#include <doctest/doctest.h>

TEST_CASE("ASAME looks past quotes, outer blanks and letter case, and past nothing else") {
    struct {
        const char *a, *b;
        bool same, sameWithCase;
    } const rows[] = {
        {"asc", "\"ASC\" ", true, false},
        {"\" asc\"", "asc", true, true},  // blanks inside the quotes are outer ones once the quotes are gone
        {"asc", "asci", false, false},    // a prefix is not the whole
        {"a b", "ab", false, false},
        {"", "\"\"", true, true},
    };
    for (const auto& r : rows) {
        CHECK(ASAME(r.a, r.b) == r.same);
        CHECK(ASAMECS(r.a, r.b) == r.sameWithCase);
    }
}

TEST_CASE("FLAGEXISTSRET finds a text anywhere and returns what follows") {
    struct {
        const char *a, *b;
        bool found;
        const char* rest;
    } const rows[] = {
        {"  Type \"RASTER\" x", "type \"raster\"  ", true, " x"},
        {"aabab", "AB", true, "ab"},  // the first match
        {"short", "shorter", false, ""},
        {"text", " ", true, "text"},  // a blank stands everywhere
        {"", "x", false, ""},
    };
    for (const auto& r : rows) {
        std::string rest = "left over";
        CHECK(FLAGEXISTS(r.a, r.b) == r.found);
        CHECK(FLAGEXISTSRET(r.a, r.b, rest) == r.found);
        CHECK(rest == r.rest);
    }
}

TEST_CASE("COMMENTLINE keeps the data in front of the earlier comment sign") {
    struct {
        const char* line;
        bool comment;
        const char* left;
    } const rows[] = {
        {"  ! note", true, "! note"},       {"\t# note", true, "# note"},         {"   ", true, ""},
        {"12 # note ! more", false, "12 "}, {" 12 ! note # more ", false, "12 "}, {"12  ", false, "12"},
    };
    for (const auto& r : rows) {
        std::string line = r.line;
        CHECK(COMMENTLINE(line) == r.comment);
        CHECK(line == r.left);
    }
}

TEST_CASE("File names come apart at the last dot and separator") {
    struct {
        const char *name, *extension, *path, *pathNo_, *folder, *nameExt;
    } const rows[] = {
        {"results\\x_h.DAT", ".dat", "results\\x_h", "results\\x", "results\\", "x_h.DAT"},
        {"a_b/x.dat", ".dat", "a_b/x", "a_b/x", "a_b/", "x.dat"},  // the underscore of the folder stays
        {"C:\\run.v2\\x", "", "C:\\run.v2\\x", "C:\\run.v2\\x", "C:\\run.v2\\", "x"},  // so does its dot
        {".2dm", ".2dm", ".2dm", ".2dm", "", ".2dm"},                                  // an extension only stays whole
        {"_h.dat", ".dat", "_h", "_h", "", "_h.dat"},
        {"a_b_V.x.dat", ".dat", "a_b_V.x", "a_b", "", "a_b_V.x.dat"},
        {"x.dat  ", ".dat", "x", "x", "", "x.dat  "},
        {"", "", "", "", "", ""},
    };
    for (const auto& r : rows) {
        CAPTURE(r.name);
        CHECK(FILEEXT(r.name) == r.extension);
        CHECK(FILENAMEPATH(r.name) == r.path);
        CHECK(FILENAMEPATHNO_(r.name) == r.pathNo_);
        CHECK(FILEFOLDERPATH(r.name) == r.folder);
        CHECK(FILENAMEEXT(r.name) == r.nameExt);
    }
}
