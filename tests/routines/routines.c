// The routines called from C: each at least once, at its edges, and with arguments that are not there.
#include <limits.h>
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <wchar.h>

#include "vorant_routines.h"

static int failures = 0;
#define CHECK(condition) \
    if (!(condition)) ++failures, printf("%s:%d: %s\n", __FILE__, __LINE__, #condition)
#define ROWS(table) (sizeof(table) / sizeof *(table))

#define I(value) (&(int32_t){value})
#define F(value) (&(float){value})
#define D(value) (&(double){value})
#define T(text) (text), I((int32_t)strlen(text))

enum { WIDTH = 12 };

// The result field holds `expected`, blank-padded, and nothing was written behind it.
static int holds(const char* field, const char* expected) {
    char padded[WIDTH + 1];
    memset(padded, ' ', WIDTH);
    padded[WIDTH] = '|';
    memcpy(padded, expected, strlen(expected));
    return memcmp(field, padded, sizeof padded) == 0;
}

static void texts(void) {
    static const struct {
        int32_t (*routine)(const char*, const int32_t*, char*, const int32_t*);
        const char *text, *expected;
        int32_t whole;
    } rows[] = {
        {UPPERCASE, "a\xC3\xA4z{ ", "A\xC3\xA4Z{", 5},    // not a letter of ASCII
        {LOWERCASE, "Ab0123456789", "ab0123456789", 12},  // fits to the last character
        {TRIMF, " ab \t ", " ab", 3},
        {REMOVEQUOTES, "\"a\" b", "a b", 3},
        {REMOVESPACES, " a b ", "ab", 2},
        {ALPHANUMERICONLY, "_a-Z[9`@", "aZ9", 3},
        {ALPHANUMERICONLY, "0123456789abcd", "0123456789ab", 14},  // cut
        {FILEEXT, "C:\\run.v2\\x", "", 0},
        {FILEEXT, "X.2DM   ", ".2dm", 4},
        {FILEEXTKC, "a.b/X.2DM ", ".2DM", 4},
        {FILENAMEPATH, "r\\x_h.dat ", "r\\x_h", 5},
        {FILENAMEPATHNO_, "a_b\\x.dat", "a_b\\x", 5},
        {FILENAME, "a.b/x_h.dat", "x_h", 3},
        {FILENAMENO_, "a.b/x_h.dat", "x", 1},
        {FILENAMEEXT, "a.b/x_h ", "x_h", 3},
        {FILEFOLDERPATH, "a.b/x_h", "a.b/", 4},
    };
    for (size_t i = 0; i < ROWS(rows); ++i) {
        char out[] = "............|";
        const int32_t whole = rows[i].routine(T(rows[i].text), out, I(WIDTH));
        if (whole != rows[i].whole || !holds(out, rows[i].expected))
            ++failures, printf("row %zu: %d %s\n", i, whole, out);
        CHECK(rows[i].routine(NULL, I(5), out, I(WIDTH)) == 0 && holds(out, ""));
        CHECK(rows[i].routine("abc", I(INT_MIN), out, NULL) == 0 && holds(out, ""));
        CHECK(rows[i].routine(T(rows[i].text), NULL, I(WIDTH)) == rows[i].whole);
    }
    char out[] = "............|";
    CHECK(REPLACE(T("a-b-c"), T("-"), T(" + "), out, I(WIDTH)) == 7 && holds(out, "a + b-c"));
    CHECK(REPLACEALL(T("aaa"), T("a"), T("aa"), out, I(WIDTH)) == 6 && holds(out, "aaaaaa"));
    CHECK(REPLACEALL(T("a b"), T(""), T("x"), out, I(WIDTH)) == 3 && holds(out, "a b"));
    CHECK(REPLACEALL(T("a b"), T(" "), NULL, NULL, out, I(WIDTH)) == 2 && holds(out, "ab"));
    CHECK(LOWERCASE(out, I(-1), out, I(3)) == 0 && holds(out, ""));
    CHECK(UPPERCASE(memcpy(out, "ab", 2), I(2), out, I(WIDTH)) == 2 && holds(out, "AB"));  // in place
}

static void comparisons(void) {
    char rest[] = "............|";
    CHECK(ASAME(T("asc"), T("\"ASC\"  ")) == -1 && ASAMECS(T("asc"), T("ASC")) == 0);
    CHECK(ASAME(NULL, I(9), T("  ")) == -1 && ASAMECS(T("a"), NULL, NULL) == 0);
    CHECK(FLAGEXISTS(T("Bed Level"), T(" LEV ")) == -1 && FLAGEXISTS(T("Bed"), T("level")) == 0);
    CHECK(FLAGEXISTSRET(T("x=5 x=6"), T("X="), rest, I(WIDTH)) == -1 && holds(rest, "5 x=6"));
    CHECK(FLAGEXISTSRET(T("x=5"), T("y"), rest, I(WIDTH)) == 0 && holds(rest, ""));
    CHECK(POSITIVEINTEGERNUMBER(T(" 2147483647 ")) == -1 && POSITIVEINTEGERNUMBER(T("2147483648")) == 0);
    CHECK(POSITIVEINTEGERNUMBER(NULL, I(1)) == 0 && BLANK(NULL, NULL) == -1 && BLANK(T(" \t")) == -1);
    CHECK(BLANK(T(" .")) == 0);
    memcpy(rest, "  12 # a ! b", WIDTH);
    CHECK(COMMENTLINE(rest, I(WIDTH)) == 0 && holds(rest, "12"));
    memcpy(rest, "   ! note   ", WIDTH);
    CHECK(COMMENTLINE(rest, I(WIDTH)) == -1 && holds(rest, "! note") && COMMENTLINE(NULL, I(3)) == -1);
}

static void numbers(void) {
    char out[] = "............|";
    CHECK(AINTEGER(I(INT32_MIN), out, I(WIDTH)) == 11 && holds(out, "-2147483648"));
    CHECK(AINTEGER8(&(int64_t){INT64_MAX}, out, I(WIDTH)) == 19 && holds(out, "************"));  // not another number
    CHECK(AINTEGER8(NULL, out, I(WIDTH)) == 1 && holds(out, "0"));
    CHECK(AREAL(F(0.01F), out, I(WIDTH)) == 4 && holds(out, "0.01"));
    CHECK(AREAL(F(1500.0F), out, I(WIDTH)) == 5 && holds(out, "1500."));
    CHECK(AREAL8(D(0.1234567891), out, I(WIDTH)) == 12 && holds(out, "0.1234567891"));
    CHECK(AREAL8(D(1e300), NULL, I(WIDTH)) == 302);
    CHECK(AREAL8(D(-HUGE_VAL), out, I(WIDTH)) == 4 && holds(out, "-inf"));
    CHECK(AREALD(F(2.5F), I(-7), out, I(WIDTH)) == 2 && holds(out, "2."));
    CHECK(AREALD(F(2.5F), I(2), out, I(WIDTH)) == 4 && holds(out, "2.50"));
    CHECK(AREALD8(D(-1e308), I(INT_MAX), out, I(WIDTH)) == 331 && holds(out, "************"));
}

// Letters that no code page has together: names are UTF-8 on every system.
#define LETTERS "\xC3\xB6\xE5\xA4\xA7"

static FILE* create(const char* name) {
#ifdef _WIN32
    wchar_t wide[1000];
    swprintf(wide, ROWS(wide), L"%.*hs\u00F6\u5927", (int)(strlen(name) - strlen(LETTERS)), name);
    return _wfopen(wide, L"wb");
#else
    return fopen(name, "wb");
#endif
}

static void textFile(const char* scratch) {
    char line[] = "............|", name[1000];
    snprintf(name, sizeof name, "%s" LETTERS, scratch);
    FILE* file = create(name);
    fputs(" \tfirst\r\n\nlonger than twelve\n", file);
    for (int i = 0; i < 100000; ++i) fputc(' ', file);
    fputs("x\nlast", file);  // what stands beyond 100000 characters is skipped, and the last line has no end
    fclose(file);
    const int32_t handle = OPENTEXT(T(name));
    CHECK(handle == 1 && OPENTEXT(T(name)) == 2 && CLOSETEXT(I(2)) == -1);
    static const char* const expected[] = {"first", "", "longer than ", "", "last"};
    for (size_t i = 0; i < ROWS(expected); ++i)
        CHECK(READLINE(&handle, line, I(WIDTH)) == 0 && holds(line, expected[i]));
    CHECK(READLINE(&handle, line, I(WIDTH)) == -1 && holds(line, ""));
    CHECK(CLOSETEXT(&handle) == -1 && CLOSETEXT(&handle) == 0);
    static const int32_t bad[] = {0, -1, 1, 1001, INT_MIN, INT_MAX};
    for (size_t i = 0; i < ROWS(bad); ++i) CHECK(READLINE(&bad[i], line, I(WIDTH)) == 1);
    CHECK(OPENTEXT(T("no such file")) == 0 && OPENTEXT(T("/")) == 0 && OPENTEXT(NULL, NULL) == 0);
#ifdef __linux__
    CHECK(READLINE(I(OPENTEXT(T("/proc/self/mem"))), line, I(WIDTH)) == 1);  // opens, and fails when it is read
#endif
}

static void lines(void) {
    const float nan = NAN;
    float x = 7, y = 8;
    double wideX = 7, wideY = 8;
    CHECK(DISTANCE(F(5), F(5), F(2), F(1)) == 5 && DISTANCE(NULL, NULL, F(5e-7F), NULL) == 0);
    CHECK(DISTANCE_8(D(512000), D(6250000), D(512000), D(6250000.25)) == 0.25F);
    CHECK(DISTANCE_8(D(0), D(0), D(5e-7), D(0)) == 0 && DISTANCE_8(D(0), D(0), D(2e-6), D(0)) == 2e-6F);
    CHECK(SAME_POINT(F(1), F(1), F(1.4375F), F(0.5625F), F(0.5F)) == -1);  // 0.62 along the diagonal: no circle
    CHECK(SAME_POINT(F(0), F(0), F(1), F(0), F(1)) == 0 && SAME_POINT(F(0), F(0), F(1), F(0), F(1.5F)) == -1);
    CHECK(SAME_POINT_8(D(0), D(0), D(0), D(1), D(1.25)) == -1 && SAME_POINT(&nan, NULL, NULL, NULL, F(1)) == 0);
    CHECK(SAME_SIDE(F(0), F(0), F(2), F(0), F(0), F(1), F(0), F(3)) == 12);
    CHECK(SAME_SIDE_8(D(0), D(0), D(2), D(0), D(0), D(-1), D(0), D(3)) == -12);
    CHECK(INTERSECT_POINT(F(0), F(0), F(1), F(2), F(3), F(6)) == -1);
    CHECK(INTERSECT_POINT(F(0), F(0), F(1), F(2), F(6), F(3)) == 0);
    CHECK(INTERSECT_LINE(F(0), F(0), F(1), F(0), F(1), F(0), F(5), F(5)) == -1);
    CHECK(INTERSECT_LINE_8(D(0), D(0), D(1), D(0), D(2), D(-1), D(2), D(1)) == 0);
    CHECK(INTERSECT_LINE_V2(F(0), F(0), F(2), F(0), F(1), F(-1), F(1), F(1)) == 3);
    CHECK(INTERSECT_LINE_V2(F(0), F(0), F(2), F(0), F(0), F(-1), F(0), F(1)) == 2);  // at the first one's start
    CHECK(INTERSECT_LINE_V2_8(D(0), D(0), D(2), D(0), D(5), D(0), D(9), D(0)) == -1);
    CHECK(INTERSECTION_POINT(F(0), F(0), F(1), F(1), F(2), F(2), F(3), F(3), &x, &y) == 0 && x == 7 && y == 8);
    CHECK(INTERSECTION_POINT(F(0), F(0), F(1), F(1), F(4), F(0), F(4), F(9), &x, NULL) == -1 && x == 4 && y == 8);
    CHECK(INTERSECTION_POINT_8(D(0), D(6), D(6), D(0), D(0), D(0), D(1), D(2), &wideX, &wideY) == -1);
    CHECK(wideX == 2 && wideY == 4);
    CHECK(INTERSECTION_POINT_8(D(3), D(0), D(3), D(1), D(0), D(1), D(1), D(3), &wideX, &wideY) == -1 && wideY == 7);
    CHECK(INTERSECTION_POINT(F(3), F(0), F(3), F(1), F(5), F(0), F(5), F(1), &x, &y) == 0);  // both vertical
    CHECK(ANGLE2D(D(0), D(0), D(1), D(0), D(0), D(0), D(-1), D(1)) == 135);
    CHECK(ANGLE2D(D(0), D(0), D(0), D(1), D(0), D(0), D(1), D(0)) == 0);
    CHECK(fabs(ANGLE2D(D(0), D(0), D(-5), D(1), D(0), D(0), D(-5), D(-1)) - 22.619865) < 1e-4);  // not 337.38
    CHECK(VECTOR_MAGNITUDE(F(3), F(-4)) == 5 && VECTOR_MAGNITUDE(F(1e-6F), NULL) == 0);
}

static void polygons(void) {
    const float xs[] = {0, 9, 9, 0, 0, 9, 3, 6, 6, 3, 3, 6}, ys[] = {0, 0, 9, 9, 0, 0, 3, 3, 6, 6, 3, 3};
    const double wideX[] = {0, 9, 9, 0, 0, 9}, wideY[] = {0, 0, 5, 5, 0, 0};
    const int32_t ends[] = {5, 11};
    float value = 1, values[] = {0, 0, 4, 4}, u[2] = {0}, v[2] = {0};
    CHECK(INSIDE_POLYGON(F(2), F(5), xs, ys, I(12), F(0), ends, I(2)) == -1);
    CHECK(INSIDE_POLYGON(F(4), F(5), xs, ys, I(12), F(0), ends, I(2)) == 0);  // in the hole
    CHECK(INSIDE_POLYGON(F(2), F(5), xs, ys, I(12), F(0), ends, I(1)) == 0);  // one part ends too early
    CHECK(INSIDE_POLYGON(F(2), F(5), xs, ys, I(-1), F(0), NULL, I(9)) == 0);
    CHECK(INSIDE_POLYGON_8(D(8), D(4), wideX, wideY, I(6), D(0), ends, I(1)) == -1);
    CHECK(INSIDE_POLYGON_8(D(8), D(4), NULL, wideY, I(6), D(0), ends, I(1)) == 0);
    CHECK(INTERPOLATE_ELEMENT_8(D(4.5), D(2.5), wideX, wideY, values, I(4), D(0), &value) == -1 && value == 2);
    CHECK(INTERPOLATE_ELEMENT_8(D(4.5), D(9), wideX, wideY, values, I(4), D(0), &value) == 0 && value == -99999);
    CHECK(INTERPOLATE_ELEMENT_8(D(8), D(1), wideX, wideY, values, I(5), D(0), NULL) == 0);
    const double eastNorth[] = {500003, 6250004};
    GEO_SHIFT(eastNorth, eastNorth + 1, I(1), D(500000), D(6250000), D(90), u, v);
    CHECK(fabsf(u[0] - 4) < 1e-5F && fabsf(v[0] + 3) < 1e-5F && u[1] == 0 && v[1] == 0);
    GEO_SHIFT(eastNorth, NULL, I(1), NULL, NULL, NULL, u, v);
}

static void triangles(void) {
    const float x[] = {0, 4, 0}, y[] = {0, 0, 4}, f[] = {0, 4, 8};  // f = x + 2 y
    const float flatX[] = {0, 0, 4}, flatY[] = {0, 0, 0}, flatF[] = {2, 4, 7};
    const double wideX[] = {0, 4, 0}, wideY[] = {0, 0, 4};
    float value = 1;
    CHECK(INTERPOLATE_TRIANGLE(F(1), F(1), x, y, f, &value) == -1 && fabsf(value - 3) < 1e-5F);
    CHECK(INTERPOLATE_TRIANGLE(F(1), F(4), x, y, f, &value) == 0 && value == -99999);  // C-P runs along A-B
    CHECK(INTERPOLATE_TRIANGLE(F(2), F(0), flatX, flatY, flatF, &value) == -1 && value == 5);
    CHECK(INTERPOLATE_TRIANGLE_NO_CHECKS(F(2), F(0), flatX, flatY, flatF, &value) == -1 && isnan(value));
    CHECK(INTERPOLATE_TRIANGLE_8(D(2), D(1), wideX, wideY, f, &value) == -1 && fabsf(value - 4) < 1e-5F);
    CHECK(INTERPOLATE_TRIANGLE_8(D(2), D(1), wideX, wideY, NULL, &value) == 0 && value == -99999);
    CHECK(INTERPOLATE_ELEMENT_8(D(1), D(2), wideX, wideY, f, I(3), D(0), &value) == -1 && fabsf(value - 5) < 1e-5F);
}

static void subGrid(void) {
    const float xs[] = {12, 37, 15}, ys[] = {-3, 8, 4}, nan[] = {NAN, 1e30F};
    int32_t c1, r1, c2, r2;
    float west, south, east, north;
    SET_SUB_GRID_AREA(xs, ys, I(3), F(10), I(3), I(5), &c1, &r1, &c2, &r2, &west, &south, &east, &north);
    CHECK(c1 == 2 && r1 == 1 && c2 == 3 && r2 == 1 && west == 12 && south == -3 && east == 37 && north == 8);
    SET_SUB_GRID_AREA(nan, nan, I(2), NULL, I(3), I(5), NULL, NULL, &c2, &r2, NULL, NULL, NULL, NULL);
    CHECK(c2 <= 3 && r2 <= 5);
    SET_SUB_GRID_AREA(xs, ys, I(-5), F(10), I(3), I(5), &c1, &r1, &c2, &r2, &west, &south, &east, &north);
    CHECK(c1 == 1 && r1 == 1 && c2 == 0 && r2 == 0 && west == 0 && north == 0);
}

static void sections(void) {
    float area = 1, width = 1, perimeter = 1, area2 = 1, width2 = 1, perimeter2 = 1;
    CHECK(CIRCLE_WIDTH(F(5), F(2)) == 8 && CIRCLE_WIDTH(F(2), F(4)) == 0 && CIRCLE_WIDTH(NULL, NULL) == 0);
    HYD_PARAM(F(0), F(0), F(4), F(3), F(5), F(1), &area, &width, &perimeter);
    CHECK(area == 14 && width == 4 && perimeter == 5);
    HYD_PARAM(F(0), F(0), F(4), F(3), F(5), NULL, &area, NULL, &perimeter);
    CHECK(area == 0 && width == 4 && perimeter == 0);
    HYD_PARAM2(F(0), F(6), F(8), F(0), F(1.5F), F(1), &area, &width, &perimeter, &area2, &width2, &perimeter2);
    CHECK(area == 0 && width == 0 && perimeter == 0 && area2 == 1.5F && width2 == 2 && perimeter2 == 2.5F);
}

// The argument names a scratch file.
int main(int count, char** arguments) {
    if (count != 2) return 2;
    texts();
    comparisons();
    numbers();
    textFile(arguments[1]);
    lines();
    polygons();
    triangles();
    subGrid();
    sections();
    printf("%d failures\n", failures);
    return failures == 0 ? 0 : 1;
}
