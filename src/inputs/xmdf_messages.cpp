#include "inputs/xmdf_messages.h"

#include "services/console.h"
#include "services/exits.h"
#include "xmdf/xmdf.h"

std::string XMDF_QUOTED(std::string_view name) {
    std::string text(1, '"');
    text += name;
    text += '"';
    return text;
}

void STOP_XMDF(std::string_view message) { STOP_XMDF(XmdfUnreadable{std::string(message), XMDF_REASON()}); }

void XMDF_UNREADABLE(std::string_view message) { throw XmdfUnreadable{std::string(message), XMDF_REASON()}; }

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
