// The text and geometry routines of VORANT_to_GIS for other programs, in C and in languages that can call C
// (Fortran: bind(C) and iso_c_binding; tests/routines has a program in each). Link with -lvorant_routines.
//
// Arguments   All by reference: a pointer to one value, or to the first of an array. Integers are 32 bits wide unless
//             int64_t is shown, reals 32 (float) or 64 bits (double). Vertices, parts, columns and rows count from 1.
// Texts       A pointer to the first character and, as the next argument, a reference to the length in characters.
//             No zero byte is looked for or written; trailing blanks never count. Letter case is that of ASCII only;
//             other characters (UTF-8) pass unchanged.
// Results     A text result fills the caller's text, blank-padded or cut to its length. The function returns how many
//             characters the whole result has without trailing blanks: more than the length says that it was cut. A
//             number that does not fit is not cut, which would make it another number: the text is filled with "*".
//             The result may be the same memory as an argument.
// Truth       32 bits, all set (-1) for true, 0 for false. Test the lowest bit (Fortran: btest(f(...), 0)), or for 0.
// Odd input   Nothing fails: a null text, or one of length 0 or less, is blank; a null number is 0; a null array or a
//             count below 1 is empty; a null result is not written. -99999 stands for a missing value.
// Threads     Every routine may be called from several threads at once; READLINE serves one thread per handle.
#ifndef VORANT_ROUTINES_H
#define VORANT_ROUTINES_H

#include <stdint.h>

#if defined(_WIN32) && defined(VORANT_ROUTINES_BUILD)
#define VORANT_API __declspec(dllexport)
#elif defined(_WIN32)
#define VORANT_API __declspec(dllimport)
#else
#define VORANT_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

// ---- comparing texts (truth) ----
// Equal without double quotes, leading and trailing blanks and letter case; ASAMECS with letter case.
VORANT_API int32_t ASAME(const char* a, const int32_t* aLength, const char* b, const int32_t* bLength);
VORANT_API int32_t ASAMECS(const char* a, const int32_t* aLength, const char* b, const int32_t* bLength);
// The trimmed b occurs in a, letter case ignored; a blank b occurs everywhere. `rest`: what follows it in a, or blank.
VORANT_API int32_t FLAGEXISTS(const char* a, const int32_t* aLength, const char* b, const int32_t* bLength);
VORANT_API int32_t FLAGEXISTSRET(const char* a, const int32_t* aLength, const char* b, const int32_t* bLength,
                                 char* rest, const int32_t* restLength);
// The line begins with "#" or "!", or is blank. The line is left-adjusted and loses a comment behind its data.
VORANT_API int32_t COMMENTLINE(char* line, const int32_t* length);
// Digits only, and a value that fits 32 bits. 0 counts.
VORANT_API int32_t POSITIVEINTEGERNUMBER(const char* text, const int32_t* length);
// Nothing but blanks and tabs.
VORANT_API int32_t BLANK(const char* text, const int32_t* length);

// ---- numbers to texts ----
// "-12"
VORANT_API int32_t AINTEGER(const int32_t* value, char* text, const int32_t* length);
VORANT_API int32_t AINTEGER8(const int64_t* value, char* text, const int32_t* length);
// Decimals by magnitude, without trailing zeros but with the point: 2.0 gives "2.", 0.25 "0.25". Below 0.01 six
// decimals, one fewer per power of ten, none from 1000 on; AREAL8: below 1 ten, none from 1e9 on.
VORANT_API int32_t AREAL(const float* value, char* text, const int32_t* length);
VORANT_API int32_t AREAL8(const double* value, char* text, const int32_t* length);
// Exactly `decimals` decimals (taken as 0 below 0 and as 20 above 20): 2.5 with 2 gives "2.50", with 0 "2.".
VORANT_API int32_t AREALD(const float* value, const int32_t* decimals, char* text, const int32_t* length);
VORANT_API int32_t AREALD8(const double* value, const int32_t* decimals, char* text, const int32_t* length);

// ---- texts to texts ----
// The letters a to z in upper case; A to Z in lower case.
VORANT_API int32_t UPPERCASE(const char* text, const int32_t* length, char* result, const int32_t* resultLength);
VORANT_API int32_t LOWERCASE(const char* text, const int32_t* length, char* result, const int32_t* resultLength);
// Without trailing blanks and tabs.
VORANT_API int32_t TRIMF(const char* text, const int32_t* length, char* result, const int32_t* resultLength);
// Without its double quotes, wherever they stand.
VORANT_API int32_t REMOVEQUOTES(const char* text, const int32_t* length, char* result, const int32_t* resultLength);
// Without its blanks, wherever they stand.
VORANT_API int32_t REMOVESPACES(const char* text, const int32_t* length, char* result, const int32_t* resultLength);
// Its letters A to Z, a to z and digits only.
VORANT_API int32_t ALPHANUMERICONLY(const char* text, const int32_t* length, char* result, const int32_t* resultLength);
// With `to` in place of the first `from`; case-sensitive, and blanks within the lengths of `from` and `to` count.
VORANT_API int32_t REPLACE(const char* text, const int32_t* length, const char* from, const int32_t* fromLength,
                           const char* to, const int32_t* toLength, char* result, const int32_t* resultLength);
// The same for every `from`, left to right. A `from` of length 0 occurs nowhere.
VORANT_API int32_t REPLACEALL(const char* text, const int32_t* length, const char* from, const int32_t* fromLength,
                              const char* to, const int32_t* toLength, char* result, const int32_t* resultLength);

// ---- file names; "/" and "\" both separate folders ----
// The extension with its dot in lower case: "X.2DM" gives ".2dm"; blank when there is none, as in "run.v2/x".
VORANT_API int32_t FILEEXT(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// The same, letter case kept: ".2DM".
VORANT_API int32_t FILEEXTKC(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// Folder and name without the extension: "results/x_h.dat" gives "results/x_h".
VORANT_API int32_t FILENAMEPATH(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// The same, cut before the last underscore of the name: "results/x".
VORANT_API int32_t FILENAMEPATHNO_(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// FILENAMEPATH without the folder: "x_h".
VORANT_API int32_t FILENAME(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// FILENAMEPATHNO_ without the folder: "x".
VORANT_API int32_t FILENAMENO_(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// The name without its folder: "x_h.dat".
VORANT_API int32_t FILENAMEEXT(const char* name, const int32_t* length, char* result, const int32_t* resultLength);
// The folder with its closing separator: "results/"; blank for a bare name.
VORANT_API int32_t FILEFOLDERPATH(const char* name, const int32_t* length, char* result, const int32_t* resultLength);

// ---- reading a text file ----
// Handles are this library's own, 1 to 1000: neither a Fortran unit nor a C stream can be read through READLINE.
// Opens for reading, by a name in UTF-8 on every system; 0 when the file cannot be opened or no handle is free.
VORANT_API int32_t OPENTEXT(const char* name, const int32_t* length);
// Closes; truth, false for a handle that is not open.
VORANT_API int32_t CLOSETEXT(const int32_t* handle);
// Next line, without its end (LF or CR LF) and without leading blanks and tabs, cut or blank-padded to the length;
// characters beyond 100000 are skipped. 0: a line was read; -1: the end of the file; 1: a read error, which is also
// written to the standard error, or a handle that is not open. Other than 0 the line is blank.
VORANT_API int32_t READLINE(const int32_t* handle, char* line, const int32_t* length);

// ---- points and lines; coordinates in map units, the _8 forms take 64-bit ones ----
// Exactly 0 when both axes differ by less than 1e-6.
VORANT_API float DISTANCE(const float* x1, const float* y1, const float* x2, const float* y2);
VORANT_API float DISTANCE_8(const double* x1, const double* y1, const double* x2, const double* y2);
// Truth: both axes differ by less than the tolerance.
VORANT_API int32_t SAME_POINT(const float* x1, const float* y1, const float* x2, const float* y2,
                              const float* tolerance);
VORANT_API int32_t SAME_POINT_8(const double* x1, const double* y1, const double* x2, const double* y2,
                                const double* tolerance);
// Positive when points a and b lie on one side of the line 1-2, negative on opposite sides, 0 when one is on it.
VORANT_API float SAME_SIDE(const float* x1, const float* y1, const float* x2, const float* y2, const float* xa,
                           const float* ya, const float* xb, const float* yb);
VORANT_API float SAME_SIDE_8(const double* x1, const double* y1, const double* x2, const double* y2, const double* xa,
                             const double* ya, const double* xb, const double* yb);
// Truth: the point lies exactly on the infinite line 1-2.
VORANT_API int32_t INTERSECT_POINT(const float* x1, const float* y1, const float* x2, const float* y2, const float* xp,
                                   const float* yp);
// Truth: segments 1-2 and 3-4 meet; touching counts, and so do two segments of one line.
VORANT_API int32_t INTERSECT_LINE(const float* x1, const float* y1, const float* x2, const float* y2, const float* x3,
                                  const float* y3, const float* x4, const float* y4);
VORANT_API int32_t INTERSECT_LINE_8(const double* x1, const double* y1, const double* x2, const double* y2,
                                    const double* x3, const double* y3, const double* x4, const double* y4);
// Where lines 1-2 and 3-4 cross: 3 on both segments, 1 on the first only, 2 on the second only, 4 on neither; 0
// parallel, -1 one line. The start of a segment is not on it, its end is.
VORANT_API int32_t INTERSECT_LINE_V2(const float* x1, const float* y1, const float* x2, const float* y2,
                                     const float* x3, const float* y3, const float* x4, const float* y4);
VORANT_API int32_t INTERSECT_LINE_V2_8(const double* x1, const double* y1, const double* x2, const double* y2,
                                       const double* x3, const double* y3, const double* x4, const double* y4);
// Truth, and x and y: where the infinite lines 1-2 and 3-4 cross. False, and x and y as they were: parallel.
VORANT_API int32_t INTERSECTION_POINT(const float* x1, const float* y1, const float* x2, const float* y2,
                                      const float* x3, const float* y3, const float* x4, const float* y4, float* x,
                                      float* y);
VORANT_API int32_t INTERSECTION_POINT_8(const double* x1, const double* y1, const double* x2, const double* y2,
                                        const double* x3, const double* y3, const double* x4, const double* y4,
                                        double* x, double* y);
// Angle between the directions 1-2 and 3-4, 0 to 180 degrees; 0 when either is vertical.
VORANT_API float ANGLE2D(const double* x1, const double* y1, const double* x2, const double* y2, const double* x3,
                         const double* y3, const double* x4, const double* y4);
// Length of a vector; exactly 0 when both components are at most 1e-6 either way.
VORANT_API float VECTOR_MAGNITUDE(const float* vx, const float* vy);

// ---- polygons and elements ----
// Truth: the point is inside. Edges are those from vertex 2 on, so a ring of k corners is passed as its corners and the
// first two again (n = k + 2, part end k + 1). xmin: no vertex lies west of it. partEnds: the vertex that starts the
// last edge of each part. A last part that ends too early gives false and a line on the standard error. A ray that
// meets vertex 2 first remembers a height of the calls before it in the same thread.
VORANT_API int32_t INSIDE_POLYGON(const float* xp, const float* yp, const float* xs, const float* ys, const int32_t* n,
                                  const float* xmin, const int32_t* partEnds, const int32_t* partCount);
VORANT_API int32_t INSIDE_POLYGON_8(const double* xp, const double* yp, const double* xs, const double* ys,
                                    const int32_t* n, const double* xmin, const int32_t* partEnds,
                                    const int32_t* partCount);
// Truth, and the value at a point inside the triangle of three corners; false and -99999 when there is none.
// NO_CHECKS: the corners are known to be apart, and a length of 0 gives a value that is no number.
VORANT_API int32_t INTERPOLATE_TRIANGLE(const float* xp, const float* yp, const float* xs, const float* ys,
                                        const float* values, float* value);
VORANT_API int32_t INTERPOLATE_TRIANGLE_8(const double* xp, const double* yp, const double* xs, const double* ys,
                                          const float* values, float* value);
VORANT_API int32_t INTERPOLATE_TRIANGLE_NO_CHECKS(const float* xp, const float* yp, const float* xs, const float* ys,
                                                  const float* values, float* value);
// Truth, and the value in an element of 3 or 4 corners; false and -99999 outside it or with another count. xmin: its
// smallest x.
VORANT_API int32_t INTERPOLATE_ELEMENT_8(const double* xp, const double* yp, const double* xs, const double* ys,
                                         const float* values, const int32_t* corners, const double* xmin, float* value);
// u = (x - x0) c + (y - y0) s, v = (y - y0) c - (x - x0) s for n points; c and s: cosine and sine of the angle,
// degrees.
VORANT_API void GEO_SHIFT(const double* xs, const double* ys, const int32_t* n, const double* x0, const double* y0,
                          const double* angle, float* us, float* vs);
// The bounding box of a polygon and the cells of a grid of columns and rows under it; coordinates from the grid's
// origin. Outside the grid the first is beyond the last, and so it is (1 and 0) without vertices.
VORANT_API void SET_SUB_GRID_AREA(const float* xs, const float* ys, const int32_t* n, const float* cellSize,
                                  const int32_t* columns, const int32_t* rows, int32_t* firstColumn, int32_t* firstRow,
                                  int32_t* lastColumn, int32_t* lastRow, float* xmin, float* ymin, float* xmax,
                                  float* ymax);

// ---- cross-sections ----
// Water-surface width in a circular section; 0 within 1e-5 of full or of dry.
VORANT_API float CIRCLE_WIDTH(const float* radius, const float* depth);
// Area, surface width and wetted perimeter of the segment 1-2 under water level h; all 0 unless `wet`, a wet flag or a
// depth, is above 0. HYD_PARAM2: of its two halves, the one at x1 first.
VORANT_API void HYD_PARAM(const float* x1, const float* z1, const float* x2, const float* z2, const float* h,
                          const float* wet, float* area, float* width, float* perimeter);
VORANT_API void HYD_PARAM2(const float* x1, const float* z1, const float* x2, const float* z2, const float* h,
                           const float* wet, float* area1, float* width1, float* perimeter1, float* area2,
                           float* width2, float* perimeter2);

#ifdef __cplusplus
}
#endif

// Not provided, since the name alone does not fix what they do (which separators, which characters, which position,
// which kind of result):
//   SS256 NUMBERLINE CHECKLINE READGIS WRITEGIS READROWCOL CLEANATTRIBUTENAME DOUBLEQUOTE CSVCOLUMN CSVVALUE
//   EXTRACTINTEGER EXTRACTREAL EXTRACTSTRING EXTRACTSTRINGREM AINTEGERPREC0 AINTEGER8PREC0 NUMBEROFSUBSTRINGS
//   SUBSTRING NUMBEROFNUMBERS NUMBEROFDAYS CHECKINT CHECKINT4 CHECKINT8 REMOVEDOTDOT ADDFOLDER FILE___EXT CLEANPATH
//   LENSL

#endif
