#include "inputs/xmdf_messages.h"

#include "run_control/console.h"
#include "run_control/exits.h"
#include "xmdf/xmdf.h"

std::string XMDF_QUOTED(std::string_view name) { return "\"" + std::string(name) + "\""; }

void STOP_XMDF(std::string_view message) {
    DMESSAGE(message);
    REPORT("        " + XMDF_REASON());
    EXITS();
}
