#include "services/exits.h"

#include "services/console.h"
#include "services/files.h"

#include <string>

namespace {

bool incomplete = false;

/// message: blank for the last ERROR.
[[noreturn]] void leave(std::string message, int status) {
    RELEASE_CONSOLE();  // what it waits for still writes to its file
    if (!CLOSE_FILES_ON_EXIT() && status != STATUS_USAGE) status = STATUS_STOPPED;
    if (message.empty() && status != STATUS_DONE && status != STATUS_INCOMPLETE) message = MESSAGE_COUNTS().lastError;
    REPORT("");
    PAUSE("Press Enter to Close");
    throw RunStopped(message, status);
}

}  // namespace

void INITIALISE_EXITS() { incomplete = false; }
void NOTE_INCOMPLETE() { incomplete = true; }
int FINISHED_STATUS() { return incomplete ? STATUS_INCOMPLETE : STATUS_DONE; }

void EXITS(int status) { leave({}, status); }

void STOP_RUN(std::string_view message) {
    DMESSAGE(message);
    leave(std::string(message), STATUS_STOPPED);
}

void SHOULD_NOT_BE_HERE(std::string_view routine) {
    STOP_RUN("Should not be here [" + std::string(routine) + "] - please contact " + std::string(SUPPORT_CONTACT));
}

void END_AT_ONCE() { throw RunStopped("", STATUS_DONE); }

void STOP_AT_ONCE(std::string_view message) {
    RELEASE_CONSOLE();
    DMESSAGE(message);
    throw RunStopped(std::string(message), STATUS_STOPPED);
}
