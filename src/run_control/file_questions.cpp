#include "run_control/file_questions.h"

#include "platform/file_system.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "text_utils/paths.h"

#include <set>

namespace {

std::string askForInput(const std::string& name, const std::string& kind) {
    REPORT("FILE and/or path " + name + " does not exist.");
    REPORT_LOOKED_FOR({&name, 1});
    return ASK("What is the " + kind + " file name? ");
}

bool askToCreate(const std::string& folder) {
    REPORT(folder);
    REPORT("Above folder does not exist!  Create?");
    REPORT("Either create the folder yourself and press No,");
    return ASK_YES("or press Yes to have the folder created for you.");
}

/// Without a person to ask the answer is no: nobody would close the other application.
bool askToRetry(const std::string& name) {
    if (!SOMEBODY_CAN_ANSWER()) return false;
    REPORT(name);
    REPORT("Above file is locked by another application.");
    REPORT("Close the file in the other application and press Retry.");
    return ASK_YES("Retry?");
}

bool askToClose(const std::string& name) { return ASK_YES(name + " is already open.  Close it?"); }

}  // namespace

FileQuestions CONSOLE_FILE_QUESTIONS() { return {askForInput, askToCreate, askToRetry, askToClose}; }

void REPORT_LOOKED_FOR(std::span<const std::string> names) {
    std::string list;
    std::set<std::string> said;
    for (const std::string& name : names)
        if (const std::string file = NAME_OF(PATH_OF(name).filename()); said.insert(file).second)
            list += (list.empty() ? "" : ", ") + file;
    REPORT("   Looked for " + list + " in folder " + NAME_OF(PATH_OF(ABSOLUTE_NAME(names.front())).parent_path()));
}

void PREPARE_INTO_FOLDER() {
    const std::string& folder = OPTIONS().outputFolder;
    if (folder.empty()) return;
    if (KIND_OF_FILE(folder) == FileKind::File) STOP_RUN("ERROR - " + folder + " (-into) is a file, not a folder.");
    if (!CREATE_FOLDER(folder)) STOP_RUN("ERROR - Folder " + folder + " of -into does not exist.");
    CHECK_FOLDER_TAKES_FILES(folder);
}

void PREPARE_OUTPUT_FOLDER() {
    if (!OPTIONS().outputNameGiven) return;
    const std::string folder = NAME_OF(PATH_OF(OPTIONS().outputName).parent_path());
    if (!folder.empty() && !CREATE_FOLDER(folder)) STOP_RUN("ERROR - Folder " + folder + " of -out does not exist.");
}
