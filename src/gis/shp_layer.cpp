#include "gis/shp_layer.h"

#include "gis/prj_file.h"
#include "gis/shp_header.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/projection_text.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <optional>
#include <utility>

namespace {

void checkExtension(const GisLayer& layer) {
    const std::string_view expected = layer.tableOnly ? ".dbf" : ".shp";
    if (ASAME(FILEEXT(layer.path), expected)) return;
    REPORT(layer.path);
    STOP_RUN("ERROR 0426 - " + std::string(expected) + " file not specified.");
}

void openOne(GisLayer& layer, std::size_t place, const std::string& name, std::string_view kind) {
    const bool input = layer.mode == GisMode::Input;
    GisFile& file = layer.files[place];
    file = GisFile{};
    file.handle = OPEN_FILE(name, input ? "I " : "O ", kind);
    if (input) file.bytes = FILE_LENGTH(file.handle);
    else SHP_OF(layer).blocks[place] = OutputBlock(file.handle);
}

/// A companion belongs to the name that was asked for, so that another name is no answer when it is missing.
void openCompanion(GisLayer& layer, std::size_t place, std::string_view kind) {
    const std::string name = SHP_OF(layer).base + "." + std::string(kind);
    if (layer.mode == GisMode::Input && !FIND_FILE(name))
        STOP_RUN("ERROR - Could not find " + name + ", which belongs to " + layer.path + ".");
    openOne(layer, place, name, kind);
}

/// The page that the .cpg file names.
int pageOfCpg(const std::string& base) {
    const std::optional<std::string> name = FIND_FILE(base + ".cpg");
    if (!name) return PAGE_NOT_SAID;
    const int file = OPEN_FILE(*name, "I ", "cpg");
    std::string line;
    if (READLINE(file, line) == LineStatus::Error) EXITS();
    CLOSE_FILE(file);
    return PAGE_NAMED(WITHOUT_MARK(line));
}

void readShpHeader(GisLayer& layer) {
    const GisFile& file = layer.files[SHP];
    std::array<char, SHP_HEADER_BYTES> bytes{};
    const std::int64_t got = SEEK_FILE(file.handle, 0) ? READ_BYTES(file.handle, bytes.data(), bytes.size()) : -1;
    if (got < 0) STOP_AT(layer, SHP, LAST_FILE_ERROR(file.handle), "ERROR 0427 - Reading .shp file header.");
    if (got < static_cast<std::int64_t>(bytes.size()))
        STOP_AT(layer, SHP, "", "ERROR 0428 - End of .shp file encountered whilst reading header.");
    const ShpHeader header = SHP_HEADER_OF(bytes.data());
    REPORT("File Code: " + std::to_string(header.fileCode));
    REPORT("Length: " + std::to_string(header.lengthWords));
    REPORT("Shapefile Version: " + std::to_string(header.version));
    REPORT("Type: " + std::string(SHP_TYPE_NAME(header.shapeType)));
    if (header.fileCode != SHP_FILE_CODE)
        STOP_AT(layer, SHP, "it does not begin as a shapefile does.", "ERROR 0427 - Reading .shp file header.");
    SHP_OF(layer).shapeType = header.shapeType;
    SHP_OF(layer).dataEnd = std::int64_t{2} * header.lengthWords;
    if (SHP_OF(layer).dataEnd < static_cast<std::int64_t>(SHP_HEADER_BYTES))
        STOP_AT(layer, SHP, "the length in its header is too small.", "ERROR 0427 - Reading .shp file header.");
}

void reportFields(const DbfTable& table) {
    REPORT("DBF Fields (Name [#/Type/Length]):");
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
        const DbfField& field = table.fields[i];
        REPORT("   " + field.name + " [" + std::to_string(i + 1) + "/" + field.type + "/" +
               std::to_string(field.width) + "]");
    }
    REPORT("DBF file contains " + std::to_string(table.records) + " records.");
}

GisShape shapeOf(std::int32_t type) {
    const bool known = SHP_TYPE_SUPPORTED(type) && type != SHP_NULL;
    return known ? static_cast<GisShape>(type) : GisShape::Any;
}

}  // namespace

void REPORT_PLACE(const GisLayer& layer, std::size_t file, std::string_view why) {
    const GisFile& at = layer.files[file];
    std::string place = GETNAM(at.handle);
    if (at.count > 0) place += (file == DBF ? ", record " : ", object ") + std::to_string(at.count);
    REPORT(why.empty() ? place : place + ": " + std::string(why));
}

void STOP_AT(const GisLayer& layer, std::size_t file, std::string_view why, std::string_view message) {
    REPORT_PLACE(layer, file, why);
    STOP_RUN(message);
}

GisRead FAILED_AT(const GisLayer& layer, std::size_t file, std::string_view why, std::string_view message) {
    REPORT_PLACE(layer, file, why);
    DMESSAGE(message);
    return GisRead::Failed;
}

void shpOpen(GisLayer& layer) {
    if (layer.mode != GisMode::Input && layer.mode != GisMode::Output) SHOULD_NOT_BE_HERE("OpenshpFile");
    checkExtension(layer);
    layer.state = std::make_shared<ShpLayer>();
    SHP_OF(layer).base = FILENAMEPATH(layer.path);
    if (layer.tableOnly) {
        openOne(layer, DBF, layer.path, "dbf");
    } else {
        openOne(layer, SHP, layer.path, "shp");
        // another name may have been answered
        if (layer.mode == GisMode::Input) SHP_OF(layer).base = FILENAMEPATH(GETNAM(layer.files[SHP].handle));
        openCompanion(layer, SHX, "shx");
        openCompanion(layer, DBF, "dbf");
    }
    if (layer.mode != GisMode::Input) return;
    if (!layer.tableOnly) CHECK_PRJ(SHP_OF(layer).base);
}

void shpClose(GisLayer& layer) {
    for (GisFile& file : layer.files)
        if (file.handle != 0) CLOSE_FILE(std::exchange(file.handle, 0));
    layer.state.reset();
}

void shpReadHeader(GisLayer& layer) {
    ShpLayer& shp = SHP_OF(layer);
    const GisFile& dbf = layer.files[DBF];
    if (!layer.tableOnly) {
        readShpHeader(layer);
        shp.index.open(layer.files[SHX].handle);
        layer.header.shape = shapeOf(shp.shapeType);
        if (const auto prj = FIND_FILE(shp.base + ".prj")) layer.header.prj = READ_PRJ(*prj);
    }
    if (!SEEK_FILE(dbf.handle, 0))
        STOP_AT(layer, DBF, LAST_FILE_ERROR(dbf.handle), "ERROR 0403 - Reading .dbf file header.");
    const int page = pageOfCpg(shp.base);
    gisChoosePage(layer, shp.decoder, page != PAGE_NOT_SAID ? page : READ_DBF_PAGE(dbf.handle));
    shp.table = READ_DBF_HEADER(dbf.handle, shp.decoder);
    shp.record.resize(static_cast<std::size_t>(shp.table.recordBytes));
    reportFields(shp.table);
    layer.header.attributes.clear();
    for (const DbfField& field : shp.table.fields)
        layer.header.attributes.push_back({field.name, ATTRIBUTE_TYPE_OF(field)});
    shpGotoBeginningOfData(layer);
}

void shpGotoBeginningOfData(GisLayer& layer) {
    ShpLayer& shp = SHP_OF(layer);
    for (GisFile& file : layer.files) file.count = 0;
    shp.recordState = DbfRecord::None;
    shp.shape = ShpRecord{};
    if (!layer.tableOnly) shp.index.rewind();
    shp.position = -1;  // wherever the file stands, the next object looks for its place
    shp.endChecked = false;
    if (!SEEK_FILE(layer.files[DBF].handle, shp.table.headerBytes))
        STOP_AT(layer, DBF, LAST_FILE_ERROR(layer.files[DBF].handle), "ERROR 0407 - Reading .dbf record.");
}
