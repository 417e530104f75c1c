#include "inputs/xmdf_messages.h"

#include "services/console.h"
#include "services/exits.h"

std::string XMDF_QUOTED(std::string_view name) {
    std::string text(1, '"');
    text += name;
    text += '"';
    return text;
}

void CHECK_XMDF(const XmdfStatus& status, std::string_view message) {
    if (status < 0) throw XmdfUnreadable{std::string(message), status.reason};
}

void STOP_XMDF(const XmdfUnreadable& unreadable) {
    DMESSAGE(unreadable.message);
    REPORT("        " + unreadable.reason);
    EXITS();
}

void LEAVE_XMDF_OUT(std::string_view path, const XmdfUnreadable& unreadable) {
    DMESSAGE("WARNING - Dataset " + XMDF_QUOTED(path) + " could not be read and is left out.");
    REPORT("        " + unreadable.reason);
    NOTE_INCOMPLETE();
}
