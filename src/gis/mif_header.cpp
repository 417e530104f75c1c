// Reads and writes the header of a .mif file.
#include "gis/attributes.h"
#include "gis/coord_sys.h"
#include "gis/mif_layer.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/free_form.h"
#include "text_utils/text.h"

namespace {

constexpr std::string_view NO_ATTRIBUTES = "ERROR 0319 - No attributes specified in .mif file.";

/// The next line that `wanted` accepts, trimmed; false when there is none.
template <typename Wanted>
bool findLine(int handle, std::string_view& line, Wanted&& wanted) {
    while (READ_LINE(handle, line) == LineStatus::Read) {
        line = TRIMMED(line);
        if (wanted(line)) return true;
    }
    return false;
}

bool isDataLine(std::string_view line) { return BEGINS_WITH(line, "Data") && TRIMF(line).size() == 4; }
bool isColumnsLine(std::string_view line) { return BEGINS_WITH(line, "Columns"); }

[[noreturn]] void stop(int handle, std::string_view error, std::string_view line = {}) {
    DMESSAGE(error);
    REPORT("   " + GETNAM(handle));
    if (!line.empty()) REPORT("   " + std::string(line));
    EXITS();
}

/// The number of the next "Columns" line, from 1 to MOST_ATTRIBUTES.
std::size_t readColumnsCount(int handle) {
    std::string_view line;
    if (!findLine(handle, line, isColumnsLine))
        stop(handle, "ERROR 0315 - Could not find start of attribute definitions in .mif file");
    std::int32_t count = 0;
    FreeForm values(line.substr(std::string_view("Columns").size()));
    if (values.NEXT_INTEGER(count) != FreeForm::Read::Value || count < 0 ||
        static_cast<std::size_t>(count) > MOST_ATTRIBUTES)
        stop(handle, "ERROR 0314 - Could not read number of attributes in .mif file", line);
    if (count == 0) stop(handle, NO_ATTRIBUTES);
    return static_cast<std::size_t>(count);
}

/// The definitions behind it, one a line; types without blanks ("Decimal(10,4)").
std::vector<GisAttribute> readDefinitions(int handle, std::size_t count, const TextDecoder& text) {
    std::vector<GisAttribute> attributes;
    while (attributes.size() < count) {
        std::string_view line;
        std::string_view name;
        const bool read = READ_LINE(handle, line) == LineStatus::Read;
        FreeForm values(read ? line : std::string_view{});
        if (values.NEXT_TEXT(name) != FreeForm::Read::Value || !COLUMN_TYPE(values.REST()))
            stop(handle, "ERROR 0316 - Could not read attribute definitions in .mif file",
                 read ? line : std::string_view("The file ends before them."));
        std::string type(values.REST());
        std::erase_if(type, [](char c) { return c == ' ' || c == '\t'; });
        attributes.push_back({{}, FITTED(type, ATTRIBUTE_TYPE_WIDTH)});
        text.add(attributes.back().name, name.substr(0, ATTRIBUTE_NAME_WIDTH));
    }
    return attributes;
}

/// The word behind a header keyword such as Charset, without its quotes.
std::string_view quotedWord(std::string_view line) {
    std::string_view word;
    FreeForm values(line);
    values.NEXT_TEXT(word);
    return values.NEXT_TEXT(word) == FreeForm::Read::Value ? word : std::string_view{};
}

/// Offsets and factors of a Transform line would have to be applied to every coordinate; only those that change nothing
/// are accepted.
bool changesCoordinates(std::string_view line) {
    FreeForm values(line.substr(std::string_view("Transform").size()));
    const double neutral[] = {1.0, 1.0, 0.0, 0.0};
    for (const double same : neutral) {
        double value = 0.0;
        if (values.NEXT_REAL(value) != FreeForm::Read::Value || (value != 0.0 && value != same)) return true;
    }
    return false;
}

/// For the line numbers in messages; leaves the file where it is.
void countHeaderLines(GisLayer& layer) {
    const int handle = layer.files[0].handle;
    std::string_view line;
    mifGotoBeginningOfFiles(layer);
    while (FILE_POSITION(handle) < MIF_OF(layer).dataOffset && mifNextLine(layer, line) == LineStatus::Read) {
    }
    MIF_OF(layer).headerLines = layer.files[0].count;
}

/// What stands before the Columns line: coordinate system, character set and delimiter.
void readPreamble(GisLayer& layer) {
    const int handle = layer.files[0].handle;
    std::string_view line;
    bool marked = false;  // a byte-order mark tells more than the header
    while (findLine(handle, line, [](std::string_view) { return true; }) && !isColumnsLine(line) && !isDataLine(line)) {
        if (const std::string_view text = WITHOUT_MARK(line); text.size() < line.size()) {
            marked = MIF_OF(layer).decoder.choose(PAGE_UTF_8);
            line = text;
        }
        if (layer.header.coordSys.empty() && FLAGEXISTS(line, "CoordSys"))
            layer.header.coordSys = FITTED(line, FILE_NAME_WIDTH);
        if (BEGINS_WITH(line, "Charset") && !marked)
            gisChoosePage(layer, MIF_OF(layer).decoder, PAGE_NAMED(quotedWord(line)));
        if (BEGINS_WITH(line, "Delimiter"))
            if (const std::string_view delimiter = quotedWord(line); delimiter.size() == 1)
                MIF_OF(layer).delimiter = delimiter[0];
        if (BEGINS_WITH(line, "Transform") && changesCoordinates(line)) {
            DMESSAGE("ERROR 0308 - Reading .mif file.  Erroneous line is:");
            REPORT(line);
            REPORT("   " + GETNAM(handle) + ": coordinates that a Transform line moves are not supported.");
            EXITS();
        }
    }
    if (layer.header.coordSys.empty()) {
        DMESSAGE("WARNING 0306 - Problems finding CoordSys line in .mif file.");
        REPORT("   " + GETNAM(handle));
        layer.header.coordSys = DEFAULT_COORD_SYS;
    }
    layer.header.bounds = BOUNDS_OF(layer.header.coordSys);
    if (!SEEK_FILE(handle, 0)) STOP_UNREADABLE(handle);
}

}  // namespace

void mifReadHeader(GisLayer& layer) {
    const int handle = layer.files[0].handle;
    mifGotoBeginningOfFiles(layer);
    readPreamble(layer);
    layer.header.attributes = readDefinitions(handle, readColumnsCount(handle), MIF_OF(layer).decoder);
    std::string_view line;
    if (!findLine(handle, line, isDataLine))
        stop(handle, "ERROR 0313 - Could not find start of \"Data\" block in .mif file.");
    MIF_OF(layer).dataOffset = FILE_POSITION(handle);
    countHeaderLines(layer);
    REPORT("MIF Fields: Name [#/Type]:");
    for (std::size_t i = 0; i < layer.header.attributes.size(); ++i)
        REPORT("   " + layer.header.attributes[i].name + " [" + std::to_string(i + 1) + "/" +
               layer.header.attributes[i].type + "]");
}

void mifWriteHeader(GisLayer& layer) {
    const GisHeader& header = layer.header;
    if (header.attributes.empty()) stop(layer.files[0].handle, NO_ATTRIBUTES);
    std::string_view coordSys = header.coordSys.empty() ? std::string_view(gisProjection().coordSys) : header.coordSys;
    if (TRIMMED(coordSys).empty()) coordSys = "CoordSys NonEarth Units \"m\"";
    std::string text = "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n" +
                       WITH_BOUNDS(coordSys, header.bounds, gisExtent()) + "\nColumns " +
                       std::to_string(header.attributes.size()) + "\n";
    const std::vector<std::string> names = CLEANED_NAMES(header.attributes, MIF_NAME_WIDTH);
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::string type = header.attributes[i].type;
        if (!COLUMN_TYPE(type)) SHOULD_NOT_BE_HERE("mifWriteHeader: " + type);
        std::erase(type, ' ');
        text += "  " + names[i] + " " + type + "\n";
    }
    text += "Data\n";
    WRITE_OR_STOP(layer.files[0].handle, text);
    layer.files[0].bytes = static_cast<std::int64_t>(text.size());
}
