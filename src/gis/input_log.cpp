#include "gis/input_log.h"

#include "gis/code_page.h"
#include "gis/data_line.h"
#include "gis/layers.h"
#include "platform/file_system.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>

namespace {

struct InputLog {
    std::vector<std::string> paths;  ///< full paths with extension, in the order first opened
    bool full = false;               ///< the one WARNING has been given
    int workspace = 0;               ///< handles of the companions; 0 when not open
    int layerMif = 0, layerMid = 0;
};
InputLog inputLog;  ///< lives for the whole run, never shortened

void writeLine(int handle, const std::string& text) {
    std::string line;
    ADD_AS_CODE_PAGE(line, text);
    WRITE_OR_STOP(handle, line + "\n");
}

void writeToWorkspace(const std::string& path) {
    if (!FILEEXT(path).starts_with(".mi")) {
        writeLine(inputLog.workspace, "! Non-MapInfo .tab Layer \"" + path + "\"");
    } else if (const auto tab = FIND_FILE(FILENAMEPATH(path) + ".tab")) {
        writeLine(inputLog.workspace, "Open Table \"" + *tab + "\"");
    } else {
        writeLine(inputLog.workspace, "! .mif/.mid Layer with no .tab Layer \"" + path + "\"");
    }
}

void writeToLayer(std::size_t number, std::int32_t gisID, const std::string& path) {
    std::string record;
    ADD_INTEGER(record, static_cast<std::int64_t>(number));
    ADD_INTEGER(record, gisID);
    ADD_TEXT(record, path);
    WRITE_OR_STOP(inputLog.layerMif, "none\n");
    writeLine(inputLog.layerMid, record);
}

void closeIfOpen(int& handle) {
    if (handle != 0) CLOSE_FILE(handle);
    handle = 0;
}

}  // namespace

void INITIALISE_INPUT_LOG() { inputLog = InputLog{}; }

void OPEN_INPUT_LOG(std::string_view base) {
    const std::string name(base);
    inputLog.workspace = OPEN_FILE(name + ".wor", "O ", "wor");
    WRITE_OR_STOP(
        inputLog.workspace,
        "!Workspace\n!Version 6007\n!Charset WindowsLatin1\n!Contains GIS input layers from VORANT simulation\n");
    inputLog.layerMif = OPEN_FILE(name + "_input_layers.mif", "O ", "mif");
    inputLog.layerMid = OPEN_FILE(name + "_input_layers.mid", "O ", "mid");
    WRITE_OR_STOP(inputLog.layerMif,
                  "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\nColumns 3\nID Integer\nOpen_ID "
                  "Integer\nLayer Char(254)\nData\n");
}

std::size_t TRACK_INPUT_LAYER(std::string_view path, std::int32_t gisID) {
    const std::string full = ABSOLUTE_NAME(path);
    const auto found = std::find_if(inputLog.paths.begin(), inputLog.paths.end(),
                                    [&full](const std::string& other) { return ASAME(other, full); });
    if (found != inputLog.paths.end()) return static_cast<std::size_t>(found - inputLog.paths.begin()) + 1;
    if (inputLog.paths.size() == MOST_INPUT_LAYERS) {
        if (!inputLog.full)
            DMESSAGE(inputLog.workspace != 0
                         ? "WARNING 0317 - Exceeded limit of input layers for MI workspace (.wor may not be complete)"
                         : "WARNING 0317 - Exceeded limit of input GIS layers that can be tracked (layer referencing "
                           "may not be complete).");
        inputLog.full = true;
        return 0;
    }
    inputLog.paths.push_back(full);
    if (inputLog.workspace != 0) writeToWorkspace(full);
    if (inputLog.layerMif != 0) writeToLayer(inputLog.paths.size(), gisID, full);
    return inputLog.paths.size();
}

void CLOSE_INPUT_LOG() {
    closeIfOpen(inputLog.workspace);
    closeIfOpen(inputLog.layerMif);
    closeIfOpen(inputLog.layerMid);
}
