#include "gis/mif_header.h"

#include "gis/attributes.h"
#include "gis/coord_sys.h"
#include "gis/mif_layer.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/free_form.h"
#include "text_utils/text.h"

namespace {

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

/// One trouble of a header in its two wordings.
struct Trouble {
    std::string_view error, warning;
};
constexpr Trouble NO_DATA = {"ERROR 0313 - Could not find start of \"Data\" block in .mif file.",
                             "WARNING 0313 - Problems finding start of data in .mif file"};
constexpr Trouble NO_COUNT = {"ERROR 0314 - Could not read number of attributes in .mif file",
                              "WARNING 0314 - Problems reading number of attributes in .mif file"};
constexpr Trouble NO_COLUMNS = {"ERROR 0315 - Could not find start of attribute definitions in .mif file",
                                "WARNING 0315 - Problems finding start of attribute definitions in .mif file"};
constexpr Trouble NO_DEFINITION = {"ERROR 0316 - Could not read attribute definitions in .mif file",
                                   "WARNING 0316 - Problems reading attribute definition in .mif file"};

void report(const Trouble& text, MifTrouble trouble, int handle, std::string_view line = {}) {
    DMESSAGE(trouble == MifTrouble::Stop ? text.error : text.warning);
    REPORT("   " + GETNAM(handle));
    if (!line.empty()) REPORT("   " + std::string(line));
    if (trouble == MifTrouble::Stop) EXITS();
}

void copyHeader(int source, int target, std::string_view routine) {
    REPORT("Copying header info from file unit " + std::to_string(source) + " to " + std::to_string(target) + "...");
    const std::string tail = " (" + std::string(routine) + ")";
    std::string_view line;
    for (;;) {
        const LineStatus status = READ_LINE(source, line);
        if (status == LineStatus::Error) STOP_RUN("ERROR 0301 - Reading data" + tail);
        if (status == LineStatus::EndOfFile) STOP_RUN("ERROR 0302 - End of File encountered" + tail);
        if (isColumnsLine(TRIMMED(line))) return;
        WRITE_OR_STOP(target, std::string(line) + "\n");
    }
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
    while (FILE_POSITION(handle) < layer.mif->dataOffset && mifNextLine(layer, line) == LineStatus::Read) {
    }
    layer.mif->headerLines = layer.files[0].count;
}

/// What stands before the Columns line: coordinate system, character set and delimiter.
void readPreamble(GisLayer& layer) {
    const int handle = layer.files[0].handle;
    std::string_view line;
    while (findLine(handle, line, [](std::string_view) { return true; }) && !isColumnsLine(line) && !isDataLine(line)) {
        if (layer.header.coordSys.empty() && FLAGEXISTS(line, "CoordSys"))
            layer.header.coordSys = FITTED(line, FILE_NAME_WIDTH);
        if (BEGINS_WITH(line, "Charset")) layer.mif->codePage = ASAME(quotedWord(line), "WindowsLatin1");
        if (BEGINS_WITH(line, "Delimiter"))
            if (const std::string_view delimiter = quotedWord(line); delimiter.size() == 1)
                layer.mif->delimiter = delimiter[0];
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
    if (!SEEK_FILE(handle, 0)) STOP_RUN("ERROR - Could not read " + GETNAM(handle) + ": " + LAST_FILE_ERROR(handle));
}

}  // namespace

bool mifFindCoordSysLine(int handle, std::string& line) {
    std::string_view found;
    line.clear();
    if (!findLine(handle, found, [](std::string_view l) { return FLAGEXISTS(l, "CoordSys") || isDataLine(l); }) ||
        isDataLine(found))
        return false;
    line = FITTED(found, FILE_NAME_WIDTH);
    return true;
}

bool mifFindDataLine(int handle, MifTrouble trouble) {
    std::string_view line;
    if (findLine(handle, line, isDataLine)) return true;
    report(NO_DATA, trouble, handle);
    return false;
}

std::int32_t mifReadColumnsCount(int handle, MifTrouble trouble) {
    std::string_view line;
    if (!findLine(handle, line, isColumnsLine)) {
        report(NO_COLUMNS, trouble, handle);
        return -1;
    }
    std::int32_t count = 0;
    FreeForm values(line.substr(std::string_view("Columns").size()));
    if (values.NEXT_INTEGER(count) == FreeForm::Read::Value && count >= 0 &&
        static_cast<std::size_t>(count) <= MOST_ATTRIBUTES)
        return count;
    report(NO_COUNT, trouble, handle, line);
    return -1;
}

bool mifReadFieldDefinitions(int handle, std::int32_t count, std::vector<GisAttribute>& attributes,
                             MifTrouble trouble) {
    attributes.clear();
    for (std::int32_t i = 0; i < count; ++i) {
        std::string_view line;
        std::string_view name;
        const bool read = READ_LINE(handle, line) == LineStatus::Read;
        FreeForm values(read ? line : std::string_view{});
        if (values.NEXT_TEXT(name) != FreeForm::Read::Value || !COLUMN_TYPE(values.REST())) {
            report(NO_DEFINITION, trouble, handle, read ? line : std::string_view("The file ends before them."));
            return false;
        }
        std::string type(values.REST());
        std::erase_if(type, [](char c) { return c == ' ' || c == '\t'; });
        attributes.push_back({FITTED(name, ATTRIBUTE_NAME_WIDTH), FITTED(type, ATTRIBUTE_TYPE_WIDTH)});
    }
    return true;
}

std::string mifReadCoordSysLine(std::string_view name) {
    const auto file = FIND_FILE(name);
    if (!file) {
        DMESSAGE("WARNING 0307 - No MapInfo Projection or mif header file " + std::string(name) + " found.");
        REPORT("               Non-Earth Coordinates will be used.  [mifReadCoordSysLine]");
        return std::string(DEFAULT_COORD_SYS);
    }
    const int handle = OPEN_FILE(*file, "I ", "mif");
    std::string line;
    if (!mifFindCoordSysLine(handle, line)) {
        DMESSAGE("WARNING 0312 - Problems finding CoordSys line in .mif file");
        REPORT("   " + *file);
        line = DEFAULT_COORD_SYS;
    }
    CLOSE_FILE(handle);
    return line;
}

void mifCopyHeader(int source, int target) { copyHeader(source, target, "mifCopyHeader"); }
void miCopyHeader(int source, int target) { copyHeader(source, target, "miCopyHeader"); }

void mifReadHeader(GisLayer& layer) {
    const int handle = layer.files[0].handle;
    mifGotoBeginningOfFiles(layer);
    readPreamble(layer);
    const std::int32_t count = mifReadColumnsCount(handle, MifTrouble::Stop);
    if (count == 0) {
        DMESSAGE("ERROR 0319 - No attributes specified in .mif file.");
        REPORT("   " + GETNAM(handle));
        EXITS();
    }
    mifReadFieldDefinitions(handle, count, layer.header.attributes, MifTrouble::Stop);
    mifFindDataLine(handle, MifTrouble::Stop);
    layer.mif->dataOffset = FILE_POSITION(handle);
    countHeaderLines(layer);
    REPORT("MIF Fields: Name [#/Type]:");
    for (std::size_t i = 0; i < layer.header.attributes.size(); ++i)
        REPORT("   " + layer.header.attributes[i].name + " [" + std::to_string(i + 1) + "/" +
               layer.header.attributes[i].type + "]");
}

void mifWriteHeader(GisLayer& layer) {
    const GisHeader& header = layer.header;
    if (header.attributes.empty()) {
        DMESSAGE("ERROR 0319 - No attributes specified in .mif file.");
        REPORT("   " + GETNAM(layer.files[0].handle));
        EXITS();
    }
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
