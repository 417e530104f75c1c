#include "raster/external_grid.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/projection.h"
#include "text_utils/free_form.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <cmath>
#include <limits>
#include <optional>

namespace {

constexpr int MOST_HEADER_LINES = 100;

struct Header {
    std::int32_t ncols = 0;
    std::int32_t nrows = 0;
    std::optional<double> x, y;             ///< of the lower-left cell
    bool xCentre = false, yCentre = false;  ///< they are its centre, not its corner
    double cellSize = -1.0;
    double noData = -9999.0;
};

bool readCount(std::string_view text, std::int32_t& count) {
    double value = 0.0;  // some programs write "120.0"
    if (FreeForm(text).NEXT_REAL(value) != FreeForm::Read::Value) return false;
    if (!(std::abs(value) <= std::numeric_limits<std::int32_t>::max()) || value != std::trunc(value)) return false;
    count = static_cast<std::int32_t>(value);
    return true;
}

bool readFinite(std::string_view text, double& value) {
    return FreeForm(text).NEXT_REAL(value) == FreeForm::Read::Value && std::isfinite(value);
}

bool readPlace(std::string_view text, bool atCentre, std::optional<double>& place, bool& centre) {
    double value = 0.0;
    if (!readFinite(text, value)) return false;
    place = value;
    centre = atCentre;
    return true;
}

/// One keyword and what its number goes to. A header line is tested against them in this order, anywhere in the line.
struct Keyword {
    std::string_view text;
    bool (*read)(std::string_view, Header&);
};
constexpr Keyword KEYWORDS[] = {
    {"ncols", [](std::string_view text, Header& h) { return readCount(text, h.ncols); }},
    {"nrows", [](std::string_view text, Header& h) { return readCount(text, h.nrows); }},
    {"xllcorner", [](std::string_view text, Header& h) { return readPlace(text, false, h.x, h.xCentre); }},
    {"yllcorner", [](std::string_view text, Header& h) { return readPlace(text, false, h.y, h.yCentre); }},
    {"xllcenter", [](std::string_view text, Header& h) { return readPlace(text, true, h.x, h.xCentre); }},
    {"yllcenter", [](std::string_view text, Header& h) { return readPlace(text, true, h.y, h.yCentre); }},
    {"cellsize", [](std::string_view text, Header& h) { return readFinite(text, h.cellSize); }},
    // "nan" is one
    {"NODATA_value",
     [](std::string_view text, Header& h) { return FreeForm(text).NEXT_REAL(h.noData) == FreeForm::Read::Value; }},
};

[[noreturn]] void refuse(std::string_view message, const std::string& name) {
    DMESSAGE(message);
    REPORT("File = " + name);
    EXITS();
}

/// A line for the console: what a binary file holds instead of text is cut short.
std::string shown(std::string_view line) {
    std::string text(line.substr(0, 80));
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ') c = '?';
    return text;
}

/// False for a line that holds no keyword.
bool takeLine(std::string_view line, Header& header, const std::string& name) {
    std::string rest;
    for (const Keyword& keyword : KEYWORDS) {
        if (!FLAGEXISTSRET(line, keyword.text, rest)) continue;
        if (keyword.read(rest, header)) return true;
        DMESSAGE("ERROR 2334 - Reading Grid file header information.");
        REPORT("Line = " + shown(line));
        REPORT("File = " + name);
        EXITS();
    }
    return false;
}

bool sufficient(const Header& h) {
    if (h.ncols < 1 || h.nrows < 1 || !h.x || !h.y || !(h.cellSize > 0.0)) return false;
    return std::isfinite(*h.x + h.cellSize * h.ncols) && std::isfinite(*h.y + h.cellSize * h.nrows);
}

/// Reads header lines up to the first line without a keyword, or the end of the file. Returns the offset of that line.
std::int64_t readHeader(const std::string& name, Header& header) {
    const int file = OPEN_FILE(name, "I ", FILEEXT(name) == ".hdr" ? "hdr" : "asc");
    std::int64_t offset = 0;
    for (int lines = 0; lines <= MOST_HEADER_LINES; ++lines) {
        offset = FILE_POSITION(file);
        std::string_view line;
        const LineStatus status = READ_LINE(file, line);
        if (status == LineStatus::Error) EXITS();
        if (status == LineStatus::Read && takeLine(line, header, name)) continue;
        if (!sufficient(header))
            refuse("ERROR 2333 - Insufficient header information in external grid file.  Check format of file.", name);
        CLOSE_FILE(file);
        return offset;
    }
    refuse("ERROR 2332 - Failed to find header information in external grid file.  Check format of file.", name);
}

std::string existing(const std::string& name, std::string_view what) {
    if (std::optional<std::string> found = FIND_FILE(name)) return *found;
    STOP_RUN("ERROR - There is no " + std::string(what) + " " + name);
}

/// The corner from the centre of the lower-left cell: a whole cell size off, since grids made this way have to keep
/// their corner.
void moveToCorner(Header& header, const std::string& name) {
    if (header.xCentre) *header.x -= header.cellSize;
    if (header.yCentre) *header.y -= header.cellSize;
    if (header.xCentre || header.yCentre)
        DMESSAGE("WARNING - " + name +
                 " gives the centre of its lower-left cell: the output grid's corner is placed one whole cell size (" +
                 AREAL8(header.cellSize) + ") from it.");
}

}  // namespace

ExternalGrid READ_EXTERNAL_GRID_HEADER(std::string_view requested) {
    const bool binary = FILEEXT(requested) == ".flt";
    const std::string base = FILENAMEPATH(requested);
    ExternalGrid external;
    const std::string name =
        binary ? existing(base + ".hdr", "grid header file") : existing(std::string(requested), "grid file");
    if (binary) NOTE_FILE_USED(requested);  // an output must not replace it, though only its header is read
    if (const auto prj = FIND_FILE(base + ".prj")) external.projection = USE_PRJ(*prj);
    Header header;
    external.dataOffset = readHeader(name, header);
    moveToCorner(header, name);
    external.grid.ncols = header.ncols;
    external.grid.nrows = header.nrows;
    external.grid.xll = *header.x;
    external.grid.yll = *header.y;
    external.grid.cellSize = header.cellSize;
    external.noData = header.noData;
    REPORT("External Grid Info: " + AINTEGER(header.nrows) + " rows by " + AINTEGER(header.ncols) + " columns with " +
           AREAL8(header.cellSize) + " cell size.");
    return external;
}
