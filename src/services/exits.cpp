#include "services/exits.h"

#include "services/console.h"
#include "services/files.h"

#include <string>

namespace {
bool incomplete = false;
}

void INITIALISE_EXITS() { incomplete = false; }
void NOTE_INCOMPLETE() { incomplete = true; }
int FINISHED_STATUS() { return incomplete ? STATUS_INCOMPLETE : STATUS_DONE; }

void EXITS(int status) {
    const bool allKept = CLOSE_FILES_ON_EXIT();
    REPORT("");
    PAUSE("Press Enter to Close");
    throw RunStopped{!allKept && status != STATUS_USAGE ? STATUS_STOPPED : status};
}

void STOP_RUN(std::string_view message) {
    DMESSAGE(message);
    EXITS();
}

void SHOULD_NOT_BE_HERE(std::string_view routine) {
    STOP_RUN("Should not be here [" + std::string(routine) + "] - please contact " + std::string(SUPPORT_CONTACT));
}

void STOP_AT_ONCE(std::string_view message) {
    DMESSAGE(message);
    throw RunStopped{STATUS_STOPPED};
}
