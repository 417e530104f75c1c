#include "run_control/input_files.h"

#include "inputs/mesh_reader.h"
#include "platform/file_system.h"
#include "run_control/file_questions.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "services/phases.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

void refuseFolder(const std::string& name) {
    if (KIND_OF_FILE(name) == FileKind::Folder) STOP_RUN("ERROR - " + name + " is a folder, not a file.");
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

/// Takes the name over when it is a file's; says that it is not.
void takeMesh(const std::string& name, InputFiles& files) {
    if (const std::optional<std::string> found = FIND_FILE(name)) {
        files.mesh = *found;
        return;
    }
    refuseFolder(name);
    DMESSAGE("WARNING - Can''t find file " + name + ", try again");
    REPORT_LOOKED_FOR({&name, 1});
}

void findMeshBesideInput(InputFiles& files) {
    const std::vector<std::string> candidates = meshCandidates(files.input, files.kind);
    for (const std::string& candidate : candidates)
        if (const std::optional<std::string> found = FIND_FILE(candidate)) {
            files.mesh = *found;
            return;
        }
    DMESSAGE("WARNING - Can't find the mesh of " + files.input + "; -2dm names another one.");
    REPORT_LOOKED_FOR(candidates);
}

}  // namespace

InputFiles FIND_INPUT_FILE(std::string_view prompt) {
    InputFiles files;
    std::string name = OPTIONS().inputFile;
    for (;;) {
        if (name.empty()) name = ASK(prompt);
        if (const std::optional<std::string> found = FIND_FILE(name)) {
            files.input = *found;
            SET_INPUT_FILE(*found);
            return files;
        }
        refuseFolder(name);
        DMESSAGE("WARNING - File " + name + " does not exist, try again");
        REPORT_LOOKED_FOR({&name, 1});
        name.clear();
    }
}

void FIND_INPUT_KIND(InputFiles& files) {
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

void FIND_MESH_FILE(InputFiles& files, const std::string& named) {
    if (files.kind == InputKind::Mesh) files.mesh = files.input;
    else if (!named.empty()) takeMesh(named, files);
    else findMeshBesideInput(files);
    while (files.mesh.empty()) takeMesh(ASK(" Please enter the SMS .2dm file -> "), files);
    REPORT("SMS .2dm Mesh File is " + files.mesh);
    REPORT("SMS data file is " + files.input);
}

void READ_MESH(const std::string& name, Mesh& mesh) {
    const int file = OPEN_FILE(name, "I ", "2dm");
    {
        const InPhase scanning(Phase::Scan);
        SCAN_2DM(file, mesh);
    }
    const InPhase reading(Phase::Read);
    SIZE_MESH_TABLES(mesh);
    READ_2DM(file, OPTIONS().removedParts, mesh);
    REPORT("Finished with .2dm file, closing...");
    CLOSE_FILE(file);
}
