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

void STOP_XMDF(std::string_view message) {
    DMESSAGE(message);
    REPORT("        " + XMDF_REASON());
    EXITS();
}
