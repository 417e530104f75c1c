#include "run_control/input_files.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace {

InputFiles files;

bool isFolder(const std::string& name) {
    std::error_code error;
    return std::filesystem::is_directory(name, error);
}

/// Names under which the mesh of an input may stand, best first.
std::vector<std::string> meshCandidates(const std::string& input, InputKind kind) {
    std::vector<std::string> names = {FILENAMEPATHNO_(input) + ".2dm"};
    const std::string full = FILENAMEPATH(input) + ".2dm";
    names.insert(kind == InputKind::Xmdf ? names.begin() : names.end(), full);
    for (std::string cut = FILENAMEPATHNO_(input);;) {
        // the extension keeps a dot of the name from being cut
        const std::string shorter = FILENAMEPATHNO_(cut + ".2dm");
        if (shorter == cut) return names;
        names.push_back(shorter + ".2dm");
        cut = shorter;
    }
}

}  // namespace

const InputFiles& INPUT_FILES() { return files; }

void FIND_INPUT_FILE() {
    files = InputFiles{};
    std::string name = OPTIONS().inputFile;
    while (true) {
        if (name.empty()) name = ASK(" Please enter the SMS .dat, .2dm or .xmdf file -> ");
        if (const std::optional<std::string> found = FIND_FILE(name)) {
            files.input = *found;
            SET_INPUT_FILE(*found);
            return;
        }
        if (isFolder(name)) STOP_RUN("ERROR - " + name + " is a folder, not a file.");
        DMESSAGE("WARNING - File " + name + " does not exist, try again");
        name.clear();
    }
}

void FIND_INPUT_KIND() {
    const std::string extension = FILEEXT(files.input);
    constexpr struct {
        const char* extension;
        InputKind kind;
    } KINDS[] = {
        {".2dm", InputKind::Mesh}, {".dat", InputKind::Dat}, {".xmdf", InputKind::Xmdf}, {".h5", InputKind::Xmdf}};
    for (const auto& row : KINDS)
        if (extension == row.extension) {
            files.kind = row.kind;
            return;
        }
    if (extension == ".txt") STOP_RUN("ERROR - .txt extension not a valid results file.");
    STOP_RUN("ERROR - " + files.input + " is not a .2dm, .dat, .xmdf or .h5 file.");
}

void FIND_MESH_FILE() {
    if (files.kind == InputKind::Mesh) {
        files.mesh = files.input;
    } else if (!OPTIONS().meshFile.empty()) {
        if (const std::optional<std::string> found = FIND_FILE(OPTIONS().meshFile)) files.mesh = *found;
        else DMESSAGE("WARNING - Can''t find file " + OPTIONS().meshFile + ", try again");
    } else {
        for (const std::string& candidate : meshCandidates(files.input, files.kind))
            if (const std::optional<std::string> found = FIND_FILE(candidate)) {
                files.mesh = *found;
                break;
            }
    }
    while (files.mesh.empty()) {
        const std::string name = ASK(" Please enter the SMS .2dm file -> ");
        if (const std::optional<std::string> found = FIND_FILE(name)) files.mesh = *found;
        else DMESSAGE("WARNING - Can''t find file " + name + ", try again");
    }
    REPORT("SMS .2dm Mesh File is " + files.mesh);
    REPORT("SMS data file is " + files.input);
}
