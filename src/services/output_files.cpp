#include "platform/file_system.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/file_table.h"
#include "services/files.h"
#include "services/pending_outputs.h"
#include "services/working_names.h"

#include <cerrno>
#include <optional>

namespace {

int outputs = 0;  ///< completed

std::string folderOf(const std::string& name) {
    const std::string folder = NAME_OF(PATH_OF(name).parent_path());
    return folder.empty() ? "." : folder;
}

/// Stops the run where the output is to be written in place of what its name leads to, and a library cannot do that.
void refuseInPlace(const std::string& name, const NewOutput& output, LibraryMakes makes) {
    if (output.making != Making::InPlace) return;
    if (output.error != 0) {
        if (makes == LibraryMakes::Anew)
            STOP_RUN("ERROR - Folder " + folderOf(name) + " takes no new file, and " + name +
                     " can only be made anew.");
        return;
    }
    if (KIND_OF_FILE(name) == FileKind::Nothing) CANNOT_OPEN(name, true, ELOOP);
    STOP_RUN("ERROR - " + name + " is a pipe or a device; this format needs a file.");
}

/// Asks about a file that another program holds; stops the run when the file cannot be written.
NewOutput makeOutput(const std::string& name, bool optional, std::optional<LibraryMakes> library = {}) {
    if (KIND_OF_FILE(name) == FileKind::Folder) CANNOT_OPEN(name, true, EISDIR);
    NewOutput output = MAKE_OUTPUT(name);
    while (output.error == EBUSY && RETRY_LOCKED(output.failed)) output = MAKE_OUTPUT(name);
    if (output.making == Making::Refused || (output.making == Making::LeftOut && !optional))
        CANNOT_OPEN(output.failed, true, output.error);
    if (library) refuseInPlace(name, output, *library);
    if (output.making == Making::LeftOut)
        DMESSAGE("WARNING - Folder " + folderOf(name) + " takes no new file, so that " + name + " is left out.");
    if (output.making == Making::InPlace && output.error != 0)
        DMESSAGE("WARNING - Folder " + folderOf(name) + " takes no new file, so that " + name +
                 " is written in place: it is incomplete if the run stops.");
    return output;
}

}  // namespace

std::FILE* OPEN_OUTPUT_STREAM(const std::string& name, bool optional) {
    const NewOutput output = makeOutput(name, optional);
    if (output.making != Making::InPlace) return output.stream;
    errno = 0;
    // Whoever could read its own pipe would never be told that the other reader has gone.
    std::FILE* const stream = OPEN_STREAM(output.path, IS_DEVICE(output.path) ? "wb" : "w+b");
    if (stream == nullptr) CANNOT_OPEN(name, true, errno);
    return stream;
}

void CHECK_FOLDER_TAKES_FILES(const std::string& folder) {
    if (const int error = TRY_FOLDER(folder); error != 0)
        STOP_RUN("ERROR - Folder " + folder + " takes no new file: " + SYSTEM_REASON(error));
}

void FORGET_OUTPUTS() {
    DISCARD_OUTPUTS();
    outputs = 0;
}

void BEGIN_OUTPUT(std::string_view name) {
    FailedMove failed;
    const bool halfMoved = BEGIN_SET(name, failed);
    if (failed.error != 0)
        DMESSAGE("WARNING - Could not put back " + failed.aside + ", which a run that was killed had moved away from " +
                 failed.place + ": " + SYSTEM_REASON(failed.error) + ".");
    else if (halfMoved)
        DMESSAGE("Check - Put back what a run that was killed had moved away from " + std::string(name) + ".");
    if (KIND_OF_FILE(name) == FileKind::File && !NAME_IN_USE(name))
        DMESSAGE("Check - Replacing " + std::string(name) + ".");
}

void FINISH_OUTPUT(std::string_view name) {
    FailedMove failed = MOVE_SET(name);
    while (failed.error == EBUSY && RETRY_LOCKED(failed.place)) failed = MOVE_SET(name);
    if (failed.error != 0)
        STOP_RUN("ERROR - Could not move what was written to " + failed.place + ": " + SYSTEM_REASON(failed.error) +
                 (failed.aside.empty() ? ". What stood there before is kept."
                                       : ". What stood there before could not be put back: " + failed.aside + "."));
    ++outputs;
    REPORT("Wrote " + std::string(name));
}

int OUTPUTS_WRITTEN() { return outputs; }

void REFUSE_PIPE(const std::string& name) {
    NewOutput output;
    output.making = Making::InPlace;
    if (IS_DEVICE(name) || LINK_TARGET(name).empty()) refuseInPlace(name, output, LibraryMakes::OverOld);
}

std::string WORKING_NAME(std::string_view finalName, LibraryMakes makes) {
    const std::string name(finalName);
    const NewOutput output = makeOutput(name, false, makes);
    if (output.stream != nullptr) {  // it has shown that the folder takes it
        std::fclose(output.stream);
        REMOVE_TREE(output.path);
        LEAVE_TO_LIBRARY(name);
    }
    NOTE_FILE_USED(name);
    return output.path;
}
